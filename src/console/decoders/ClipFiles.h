// Frames of a clip taken out as files, with the history that window and console share.
#pragma once

#include "console/FramesCommand.h"

namespace tarn {

// 16-bit FITS with the samples as the clip has them, NAME_0001.fits the first. Nothing that stands
// is written over.
std::vector<TakenFrame> TakeBestOut(const TakeOrder& order);

} // namespace tarn
