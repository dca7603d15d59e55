#include "display/Fit.h"

#include "common/colors.h"

namespace tarn {

namespace {

float Begin(int image, int box) {
    const double half = box / 2.0;
    return float(double(image) / box * half - half);
}

} // namespace

PreviewCrop CropPreview(int imageWidth, int imageHeight, int boxWidth, int boxHeight) {
    if (boxWidth <= 0 || boxHeight <= 0) return {0, 0, imageWidth, imageHeight};
    PreviewCrop crop{Begin(imageWidth, boxWidth), Begin(imageHeight, boxHeight), boxWidth,
                     boxHeight};
    if (crop.left < 0) {
        crop.left = 0;
        crop.width = imageWidth;
    }
    if (crop.top < 0) {
        crop.top = 0;
        crop.height = imageHeight;
    }
    return crop;
}

PreviewText PreviewTextOf(PreviewKind kind) {
    switch (kind) {
    case PreviewKind::Reduced:
        return {"Preview picture is reduced", RgbFromLong(33023)};
    case PreviewKind::FullSize:
        return {"Preview picture is full size", RgbFromLong(49152)};
    case PreviewKind::FullSizeCut:
        return {"Preview picture is full size cropped if needed", RgbFromLong(0xFF0000)};
    case PreviewKind::DoubledCut:
        break;
    }
    return {"Preview picture is 2x cropped if needed", RgbFromLong(255)};
}

std::string SizeTextOf(int width, int height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

} // namespace tarn
