// Colours as numbers.
#pragma once

namespace tarn {

// A colour as kept in settings and tables, blue in the highest byte, as 0xRRGGBB.
constexpr int RgbFromLong(int color) {
    return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

} // namespace tarn
