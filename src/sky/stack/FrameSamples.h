// The samples of one frame as its file has them, colours or a mosaic of them included.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tarn {

// A view and what it looks into. Plane after plane, row after row; (0, 0) is the centre of the
// first. Values are zero + scale * word, or the float itself, NaN where there is no data.
struct FrameSamples {
    int width = 0;
    int height = 0;
    int planes = 1;               // or 3: red, green and blue
    bool mosaic = false;          // each sample has one colour, of one plane
    std::array<int, 4> colours{}; // 0 to 2 of its first two samples, then of the second row's
    const std::uint16_t* words = nullptr; // these, or
    const float* floats = nullptr;
    double zero = 0; // of words
    double scale = 1;
    std::shared_ptr<const void> kept;

    int Colours() const { return mosaic ? 3 : planes; }
    int ColourAt(int x, int y) const { return colours[std::size_t(y % 2 * 2 + x % 2)]; }
    float At(int plane, int x, int y) const {
        const std::size_t at =
            (std::size_t(plane) * std::size_t(height) + std::size_t(y)) * std::size_t(width) +
            std::size_t(x);
        return floats ? floats[at] : float(zero) + float(scale) * float(words[at]);
    }
};

// Of the frame of this number; none with an error. Called on several threads at once.
using FrameReader =
    std::function<std::optional<FrameSamples>(std::size_t frame, std::string& error)>;

} // namespace tarn
