// Codes of frames as light on the screen.
#pragma once

#include "blink/SeenFrame.h"
#include "imaging/fits/ScreenStretch.h"
#include "sky/stack/FrameSamples.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tarn {

// As the picture itself would be stretched: the sky's median to a quarter of the light.
Stretch StretchOfFrame(const FrameSamples& samples);

// One plane's.
class LightOfCodes {
public:
    LightOfCodes(const SampleCodes& codes, const Stretch& stretch, std::size_t channel = 0);

    std::uint8_t operator()(std::int16_t code) const { return m_lights[std::size_t(code + 32768)]; }

private:
    std::vector<std::uint8_t> m_lights; // 0 for no sample
};

// What frames have that their median has not: grey is nothing, brighter is more.
class DifferenceLight {
public:
    // Six deviations of what is left of a frame without the median, up and down, span the light.
    DifferenceLight(const SeenFrame& frame, const SeenFrame& median);

    std::uint8_t operator()(std::int16_t frame, std::int16_t median) const {
        if (frame == kNoSample || median == kNoSample) return 0;
        const float more = SampleCodes::Deviations(frame) - SampleCodes::Deviations(median);
        const float light = kGrey + m_slope * more;
        return std::uint8_t(light < 0 ? 0 : light > kMost ? kMost : light);
    }

private:
    static constexpr float kGrey = 96.5F;
    static constexpr float kMost = 255;

    float m_slope = 1;
};

} // namespace tarn
