#include "common/fit.h"

#include "common/numbers.h"

#include <algorithm>

namespace tarn {

namespace {

// A strip thinner than half a pixel still shows as one.
int Side(double value) {
    return std::max(1, int(RoundHalfEven(value)));
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

} // namespace tarn
