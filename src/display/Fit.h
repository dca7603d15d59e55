// Arithmetic of the preview: how a picture is fitted into the pane or cut to it, and the texts that
// say so. All sizes in pixels.
#pragma once

#include "common/fit.h"

#include <string>
#include <string_view>

namespace tarn {

// Where the pane's cut lies in the picture. Singles, as the 1:1 window and the slides use them.
struct PreviewCrop {
    float left = 0;
    float top = 0;
    int width = 0;
    int height = 0;
};

// The middle of the picture, all of it in a direction in which it is smaller than the box.
PreviewCrop CropPreview(int imageWidth, int imageHeight, int boxWidth, int boxHeight);

enum class PreviewKind { Reduced, FullSize, FullSizeCut, DoubledCut };

struct PreviewText {
    std::string_view text;
    int rgb; // 0xRRGGBB
};

PreviewText PreviewTextOf(PreviewKind kind);

// "3504 x 2336".
std::string SizeTextOf(int width, int height);

} // namespace tarn
