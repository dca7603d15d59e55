// The clip in the window. Frames count from 0.
#pragma once

namespace tarn {

struct VideoState {
    int VideoLastFrame = 0; // frames less one
    int VideoWidth = 0;     // pixels
    int VideoHeight = 0;
    float VideoFrameRate = 0;  // frames a second
    bool VideoRunning = false; // the timer follows the position
    int VideoPosition = 0;     // the frame shown; the count of frames at the end of play
    bool VideoOpen = false;
    bool VideoShown = false;    // in this run
    bool VideoInWindow = false; // MP4, MOV and SER go the road of other clips
};

} // namespace tarn
