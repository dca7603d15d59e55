#include "sky/stack/Outliers.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tarn {

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
constexpr float kShape = 0.05F; // of a star's light that comes and goes with its width
constexpr float kUneven = 2;    // deviations of the noise that a place's samples spread at most

// What the median of absolute deviations of so few samples falls short of the deviation by.
float ShortOf(std::size_t count) {
    constexpr std::array<float, 10> kFew{1,      1,    1.196F, 1.495F, 1.363F,
                                         1.206F, 1.2F, 1.14F,  1.129F, 1.107F};
    return count < kFew.size() ? kFew[count] : float(count) / (float(count) - 0.8F);
}

} // namespace

struct OutlierMean::Sums {
    std::array<float, kChunk> first; // what is subtracted before squares are taken
    std::array<float, kChunk> count;
    std::array<float, kChunk> sum;
    std::array<float, kChunk> squares;
    std::array<float, kChunk> least;
    std::array<float, kChunk> most;
    std::array<float, kChunk> weighted;
    std::array<float, kChunk> weight;
};

OutlierMean::OutlierMean(OutlierRule rule)
    : m_rule(std::move(rule)),
      m_leastNoise(m_rule.noises.empty()
                       ? 1
                       : *std::min_element(m_rule.noises.begin(), m_rule.noises.end())),
      m_values(m_rule.weights.size() * kChunk) {}

float OutlierMean::LeastDeviation(float level, float noise) const {
    const float light = std::max(level, 0.0F);
    const float ofLight = m_rule.sky > 0 ? light / m_rule.sky : 0;
    return std::sqrt(noise * noise * (1 + ofLight) + kShape * light * kShape * light);
}

// All samples of a chunk are counted; there is no branch, so that several are taken at once.
void OutlierMean::Add(const float* values, float weight, Sums& sums) const {
    for (std::size_t i = 0; i < kChunk; ++i) {
        const bool is = values[i] == values[i];
        const float value = is ? values[i] : sums.first[i];
        const float there = is ? 1.0F : 0.0F;
        const float off = value - sums.first[i];
        sums.count[i] += there;
        sums.sum[i] += off;
        sums.squares[i] += off * off;
        sums.least[i] = off < sums.least[i] ? off : sums.least[i];
        sums.most[i] = off > sums.most[i] ? off : sums.most[i];
        sums.weighted[i] += weight * there * value;
        sums.weight[i] += weight * there;
    }
}

// Whether the highest or the lowest lies far from the others, or all lie far apart: the places
// that are worth a closer look.
void OutlierMean::Suspect(const Sums& sums, std::size_t count) {
    std::array<bool, kChunk> suspect{};
    const auto limit = float(m_rule.sigmas);
    for (std::size_t i = 0; i < kChunk; ++i) {
        const float others = std::max(1.0F, sums.count[i] - 1);
        const float mean = sums.sum[i] / std::max(1.0F, sums.count[i]);
        const float spread =
            std::max(0.0F, sums.squares[i] / std::max(1.0F, sums.count[i]) - mean * mean);
        const float light = std::max(0.0F, sums.first[i] + mean);
        const float ofLight = m_rule.sky > 0 ? light / m_rule.sky : 0.0F;
        const float floor =
            m_leastNoise * m_leastNoise * (1 + ofLight) + kShape * light * kShape * light;
        bool far = spread > kUneven * kUneven * floor;
        for (const float end : {sums.least[i], sums.most[i]}) {
            const float middle = (sums.sum[i] - end) / others;
            const float left =
                std::max(floor, (sums.squares[i] - end * end) / others - middle * middle);
            far = far | ((end - middle) * (end - middle) > limit * limit * left);
        }
        suspect[i] = far & (sums.count[i] > 2);
    }
    m_suspects.clear();
    for (std::size_t i = 0; i < count; ++i)
        if (suspect[i]) m_suspects.push_back(i);
}

void OutlierMean::TakeOne(std::size_t begin, std::size_t place, float* mean, float* weight,
                          std::span<std::uint8_t* const> lost) {
    m_samples.clear();
    m_room.clear();
    for (std::size_t frame = 0; frame < m_rule.weights.size(); ++frame) {
        const float value = m_values[frame * kChunk + place];
        if (std::isnan(value)) continue;
        m_samples.push_back({value, frame});
        m_room.push_back(value);
    }
    const float middle = MedianInPlace(std::span(m_room));
    for (float& value : m_room) value = std::abs(value - middle);
    const float spread =
        float(kDeviationOfMad) * ShortOf(m_room.size()) * MedianInPlace(std::span(m_room));
    // Of the middle itself something is known no better than of its samples.
    const auto limit = float(m_rule.sigmas * std::sqrt(1 + 1.0 / double(m_samples.size())));
    float sum = 0;
    float weights = 0;
    for (const Sample& sample : m_samples) {
        const float deviation =
            std::max(spread, LeastDeviation(middle, m_rule.noises[sample.frame]));
        if (std::abs(sample.value - middle) > limit * deviation) {
            lost[sample.frame][begin + place] = 1;
            continue;
        }
        sum += m_rule.weights[sample.frame] * sample.value;
        weights += m_rule.weights[sample.frame];
    }
    *mean = weights > 0 ? sum / weights : middle;
    *weight = weights;
}

void OutlierMean::TakeChunk(std::span<const std::int16_t* const> rows, std::size_t begin,
                            std::size_t count, float* mean, float* weight,
                            std::span<std::uint8_t* const> lost) {
    Sums sums{};
    for (std::size_t frame = 0; frame < rows.size(); ++frame) {
        float* values = m_values.data() + frame * kChunk;
        const std::int16_t* codes = rows[frame] + begin;
        for (std::size_t i = 0; i < count; ++i)
            values[i] = codes[i] == kNoSample ? kNone : SampleCodes::Deviations(codes[i]);
        std::fill(values + count, values + kChunk, 0.0F);
        for (std::size_t i = 0; i < kChunk; ++i)
            if (sums.count[i] == 0 && values[i] == values[i]) {
                sums.first[i] = values[i];
                sums.count[i] = 1;
            }
    }
    sums.count.fill(0);
    for (std::size_t frame = 0; frame < rows.size(); ++frame)
        Add(m_values.data() + frame * kChunk, m_rule.weights[frame], sums);
    for (std::size_t i = 0; i < count; ++i) {
        mean[i] = sums.weight[i] > 0 ? sums.weighted[i] / sums.weight[i] : 0;
        weight[i] = sums.weight[i];
    }
    if (m_rule.sigmas <= 0) return;
    Suspect(sums, count);
    for (const std::size_t place : m_suspects)
        TakeOne(begin, place, mean + place, weight + place, lost);
}

void OutlierMean::Take(std::span<const std::int16_t* const> rows, int count, float* mean,
                       float* weight, std::span<std::uint8_t* const> lost) {
    const auto all = std::size_t(count);
    for (std::size_t begin = 0; begin < all; begin += kChunk)
        TakeChunk(rows, begin, std::min(kChunk, all - begin), mean + begin, weight + begin, lost);
}

} // namespace tarn
