#include "night/NightChoice.h"

#include "common/text.h"
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

std::string EndingOf(const std::string& name) {
    const auto dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : name.substr(dot);
}

// What files of one release of the shutter have in common.
std::string ShotOf(const NightFrame& frame) {
    return FoldCase(frame.name.substr(0, frame.name.size() - EndingOf(frame.name).size()));
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

FrameIndices WithoutStars(std::span<const NightFrame> frames) {
    FrameIndices without;
    const bool anyJudged = std::any_of(frames.begin(), frames.end(),
                                       [](const NightFrame& frame) { return frame.group >= 0; });
    for (std::size_t i = 0; i < frames.size() && anyJudged; ++i) {
        const std::string& fault = frames[i].measures.fault;
        const bool hasFew = fault.starts_with("no stars") || fault.starts_with("fewer than");
        if (frames[i].isMeasured && frames[i].look.empty() && hasFew) without.push_back(i);
    }
    return without;
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
    // Raw and JPEG of one shot are one picture.
    std::erase_if(bursts, [&](const FrameIndices& burst) {
        return std::all_of(burst.begin(), burst.end(), [&](std::size_t i) {
            return ShotOf(frames[i]) == ShotOf(frames[burst.front()]);
        });
    });
    return bursts;
}

namespace {

// Of the kind of file that most of the burst are: the sharpness of others is not comparable.
std::optional<std::size_t> SharpestOf(std::span<const NightFrame> frames,
                                      const FrameIndices& burst) {
    std::map<std::string, FrameIndices> kinds;
    for (const std::size_t i : burst)
        if (std::isfinite(frames[i].measures.sharpness))
            kinds[FoldCase(EndingOf(frames[i].name))].push_back(i);
    const auto most = std::max_element(kinds.begin(), kinds.end(), [](auto& one, auto& other) {
        return one.second.size() < other.second.size();
    });
    if (most == kinds.end()) return {};
    return *std::max_element(
        most->second.begin(), most->second.end(), [&](std::size_t one, std::size_t other) {
            return frames[one].measures.sharpness < frames[other].measures.sharpness;
        });
}

} // namespace

FrameIndices SharpestOfBursts(std::span<const NightFrame> frames) {
    FrameIndices sharpest;
    for (const FrameIndices& burst : BurstsOf(frames)) {
        const auto best = SharpestOf(frames, burst);
        for (const std::size_t i : burst)
            if (best && ShotOf(frames[i]) == ShotOf(frames[*best])) sharpest.push_back(i);
    }
    return Ascending(std::move(sharpest));
}

} // namespace tarn
