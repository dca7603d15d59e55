// One plane of values as it is measured, wherever it came from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

namespace tarn {

// A view: who made it keeps the samples. Rows stand one after the other in the order of the file;
// (0, 0) is the centre of the first. Values are physical: zero + scale * word, or the float itself,
// NaN where there is no data.
struct ValuePlane {
    int width = 0; // samples
    int height = 0;
    const std::uint16_t* words = nullptr; // these, or
    const float* floats = nullptr;
    double zero = 0; // of words
    double scale = 1;
    std::optional<double> white; // value at which the sensor is full, where the file says so
    bool coarse = false; // from 8 bits a colour: values lie apart, and farther the higher they are
    int cell = 1;        // pixels a side in one sample, 2 where each is the mean of a mosaic's cell

    std::size_t Samples() const { return std::size_t(width) * std::size_t(height); }

    float At(int x, int y) const {
        const std::size_t at = std::size_t(y) * std::size_t(width) + std::size_t(x);
        return floats ? floats[at] : float(zero) + float(scale) * float(words[at]);
    }
    float AtOrNone(int x, int y) const {
        if (x < 0 || y < 0 || x >= width || y >= height)
            return std::numeric_limits<float>::quiet_NaN();
        return At(x, y);
    }
    void Row(int y, float* to) const {
        const std::size_t begin = std::size_t(y) * std::size_t(width);
        const float start = float(zero);
        const float step = float(scale);
        const float* const from = floats ? floats + begin : nullptr;
        const std::uint16_t* const raw = floats ? nullptr : words + begin;
        for (int x = 0; from && x < width; ++x) to[x] = from[x];
        for (int x = 0; raw && x < width; ++x) to[x] = start + step * float(raw[x]);
    }

    // The place of a sample's part in pixels of the file, and the other way round.
    double ToPixels(double place) const { return place * cell + 0.5 * (cell - 1); }
};

} // namespace tarn
