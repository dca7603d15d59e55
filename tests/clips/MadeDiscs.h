// Frames with a disc of known place and sharpness.
#pragma once

#include <cmath>
#include <vector>

namespace tarn::testing {

inline constexpr int kDiscSide = 64; // pixels

// A disc whose edge and belts are the softer the larger the blur is.
inline std::vector<int> Disc(double x, double y, double blur, int most, int samples = 1) {
    std::vector<int> pixels;
    for (int row = 0; row < kDiscSide; ++row)
        for (int column = 0; column < kDiscSide; ++column)
            for (int i = 0; i < samples; ++i) {
                const double edge = std::erfc((std::hypot(column - x, row - y) - 16) / blur) / 2;
                const double belts = 1 + std::exp(-blur) * std::sin((row - y) / 2);
                pixels.push_back(int(most * (0.05 + 0.4 * edge * belts)) + i);
            }
    return pixels;
}

// With no light on it.
inline std::vector<int> DarkFrame() {
    return std::vector<int>(std::size_t(kDiscSide * kDiscSide), 12);
}

} // namespace tarn::testing
