// When each frame of a clip is shown, from its container.
#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace tarn {

// Of a clip; what lies behind them is left out. Two days and nights.
inline constexpr int kMostFrames = 4'320'000;

struct ClipFacts {
    int width = 0; // pixels, as they are to be shown
    int height = 0;
    int quarters = 0; // of a turn clockwise, from the frames as stored
    double rate = 0;  // frames a second, as stated, or counted where it is not
    double start = 0; // of the container, from which players count, seconds
    int frames = 0;
    std::vector<double> times; // of the frames, seconds, ascending
    bool indexed = true;       // its frames are found at once
    std::string error;         // why there are none; empty otherwise
};

// Looks at every packet of the file, so it may take long: `stop` breaks it off from another thread.
ClipFacts ReadClipFacts(const std::string& path, const std::atomic<bool>& stop);

// The frame that is shown at a time; -1 before the first.
int FrameAt(const ClipFacts& clip, double time);

// A time by which the player's exact seek finds a frame. It shows the first one that is at most 5
// ms before the time that it is sent to, so this lies so much behind the middle from the frame
// before.
double SeekTimeOf(const ClipFacts& clip, int frame);

} // namespace tarn
