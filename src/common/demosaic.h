// Colours out of the mosaic under the filter of a colour camera, at full size.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace tarn {

inline bool IsValue(std::uint16_t) {
    return true;
}
inline bool IsValue(float sample) {
    return std::isfinite(sample);
}

// One row in red, green and blue: what a pixel lacks is the mean of its neighbours that have it,
// NaN where none has. `rows` knows Width() and Height(), of a row its samples Row(y), how many of
// them there are Count(y), and which colour each is Colour(y, x).
template <typename Rows>
void DemosaicRow(const Rows& rows, int row, const std::array<float*, 3>& to) {
    const int top = std::max(0, row - 1);
    const int bottom = std::min(rows.Height() - 1, row + 1);
    for (int x = 0; x < rows.Width(); ++x) {
        std::array<float, 3> sums{};
        std::array<float, 3> counts{};
        for (int y = top; y <= bottom; ++y)
            for (int at = std::max(0, x - 1); at < std::min(rows.Count(y), x + 2); ++at) {
                const auto sample = rows.Row(y)[at];
                if (!IsValue(sample)) continue;
                const auto colour = std::size_t(rows.Colour(y, at));
                sums[colour] += float(sample);
                counts[colour] += 1;
            }
        for (std::size_t colour = 0; colour < to.size(); ++colour)
            to[colour][x] = sums[colour] / counts[colour];
        if (x < rows.Count(row) && IsValue(rows.Row(row)[x]))
            to[std::size_t(rows.Colour(row, x))][x] = float(rows.Row(row)[x]);
    }
}

} // namespace tarn
