#include "imaging/fits/FitsPixels.h"

#include "common/stop_flag.h"
#include "imaging/fits/Mosaic.h"
#include "imaging/fits/SkyFile.h"
#include "imaging/fits/TwoThreads.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <utility>
#include <vector>

namespace tarn {

namespace {

constexpr std::size_t kSampled = 200'000; // enough for medians to a hundredth of a deviation
constexpr std::size_t kHistogramStep = 2; // of those
constexpr double kToDeviation = 1.4826;   // of a normal distribution
constexpr int kLargestStep = 256;         // sums of its squares are still exact

// How many stored pixels a side go into one, so that at least the wished ones come out.
int StepFor(const FitsHeader& header, int width, int height) {
    if (width < 1 || height < 1) return 1;
    const int step =
        std::clamp(std::min(header.width / width, header.height / height), 1, kLargestStep);
    return header.mosaic && step > 1 ? step / 2 * 2 : step;
}

float MedianOf(std::vector<float>& values) {
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

ChannelStatistics StatisticsOf(std::vector<float>& values) {
    if (values.empty()) return {};
    const float median = MedianOf(values);
    for (float& value : values) value = std::abs(value - median);
    return {median, MedianOf(values) * kToDeviation};
}

using SampledValues = std::array<std::vector<float>, 3>;

// Spread so that they fall on all columns and on all colours of a mosaic.
template <typename Sample> SampledValues SampledOf(const FitsSamples& samples, const Sample* from) {
    const auto width = std::size_t(samples.header.width);
    std::size_t step = std::max<std::size_t>(1, samples.count / kSampled) | 1U;
    while (step > 1 && width % step == 0) step += 2;
    SampledValues values;
    for (std::size_t i = 0; i < samples.count; i += step) {
        if (!IsValue(from[i])) continue;
        const std::size_t inPlane = i % samples.PerPlane();
        const std::size_t colour =
            samples.header.mosaic
                ? std::size_t(samples.header.pattern[inPlane / width % 2 * 2 + inPlane % width % 2])
                : i / samples.PerPlane();
        const auto value = float(samples.zero + samples.scale * from[i]);
        if (std::isfinite(value)) values[colour].push_back(value);
    }
    return values;
}

template <typename Sample> struct Extremes {
    Sample least = std::numeric_limits<Sample>::max();
    Sample most = std::numeric_limits<Sample>::lowest();

    void Take(Sample low, Sample high) {
        least = std::min(least, low);
        most = std::max(most, high);
    }
};

template <typename Sample, typename Counts>
Extremes<Sample> ExtremesOf(const Sample* from, std::size_t count, const Counts& counts) {
    Extremes<Sample> all;
    std::mutex mutex;
    InTwoThreads(count, [&](std::size_t begin, std::size_t end) {
        Extremes<Sample> own;
        for (std::size_t i = begin; i < end; ++i)
            if (counts(from[i])) own.Take(from[i], from[i]);
        const std::lock_guard lock(mutex);
        all.Take(own.least, own.most);
    });
    return all;
}

template <typename Sample>
Extremes<Sample> ExtremesOf(const FitsSamples& samples, const Sample* from) {
    return ExtremesOf(from, samples.count, [](Sample sample) { return IsValue(sample); });
}

// Programs write one huge number where they have no value. It is one when all huge ones are the
// same and all others lie far below it: then it becomes none.
Extremes<float> WithoutFill(FitsSamples& samples, const Extremes<float>& all) {
    constexpr float kHuge = 1e9F;
    constexpr float kFar = 1000;
    const bool low = all.least <= -kHuge;
    const bool high = all.most >= kHuge;
    if (low == high) return all; // none, or values of both signs
    const float fill = high ? all.most : all.least;
    float* const from = samples.floats.get();
    const auto others =
        ExtremesOf(from, samples.count, [=](float each) { return IsValue(each) && each != fill; });
    const bool far =
        std::max(std::abs(others.least), std::abs(others.most)) <= std::abs(fill) / kFar;
    if (others.least > others.most || !far) return all;
    std::replace(from, from + samples.count, fill, std::numeric_limits<float>::quiet_NaN());
    return others;
}

Extremes<std::uint16_t> WithoutFill(FitsSamples&, const Extremes<std::uint16_t>& all) {
    return all;
}

// What counts as black and white: for whole numbers from 0 on what they can hold, for fractions 0
// to 1, else from the least to the most.
template <typename Sample> ValueRange RangeOf(FitsSamples& samples, const Sample* from) {
    const bool floating = samples.header.bits < 0;
    if (samples.range && !floating) return *samples.range;
    const auto [least, most] = WithoutFill(samples, ExtremesOf(samples, from));
    if (samples.range) return *samples.range;
    double low = samples.zero + samples.scale * double(least);
    double high = samples.zero + samples.scale * double(most);
    if (samples.scale < 0) std::swap(low, high);
    const bool known =
        least <= most && std::isfinite(low) && std::isfinite(high) && std::isfinite(high - low);
    if (!known || (low >= 0 && high <= 1)) return {0, 1};
    constexpr double kLeastPart = 1e-6; // of a value, that a range has to be wide
    const double width = std::max(1.0, std::abs(low) * kLeastPart);
    return {low, high > low ? high : low + width};
}

} // namespace

double PlaceOf(double value) {
    return std::cbrt(value);
}

double ValueAt(double place) {
    return place * place * place;
}

std::optional<FitsPixels> FitsPixels::Read(const std::string& path, int width, int height,
                                           std::string& error) {
    auto samples = ReadSkySamples(path, error);
    if (!samples) return std::nullopt;
    FitsPixels pixels(std::move(*samples), width, height);
    if (!IsStopped()) return pixels;
    error = "The reading was broken off";
    return std::nullopt;
}

FitsPixels::FitsPixels(FitsSamples samples, int width, int height)
    : m_step(StepFor(samples.header, width, height)),
      m_channels(samples.header.mosaic ? 3 : samples.header.planes), m_bits(samples.header.bits) {
    m_width = (samples.header.width + m_step - 1) / m_step;
    m_height = (samples.header.height + m_step - 1) / m_step;
    m_values.reset(
        new float[std::size_t(m_width) * std::size_t(m_height) * std::size_t(m_channels)]);
    if (samples.words)
        Take(samples, samples.words.get());
    else
        Take(samples, samples.floats.get());
}

template <typename Sample> void FitsPixels::Take(FitsSamples& samples, const Sample* from) {
    m_range = RangeOf(samples, from);
    SampledValues sampled = SampledOf(samples, from);
    std::array<ChannelStatistics, 3> statistics;
    for (std::size_t i = 0; i < sampled.size(); ++i) {
        for (std::size_t at = 0; at < sampled[i].size(); at += kHistogramStep) {
            const double inRange = (sampled[i][at] - m_range.low) / (m_range.high - m_range.low);
            const double place = inRange > 0 ? PlaceOf(std::min(inRange, 1.0)) : 0;
            ++m_histogram[std::size_t(std::min(kBins - 1, int(place * kBins)))];
        }
        statistics[i] = StatisticsOf(sampled[i]);
    }
    m_automatic = AutomaticStretch(m_range, std::span(statistics).first(std::size_t(m_channels)));

    InTwoThreads(std::size_t(m_height), [&](std::size_t begin, std::size_t end) {
        for (int plane = 0; plane < samples.header.planes; ++plane)
            TakeRows(samples, from, plane, int(begin), int(end));
    });
}

template <typename Sample>
void FitsPixels::TakeRows(const FitsSamples& samples, const Sample* from, int plane, int begin,
                          int end) {
    const std::size_t perChannel = std::size_t(m_width) * std::size_t(m_height);
    const int channels = m_channels / samples.header.planes;
    const StoredRows<Sample> rows(samples, from, plane);
    Squares<Sample> squares(rows, m_step);
    for (int row = begin; row < end && !IsStopped(); ++row) {
        std::array<float*, 3> to{};
        for (std::size_t i = 0; i < std::size_t(channels); ++i)
            to[i] = m_values.get() + perChannel * (i + std::size_t(plane)) +
                    std::size_t(m_width) * std::size_t(row);
        if (m_step > 1)
            squares.Row(row, m_width, to, channels);
        else if (channels > 1)
            DemosaicRow(rows, row, to);
        else
            CopyRow(rows, row, to[0]);
        if (samples.scale == 1 && samples.zero == 0) continue;
        const auto zero = float(samples.zero);
        const auto scale = float(samples.scale);
        for (std::size_t i = 0; i < std::size_t(channels); ++i)
            for (int x = 0; x < m_width; ++x) to[i][x] = zero + scale * to[i][x];
    }
}

float FitsPixels::Value(int channel, int x, int y) const {
    return m_values[(std::size_t(channel) * std::size_t(m_height) + std::size_t(y)) *
                        std::size_t(m_width) +
                    std::size_t(x)];
}

void FitsPixels::ToRgb(const Stretch& stretch, std::uint32_t* pixels, std::size_t perLine) const {
    constexpr std::uint32_t kOpaque = 0xFF000000;
    constexpr std::uint32_t kGrey = 0x00010101;
    const auto width = std::size_t(m_width);
    const std::size_t perChannel = width * std::size_t(m_height);
    const std::array<ToLight, 3> light{ToLight(stretch, 0), ToLight(stretch, 1),
                                       ToLight(stretch, 2)};
    InTwoThreads(std::size_t(m_height), [&](std::size_t begin, std::size_t end) {
        for (std::size_t row = begin; row < end; ++row) {
            const float* from = m_values.get() + row * width;
            std::uint32_t* to = pixels + row * perLine;
            if (m_channels == 1)
                for (std::size_t x = 0; x < width; ++x) to[x] = kOpaque | light[0](from[x]) * kGrey;
            else
                for (std::size_t x = 0; x < width; ++x)
                    to[x] = kOpaque | light[0](from[x]) << 16U |
                            light[1](from[perChannel + x]) << 8U |
                            light[2](from[2 * perChannel + x]);
        }
    });
}

} // namespace tarn
