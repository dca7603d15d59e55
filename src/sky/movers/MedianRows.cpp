#include "sky/movers/MedianRows.h"

#include "sky/stack/Codes.h"

#include <algorithm>
#include <limits>

namespace tarn {

// Odd and even merged, for any count.
MedianRows::MedianRows(std::size_t frames) : m_frames(frames), m_codes(frames * kChunk) {
    for (std::size_t part = 1; part < frames; part *= 2)
        for (std::size_t apart = part; apart >= 1; apart /= 2)
            for (std::size_t begin = apart % part; begin + apart < frames; begin += 2 * apart)
                for (std::size_t i = 0; i < std::min(apart, frames - begin - apart); ++i)
                    if ((begin + i) / (2 * part) == (begin + i + apart) / (2 * part))
                        m_exchanges.emplace_back(begin + i, begin + i + apart);
}

void MedianRows::Take(std::span<const std::int16_t* const> rows, std::size_t count, float* to) {
    for (std::size_t begin = 0; begin < count; begin += kChunk) {
        const std::size_t part = std::min(kChunk, count - begin);
        for (std::size_t frame = 0; frame < m_frames; ++frame)
            std::copy_n(rows[frame] + begin, part, m_codes.data() + frame * kChunk);
        for (const auto& [low, high] : m_exchanges) {
            std::int16_t* const first = m_codes.data() + low * kChunk;
            std::int16_t* const second = m_codes.data() + high * kChunk;
            for (std::size_t i = 0; i < kChunk; ++i) {
                const std::int16_t least = std::min(first[i], second[i]);
                second[i] = std::max(first[i], second[i]);
                first[i] = least;
            }
        }
        for (std::size_t i = 0; i < part; ++i) {
            std::size_t none = 0; // they are the lowest
            while (none < m_frames && m_codes[none * kChunk + i] == kNoSample) ++none;
            const std::size_t there = m_frames - none;
            const auto at = [&](std::size_t place) {
                return SampleCodes::Deviations(m_codes[(none + place) * kChunk + i]);
            };
            to[begin + i] = there == 0 ? std::numeric_limits<float>::quiet_NaN()
                                       : (at((there - 1) / 2) + at(there / 2)) / 2;
        }
    }
}

} // namespace tarn
