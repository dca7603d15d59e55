// What is said of the preview. All sizes in pixels.
#pragma once

#include "common/fit.h"

#include <string>
#include <string_view>

namespace tarn {

enum class PreviewKind { Reduced, FullSize, FullSizeCut, DoubledCut, Cut4, Cut8 };

struct PreviewText {
    std::string_view text;
    int rgb; // 0xRRGGBB
};

PreviewText PreviewTextOf(PreviewKind kind);

// Of a picture so many times its size, 1, 2, 4 or 8.
PreviewKind CutOf(int times);

// "3504 x 2336".
std::string SizeTextOf(int width, int height);

// "36%".
std::string ZoomTextOf(double scale);

} // namespace tarn
