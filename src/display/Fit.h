// What is said of the preview. All sizes in pixels.
#pragma once

#include "common/fit.h"

#include <string>
#include <string_view>

namespace tarn {

enum class PreviewKind { Reduced, FullSize, FullSizeCut, DoubledCut };

struct PreviewText {
    std::string_view text;
    int rgb; // 0xRRGGBB
};

PreviewText PreviewTextOf(PreviewKind kind);

// "3504 x 2336".
std::string SizeTextOf(int width, int height);

} // namespace tarn
