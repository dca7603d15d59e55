#include "display/Fit.h"

#include "common/colors.h"

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
        break;
    }
    return {"Preview picture is 2x cropped if needed", RgbFromLong(255)};
}

std::string SizeTextOf(int width, int height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

} // namespace tarn
