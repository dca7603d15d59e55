// Levelled samples in 16 bits, for keeping hundreds of frames at hand.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace tarn {

inline constexpr std::int16_t kNoSample = std::numeric_limits<std::int16_t>::min();

// A code is the root of a value in deviations of the sky's noise: the steps of bright samples grow
// as the noise of their light does and stay far below it. At the sky a step is a hundredth of the
// noise; the highest value is 65 thousand times it.
class SampleCodes {
public:
    // `sky` and `noise` of the grid's values.
    SampleCodes(double sky, double noise)
        : m_sky(float(sky)), m_unit(noise > 0 ? float(noise) : 1) {}
    SampleCodes() : SampleCodes(0, 1) {}

    float Sky() const { return m_sky; }
    float Unit() const { return m_unit; } // values in one deviation

    std::int16_t CodeOf(float value) const {
        const float above = (value - m_sky) / m_unit;
        const float root = std::sqrt(std::abs(above)) * kRoots;
        const float code = std::copysign(root < kMost ? root : kMost, above);
        return std::isnan(value) ? kNoSample : std::int16_t(std::lrint(code));
    }

    // The same of many, without a branch or a call in the way of taking several at a time.
    void CodeRow(const float* values, std::size_t count, std::int16_t* codes) const {
        const float part = 1 / m_unit;
        for (std::size_t i = 0; i < count; ++i) {
            const float above = (values[i] - m_sky) * part;
            const float root = std::sqrt(std::abs(above)) * kRoots;
            const float most = root < kMost ? root : kMost;
            const bool isNone = above != above;
            const auto code = std::int16_t(int(isNone ? 0 : std::copysign(most + 0.5F, above)));
            codes[i] = isNone ? kNoSample : code;
        }
    }

    // In deviations above the sky; not for kNoSample.
    static float Deviations(std::int16_t code) {
        const float root = float(code) * (1 / kRoots);
        return root * std::abs(root);
    }

private:
    static constexpr float kRoots = 128;
    static constexpr float kMost = 32767;

    float m_sky;
    float m_unit;
};

} // namespace tarn
