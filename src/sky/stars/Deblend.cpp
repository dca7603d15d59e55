#include "sky/stars/Deblend.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace tarn {

namespace {

constexpr float kLeastPart = 0.03F; // of a peak's height that it rises from its saddle

class PeakFinder {
public:
    PeakFinder(const Footprint& footprint, float leastRise, std::vector<FootprintSample>& samples)
        : m_left(footprint.left - 1), m_top(footprint.top - 1), m_stride(footprint.Width() + 2),
          m_leastRise(leastRise), m_samples(samples),
          m_at(std::size_t(m_stride) * std::size_t(footprint.Height() + 2), kNone) {
        std::sort(samples.begin(), samples.end(),
                  [](const auto& one, const auto& other) { return one.above > other.above; });
    }

    void Find(std::vector<Basin>& basins) {
        m_summitOf.resize(m_samples.size());
        for (std::size_t i = 0; i < m_samples.size(); ++i) Take(std::int32_t(i));
        // A summit that was not of its own has become a part of a higher one, which comes before.
        std::vector<std::size_t> basinOf(m_summits.size());
        for (std::size_t i = 0; i < m_summits.size(); ++i) {
            const Summit& summit = m_summits[i];
            const bool isOwn = summit.higher == kNone || summit.own;
            basinOf[i] = isOwn ? basins.size() : basinOf[std::size_t(summit.higher)];
            if (isOwn) basins.emplace_back();
        }
        for (std::size_t i = 0; i < m_samples.size(); ++i)
            basins[basinOf[std::size_t(m_summitOf[i])]].samples.push_back(m_samples[i]);
    }

private:
    static constexpr std::int32_t kNone = -1;

    // The highest come first. One that has met a higher one points to it.
    struct Summit {
        float height = 0;
        std::int32_t higher = kNone;
        std::int32_t highest = kNone; // of all that it has met, or one on the way there
        bool own = false;             // rose enough from the saddle at which it met the higher one
    };

    std::int32_t& At(int x, int y) {
        return m_at[std::size_t(y - m_top) * std::size_t(m_stride) + std::size_t(x - m_left)];
    }
    std::int32_t HighestOf(std::int32_t summit) {
        while (m_summits[std::size_t(summit)].highest != summit) {
            std::int32_t& highest = m_summits[std::size_t(summit)].highest;
            highest = m_summits[std::size_t(highest)].highest;
            summit = highest;
        }
        return summit;
    }

    void Take(std::int32_t index) {
        const FootprintSample& sample = m_samples[std::size_t(index)];
        std::int32_t highest = kNone;
        std::int32_t steepest = kNone;
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx) {
                const std::int32_t beside = At(sample.x + dx, sample.y + dy);
                if (beside == kNone) continue;
                if (steepest == kNone || beside < steepest) steepest = beside;
                const std::int32_t summit = HighestOf(m_summitOf[std::size_t(beside)]);
                highest = highest == kNone ? summit : Meet(highest, summit, sample.above);
            }
        At(sample.x, sample.y) = index;
        if (steepest != kNone) {
            m_summitOf[std::size_t(index)] = m_summitOf[std::size_t(steepest)];
            return;
        }
        const auto summit = std::int32_t(m_summits.size());
        m_summitOf[std::size_t(index)] = summit;
        m_summits.push_back({.height = sample.above, .highest = summit});
    }

    std::int32_t Meet(std::int32_t one, std::int32_t other, float saddle) {
        if (one == other) return one;
        const auto [higher, lower] = std::minmax(one, other);
        Summit& summit = m_summits[std::size_t(lower)];
        summit.higher = higher;
        summit.highest = higher;
        summit.own = summit.height - saddle > std::max(m_leastRise, kLeastPart * summit.height);
        return higher;
    }

    int m_left;
    int m_top;
    int m_stride;
    float m_leastRise;
    std::vector<FootprintSample>& m_samples; // the highest first
    std::vector<std::int32_t> m_at;          // index of the sample at each place, of those taken
    std::vector<std::int32_t> m_summitOf;    // of each sample, which the steepest way leads to
    std::vector<Summit> m_summits;
};

} // namespace

void TakeApart(const Footprints& of, const Footprint& footprint, const SkyMesh& sky,
               float leastRise, std::vector<Basin>& basins) {
    std::vector<FootprintSample> samples;
    samples.reserve(footprint.samples);
    // The sky is as good as level below most of them.
    const float level = sky.BackgroundAt((footprint.left + footprint.right) / 2,
                                         (footprint.top + footprint.bottom) / 2);
    for (std::size_t i = footprint.firstRun; i < footprint.firstRun + footprint.runs; ++i) {
        const FootprintRun& run = of.runs[i];
        for (int x = run.begin; x < run.end; ++x)
            samples.push_back(
                {x, run.y, of.values[run.values + std::size_t(x - run.begin)] - level});
    }
    PeakFinder(footprint, leastRise, samples).Find(basins);
}

} // namespace tarn
