// "tarn align": where each frame of a field lies in one of them.
#pragma once

#include "console/MeasuredFrames.h"
#include "console/Subcommand.h"

namespace tarn {

extern const Usage kAlignUsage;

// A row for each file, folders by name: the map to the reference, the stars that agree with it and
// their residual. The reference is the file given, or the sharpest frame that has at least half as
// many stars as the one with most.
int RunAlign(std::span<const std::string> words, const FrameMeasurer& measure);

} // namespace tarn
