#include "display/Fit.h"

#include "common/colors.h"
#include "common/numbers.h"

namespace tarn {

PreviewText PreviewTextOf(PreviewKind kind) {
    switch (kind) {
    case PreviewKind::Reduced:
        return {"Preview picture is reduced", RgbFromLong(33023)};
    case PreviewKind::FullSize:
        return {"Preview picture is full size", RgbFromLong(49152)};
    case PreviewKind::FullSizeCut:
        return {"Preview picture is full size cropped if needed", RgbFromLong(0xFF0000)};
    case PreviewKind::DoubledCut:
        return {"Preview picture is 2x cropped if needed", RgbFromLong(255)};
    case PreviewKind::Cut4:
        return {"Preview picture is 4x cropped if needed", RgbFromLong(255)};
    case PreviewKind::Cut8:
        break;
    }
    return {"Preview picture is 8x cropped if needed", RgbFromLong(255)};
}

PreviewKind CutOf(int times) {
    switch (times) {
    case 1:
        return PreviewKind::FullSizeCut;
    case 2:
        return PreviewKind::DoubledCut;
    case 4:
        return PreviewKind::Cut4;
    default:
        return PreviewKind::Cut8;
    }
}

std::string SizeTextOf(int width, int height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

std::string ZoomTextOf(double scale) {
    return FormatFixed(scale * 100, 0) + "%";
}

} // namespace tarn
