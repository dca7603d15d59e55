// Colours as numbers.
#pragma once

#include <algorithm>
#include <cmath>

namespace tarn {

// A colour as kept in settings and tables, blue in the highest byte, as 0xRRGGBB.
constexpr int RgbFromLong(int color) {
    return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

// How light a colour 0xRRGGBB looks, 0 to 1.
inline double LightOf(int rgb) {
    const auto linear = [](int value) {
        const double part = value / 255.0;
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(rgb >> 16 & 0xFF) + 0.7152 * linear(rgb >> 8 & 0xFF) +
           0.0722 * linear(rgb & 0xFF);
}

// From 1, the same, to 21, black and white.
inline double ContrastOf(int one, int other) {
    const double a = LightOf(one);
    const double b = LightOf(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}
inline constexpr double kReadable = 4.5; // contrast that small text needs

// The one of black and white on which a colour is read best.
inline int GroundFor(int rgb) {
    return ContrastOf(rgb, 0) > ContrastOf(rgb, 0xFFFFFF) ? 0 : 0xFFFFFF;
}

} // namespace tarn
