// All frames of a clip, one after the other, as they are stored: of SER, and of what the libraries
// of clips know. Any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarn {

// Row by row from the top, without padding.
struct ClipImage {
    const std::vector<std::uint8_t>* bytes = nullptr;
    int width = 0; // pixels
    int height = 0;
    int bits = 8;    // that a sample uses, 1 to 16; more than 8 take two bytes
    int samples = 1; // of a pixel: 1 (mono, or under a Bayer pattern) or 3, beside each other
    bool highByteFirst = false;
    bool blueFirst = false; // of three samples
    std::string pattern{};  // "RGGB" and its like; empty: none
    bool isMosaic = false;  // colours side by side in squares of two, also of other patterns
};

// False ends the walk.
using ClipSink = std::function<bool(const ClipImage& image)>;

struct ClipWords {
    std::vector<std::string> utc;     // of each frame, ISO 8601; empty where the clip says nothing
    std::vector<std::int64_t> stamps; // the same as SER has them
    std::string header;               // the bytes of that of SER; empty: another kind of clip
    std::string observer, instrument, telescope;
    std::string fault; // why it could not be read, or not to its end
};
// Ends early, too, where the thread is to stop.
ClipWords WalkFrames(const std::string& path, const ClipSink& sink);

// The frames of these numbers alone, each with its place among them: of SER in this order, and
// nothing between them is read; of other clips in the order of the clip, with `passed` called at
// each frame between them: false ends the walk, too.
using ChosenSink = std::function<bool(std::size_t place, const ClipImage& image)>;
ClipWords WalkFrames(const std::string& path, const std::vector<std::size_t>& numbers,
                     const ChosenSink& sink, const std::function<bool()>& passed = {});

} // namespace tarn
