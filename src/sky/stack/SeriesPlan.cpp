#include "sky/stack/SeriesPlan.h"

#include "sky/align/Align.h"
#include "sky/judging/Judging.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace tarn {

namespace {

std::string FaultOf(const FrameMeasures& frame) {
    if (frame.brightest.size() >= std::size_t(kFewestStars)) return {};
    return frame.fault.empty() ? "too few stars to align" : frame.fault;
}

// The commonest size is the series'; frames of others are told.
void LeaveOutOtherSizes(std::span<const FrameMeasures> frames, SeriesPlan& plan) {
    std::map<std::pair<int, int>, std::size_t> counts;
    std::pair<int, int> common;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (plan.faults[i].empty()) ++counts[{frames[i].width, frames[i].height}];
    for (const auto& [size, count] : counts)
        if (!counts.contains(common) || count > counts[common]) common = size;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (plan.faults[i].empty() && common != std::pair(frames[i].width, frames[i].height))
            plan.faults[i] = "another size: " + std::to_string(frames[i].width) + " x " +
                             std::to_string(frames[i].height);
}

// The best first, without those that have fewer than half of the most stars. Scores compare frames
// of one series; frames without one come after them, those of the smallest stars first.
std::vector<std::size_t> Candidates(std::span<const FrameMeasures> frames, const SeriesPlan& plan) {
    std::size_t most = 0;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (plan.faults[i].empty()) most = std::max(most, frames[i].brightest.size());
    std::vector<std::size_t> candidates;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (plan.faults[i].empty() && 2 * frames[i].brightest.size() >= most)
            candidates.push_back(i);
    const auto worth = [&](std::size_t i) {
        if (std::isfinite(plan.scores[i])) return plan.scores[i]; // never below 0
        constexpr double kLast = -1e9;
        return std::isfinite(frames[i].hfr) ? -frames[i].hfr : kLast;
    };
    std::stable_sort(candidates.begin(), candidates.end(),
                     [&](std::size_t one, std::size_t other) { return worth(one) > worth(other); });
    return candidates;
}

struct Laid { // over a reference
    std::size_t reference = 0;
    std::vector<SeriesFrame> frames;
    std::vector<std::string> faults; // of all
};

Laid LayOver(std::span<const FrameMeasures> frames, std::size_t reference,
             const std::vector<std::string>& faults) {
    Laid laid{reference, {}, faults};
    const std::vector<StarPlace>& stars = frames[reference].brightest;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (!faults[i].empty()) continue;
        Alignment found;
        if (i != reference) found = Align(frames[i].brightest, stars);
        laid.faults[i] = found.fault;
        if (!found.fault.empty()) continue;
        const double light = LightTo(stars, frames[i].brightest, found.map);
        laid.frames.push_back({i, found.map, std::isfinite(light) ? light : 1});
    }
    return laid;
}

// Where few frames fit the best one, it may be the one that is of another field.
Laid LayOverBest(std::span<const FrameMeasures> frames, const SeriesPlan& plan) {
    constexpr int kMostTries = 8;
    const auto all = std::size_t(std::count(plan.faults.begin(), plan.faults.end(), ""));
    Laid best;
    std::vector<bool> fitted(frames.size()); // one that was tried: they have nothing to add
    int tries = 0;
    for (const std::size_t candidate : Candidates(frames, plan)) {
        if (fitted[candidate]) continue;
        Laid laid = LayOver(frames, candidate, plan.faults);
        for (const SeriesFrame& frame : laid.frames) fitted[frame.number] = true;
        if (laid.frames.size() > best.frames.size()) best = std::move(laid);
        if (2 * best.frames.size() >= all || ++tries == kMostTries) break;
    }
    return best;
}

} // namespace

SeriesPlan PlanSeries(std::span<const FrameMeasures> frames, std::span<const std::string> left) {
    SeriesPlan plan;
    for (std::size_t i = 0; i < frames.size(); ++i)
        plan.faults.push_back(i < left.size() && !left[i].empty() ? left[i] : FaultOf(frames[i]));
    plan.scores = JudgeFrames(frames).scores;
    LeaveOutOtherSizes(frames, plan);
    Laid laid = LayOverBest(frames, plan);
    if (laid.frames.empty()) return plan;
    plan.reference = laid.reference;
    plan.frames = std::move(laid.frames);
    plan.faults = std::move(laid.faults);
    return plan;
}

} // namespace tarn
