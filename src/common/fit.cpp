#include "common/fit.h"

#include "common/numbers.h"

#include <algorithm>

namespace tarn {

namespace {

// A strip thinner than half a pixel still shows as one.
int Side(double value) {
    return std::max(1, int(RoundHalfEven(value)));
}

float Begin(int image, int box) {
    const double half = box / 2.0;
    return float(double(image) / box * half - half);
}

} // namespace

PreviewFit FitPreview(int imageWidth, int imageHeight, int boxWidth, int boxHeight) {
    const bool fits = imageWidth <= boxWidth && imageHeight <= boxHeight;
    if (fits || boxWidth <= 0 || boxHeight <= 0) return {imageWidth, imageHeight, false};
    const double imageAspect = double(imageWidth) / imageHeight;
    const float boxAspect = float(boxWidth) / float(boxHeight);
    if (imageAspect > double(boxAspect)) return {boxWidth, Side(boxWidth / imageAspect), true};
    return {Side(boxHeight * imageAspect), boxHeight, true};
}

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

} // namespace tarn
