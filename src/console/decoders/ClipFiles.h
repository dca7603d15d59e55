// Frames of a clip rated, and taken out as files.
#pragma once

#include "console/FramesCommand.h"

namespace tarn {

RatedClip RateClip(const std::string& path);

// 16-bit FITS with the samples as the clip has them, NAME_0001.fits the first. Nothing that stands
// is written over.
std::vector<TakenFrame> TakeFrames(const TakeOrder& order);

} // namespace tarn
