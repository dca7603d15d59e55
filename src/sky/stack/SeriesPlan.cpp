#include "sky/stack/SeriesPlan.h"

#include "sky/align/Align.h"
#include "sky/judging/Judging.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

std::string FaultOf(const FrameMeasures& frame) {
    if (frame.brightest.size() >= std::size_t(kFewestStars)) return {};
    return frame.fault.empty() ? "too few stars to align" : frame.fault;
}

// Scores compare frames of one series; over several, and where there are none, size decides.
std::optional<std::size_t> BestOf(std::span<const FrameMeasures> frames, const SeriesPlan& plan) {
    std::size_t most = 0;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (plan.faults[i].empty()) most = std::max(most, frames[i].brightest.size());
    std::optional<std::size_t> best;
    const auto worth = [&](std::size_t i) {
        return std::isnan(plan.scores[i]) ? -1 : plan.scores[i];
    };
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (!plan.faults[i].empty() || 2 * frames[i].brightest.size() < most) continue;
        if (!best || worth(i) > worth(*best)) best = i;
    }
    return best;
}

} // namespace

SeriesPlan PlanSeries(std::span<const FrameMeasures> frames, std::span<const std::string> left) {
    SeriesPlan plan;
    for (std::size_t i = 0; i < frames.size(); ++i)
        plan.faults.push_back(i < left.size() && !left[i].empty() ? left[i] : FaultOf(frames[i]));
    plan.scores = JudgeFrames(frames).scores;
    plan.reference = BestOf(frames, plan);
    if (!plan.reference) return plan;
    const FrameMeasures& reference = frames[*plan.reference];
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (!plan.faults[i].empty()) continue;
        const FrameMeasures& frame = frames[i];
        if (frame.width != reference.width || frame.height != reference.height) {
            plan.faults[i] = "another size: " + std::to_string(frame.width) + " x " +
                             std::to_string(frame.height);
            continue;
        }
        Alignment found;
        if (i != *plan.reference) found = Align(frame.brightest, reference.brightest);
        plan.faults[i] = found.fault;
        if (!found.fault.empty()) continue;
        const double light = LightTo(reference.brightest, frame.brightest, found.map);
        plan.frames.push_back({i, found.map, std::isfinite(light) ? light : 1});
    }
    return plan;
}

} // namespace tarn
