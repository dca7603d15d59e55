// When each frame of a clip is shown, from its container.
#pragma once

#include <string>
#include <vector>

namespace tarn {

struct ClipFacts {
    int width = 0; // pixels
    int height = 0;
    double rate = 0;           // frames a second, as stated, or counted where it is not
    std::vector<double> times; // of the frames, seconds from the clip's beginning, ascending
    std::string error;         // why there are none; empty otherwise
};

ClipFacts ReadClipFacts(const std::string& path);

// The frame that is shown at a time; -1 before the first.
int FrameAt(const ClipFacts& clip, double time);

// A time by which an exact seek finds a frame: it shows the first one that is not before it, so
// this lies half way from the frame before.
double SeekTimeOf(const ClipFacts& clip, int frame);

} // namespace tarn
