// All frames of a clip that the libraries know.
#pragma once

#include "clips/ClipFrames.h"

namespace tarn {

// False, and why, when it cannot be read, or not to its end.
bool FramesOfAv(const std::string& path, const ClipSink& sink, std::string& error);

} // namespace tarn
