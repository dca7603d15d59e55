#include "night/NightChoice.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tarn {

namespace {

constexpr double kTenth = 0.1;
constexpr std::size_t kFewestForOne = 5;
constexpr double kLeastSpread = 0.005; // of the middle, where most values are alike
constexpr std::int64_t kBurst = 2;     // seconds

// Those of one series that have the measure, the worst first.
using Series = std::map<int, FrameIndices>;

// Larger is worse.
double BadnessOf(const NightFrame& frame, const NightColumn& measure) {
    const double value = measure.value(frame);
    return measure.better == Better::More ? -value : value;
}

Series WorstFirst(std::span<const NightFrame> frames, const NightColumn& measure) {
    Series series;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (frames[i].group >= 0 && std::isfinite(measure.value(frames[i])))
            series[frames[i].group].push_back(i);
    for (auto& [_, members] : series)
        std::stable_sort(members.begin(), members.end(), [&](std::size_t one, std::size_t other) {
            return BadnessOf(frames[one], measure) > BadnessOf(frames[other], measure);
        });
    return series;
}

std::size_t TenthOf(std::size_t count) {
    const auto tenth = std::size_t(std::lround(kTenth * double(count)));
    return count >= kFewestForOne ? std::max<std::size_t>(1, tenth) : tenth;
}

FrameIndices Ascending(FrameIndices indices) {
    std::sort(indices.begin(), indices.end());
    return indices;
}

} // namespace

FrameIndices WorstTenth(std::span<const NightFrame> frames, const NightColumn& measure) {
    FrameIndices worst;
    for (const auto& [_, members] : WorstFirst(frames, measure))
        worst.insert(worst.end(), members.begin(),
                     members.begin() + std::ptrdiff_t(TenthOf(members.size())));
    return Ascending(std::move(worst));
}

FrameIndices BestTenth(std::span<const NightFrame> frames, const NightColumn& measure) {
    FrameIndices best;
    for (const auto& [_, members] : WorstFirst(frames, measure))
        best.insert(best.end(), members.end() - std::ptrdiff_t(TenthOf(members.size())),
                    members.end());
    return Ascending(std::move(best));
}

FrameIndices OutsideSigma(std::span<const NightFrame> frames, const NightColumn& measure,
                          double sigmas) {
    FrameIndices outside;
    for (const auto& [_, members] : WorstFirst(frames, measure)) {
        std::vector<double> values;
        for (const std::size_t member : members)
            values.push_back(BadnessOf(frames[member], measure));
        const double middle = MedianOf(values);
        const double deviation = std::max(DeviationOf(values), kLeastSpread * std::abs(middle));
        const double limit = middle + sigmas * deviation;
        for (std::size_t i = 0; i < members.size(); ++i)
            if (BadnessOf(frames[members[i]], measure) > limit) outside.push_back(members[i]);
    }
    return Ascending(std::move(outside));
}

FrameIndices WorseThan(std::span<const NightFrame> frames, const NightColumn& measure,
                       double value) {
    FrameIndices worse;
    const double limit = measure.better == Better::More ? -value : value;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (frames[i].group >= 0 && BadnessOf(frames[i], measure) > limit) worse.push_back(i);
    return worse;
}

std::optional<std::size_t> BestBeside(std::span<const NightFrame> frames, std::size_t frame) {
    std::optional<std::size_t> best;
    if (frames[frame].group < 0) return best;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (i != frame && frames[i].group == frames[frame].group &&
            std::isfinite(frames[i].score) && (!best || frames[i].score > frames[*best].score))
            best = i;
    return best;
}

std::vector<FrameIndices> BurstsOf(std::span<const NightFrame> frames) {
    FrameIndices byTime;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (frames[i].taken) byTime.push_back(i);
    std::stable_sort(byTime.begin(), byTime.end(), [&](std::size_t one, std::size_t other) {
        return *frames[one].taken < *frames[other].taken;
    });
    std::vector<FrameIndices> bursts;
    for (std::size_t i = 0; i < byTime.size(); ++i) {
        const bool goesOn =
            i > 0 && *frames[byTime[i]].taken - *frames[byTime[i - 1]].taken <= kBurst;
        if (!goesOn) bursts.emplace_back();
        bursts.back().push_back(byTime[i]);
    }
    std::erase_if(bursts, [](const FrameIndices& burst) { return burst.size() < 2; });
    return bursts;
}

FrameIndices SharpestOfBursts(std::span<const NightFrame> frames) {
    FrameIndices sharpest;
    for (const FrameIndices& burst : BurstsOf(frames)) {
        std::optional<std::size_t> best;
        for (const std::size_t i : burst) {
            const double sharpness = frames[i].measures.sharpness;
            if (std::isfinite(sharpness) && (!best || sharpness > frames[*best].measures.sharpness))
                best = i;
        }
        if (best) sharpest.push_back(*best);
    }
    return Ascending(std::move(sharpest));
}

} // namespace tarn
