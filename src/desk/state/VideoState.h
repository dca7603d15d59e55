// Clips, as far as they are settings.
#pragma once

#include <string>

namespace tarn {

struct VideoState {
    bool VideoInWindow = false;   // MP4, MOV and SER go the road of other clips
    bool SharpestOfClips = false; // the list as pictures shows that frame, not the first
    int BestFrames = 10;          // so many of a clip are taken out
    bool BestInPercent = true;
    bool BestAligned = false; // on the middle of the disc
    bool BestAsClip = false;  // a new SER, not a file a frame
    bool BestByTime = false;  // in it the frames follow each other as they were taken
    std::string BestFolder;   // where they went last
};

} // namespace tarn
