#include "blink/FrameLight.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr std::size_t kLooked = 60'000; // samples of a plane

struct Plane {
    ChannelStatistics statistics;
    float least = std::numeric_limits<float>::infinity();
    float most = -std::numeric_limits<float>::infinity();
};

Plane LookAt(const FrameSamples& samples, int number) {
    Plane plane;
    const std::size_t all = std::size_t(samples.width) * std::size_t(samples.height);
    std::size_t step = std::max<std::size_t>(1, all / kLooked) | 1U;
    while (step > 1 && std::size_t(samples.width) % step == 0) step += 2; // else one column
    std::vector<double> values;
    for (std::size_t i = 0; i < all; i += step) {
        const float value = samples.At(number, int(i % std::size_t(samples.width)),
                                       int(i / std::size_t(samples.width)));
        if (!std::isfinite(value)) continue;
        values.push_back(value);
        plane.least = std::min(plane.least, value);
        plane.most = std::max(plane.most, value);
    }
    if (values.empty()) return plane;
    plane.statistics = {MedianOf(values), DeviationOf(values)};
    return plane;
}

} // namespace

Stretch StretchOfFrame(const FrameSamples& samples) {
    std::vector<ChannelStatistics> statistics;
    ValueRange range{0, 1};
    for (int i = 0; i < samples.planes; ++i) {
        const Plane plane = LookAt(samples, i);
        statistics.push_back(plane.statistics);
        range.low = std::min<double>(range.low, plane.least);
        range.high = std::max<double>(range.high, plane.most);
    }
    if (samples.words) {
        constexpr double kFull = 65535;
        range = {samples.zero, samples.zero + samples.scale * kFull};
        if (samples.scale < 0) std::swap(range.low, range.high);
    }
    return AutomaticStretch(range, statistics);
}

LightOfCodes::LightOfCodes(const SampleCodes& codes, const Stretch& stretch, std::size_t channel)
    : m_lights(65536) {
    const ToLight light(stretch, channel);
    for (int code = kNoSample + 1; code <= std::numeric_limits<std::int16_t>::max(); ++code)
        m_lights[std::size_t(code + 32768)] = std::uint8_t(
            light(codes.Sky() + codes.Unit() * SampleCodes::Deviations(std::int16_t(code))));
}

DifferenceLight::DifferenceLight(const SeenFrame& frame, const SeenFrame& median) {
    constexpr float kSpan = 6; // deviations up to the grey
    std::vector<double> left;
    const std::size_t step = std::max<std::size_t>(1, frame.PerPlane() / kLooked) | 1U;
    for (std::size_t i = 0; i < frame.PerPlane(); i += step)
        if (frame.codes[i] != kNoSample && median.codes[i] != kNoSample)
            left.push_back(SampleCodes::Deviations(frame.codes[i]) -
                           SampleCodes::Deviations(median.codes[i]));
    const double deviation = DeviationOf(left);
    if (deviation > 0) m_slope = float(kGrey / (kSpan * deviation));
}

} // namespace tarn
