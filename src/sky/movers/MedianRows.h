// Medians of many frames, sample by sample.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace tarn {

// For one thread. All samples of a chunk are sorted at once by a network of exchanges, which has
// no branches.
class MedianRows {
public:
    explicit MedianRows(std::size_t frames);

    // Codes of each frame (stack/Codes.h); the median in deviations, NaN where no frame has one.
    void Take(std::span<const std::int16_t* const> rows, std::size_t count, float* to);

private:
    static constexpr std::size_t kChunk = 512;

    std::size_t m_frames;
    std::vector<std::pair<std::size_t, std::size_t>> m_exchanges; // the lower one to the first
    std::vector<std::int16_t> m_codes;
};

} // namespace tarn
