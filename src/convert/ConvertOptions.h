// How a picture is made into a JPEG. Standard C++ only.
#pragma once

#include <string>
#include <vector>

namespace tarn {

inline constexpr int kLeastLimit = 10; // pixels: no picture is made smaller

struct ConvertOptions {
    int quality = 75; // 1 to 100
    // Longest side that is allowed, in pixels; 0 for no limit. One of them at most.
    int maxWidth = 0;
    int maxHeight = 0;
    int orientation = 1; // the camera's, 1 to 8: the copy has no camera data to tell it
    std::string text;    // drawn at the bottom left; empty: none
    std::string font;    // family
    int rgb = 0xFFFFFF;
    std::vector<std::string> spared; // files that no result is written over
};

} // namespace tarn
