// "tarn frames": how sharp each frame of a clip is, and the best of them as files.
#pragma once

#include "console/Subcommand.h"
#include "sky/frames/FrameRating.h"

#include <functional>
#include <string>
#include <vector>

namespace tarn {

struct RatedClip {
    std::vector<RatedFrame> frames;
    std::vector<std::string> utc; // of each, as far as the clip says
    std::string observer, instrument, telescope;
    // Why it could not be read, or not to its end: what came before is rated all the same.
    std::string fault;
};
using ClipRater = std::function<RatedClip(const std::string& path)>;

// The frames of these numbers, from 0, in this order, as files of the folder.
struct TakeOrder {
    std::string clip;
    std::string folder;
    std::vector<std::size_t> frames;
    const RatedClip* rated = nullptr;
    bool align = false; // the light of all where the first has it, by whole pixels
};
struct TakenFrame {
    std::string path;
    std::string error; // empty when it was written
};
using FrameTaker = std::function<std::vector<TakenFrame>(const TakeOrder& order)>;

extern const Usage kFramesUsage;

// A row for each frame; with --best the files that were written, the sharpest first.
int RunFrames(std::span<const std::string> words, const ClipRater& rate, const FrameTaker& take);

} // namespace tarn
