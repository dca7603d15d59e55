// "tarn frames": how sharp each frame of a clip is, and the best of them as files.
#pragma once

#include "console/Subcommand.h"
#include "sky/frames/RatedClip.h"

#include <functional>
#include <string>
#include <vector>

namespace tarn {

using ClipRater = std::function<RatedClip(const std::string& path)>;

using FrameTaker = std::function<std::vector<TakenFrame>(const TakeOrder& order)>;

extern const Usage kFramesUsage;

// A row for each frame; with --best the files that were written, the sharpest first.
int RunFrames(std::span<const std::string> words, const ClipRater& rate, const FrameTaker& take);

} // namespace tarn
