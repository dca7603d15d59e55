// Clips, as far as they are settings.
#pragma once

namespace tarn {

struct VideoState {
    bool VideoInWindow = false; // MP4, MOV and SER go the road of other clips
};

} // namespace tarn
