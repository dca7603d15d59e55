#include "sky/judging/Judging.h"

#include "sky/align/Align.h"
#include "sky/stars/RobustStatistics.h"
#include "sky/stars/Series.h"

#include <cmath>
#include <map>

namespace tarn {

namespace {

constexpr std::size_t kFewestBeside = 3; // frames with stars that tell what the sky is like
constexpr double kBelowSky = 5;          // deviations of the sky's noise
constexpr double kFlat = 4;              // times the sky

void JudgeSeries(std::span<const FrameMeasures> frames, const std::vector<std::size_t>& members,
                 JudgedFrames& judged) {
    std::vector<FrameMeasures> measures;
    for (const std::size_t member : members) measures.push_back(frames[member]);
    const std::size_t reference = ReferenceOf(measures);
    const std::vector<double> transparency =
        TransparencyOf(measures, reference, MapsOnto(reference, measures));
    const std::vector<double> scores = ScoresOf(measures, transparency);
    for (std::size_t i = 0; i < members.size(); ++i) {
        judged.transparency[members[i]] = transparency[i];
        judged.scores[members[i]] = scores[i];
    }
}

// Darks and flats whose header does not say so: without stars, and far from the sky of the others.
void LookAtRest(std::span<const FrameMeasures> frames, JudgedFrames& judged) {
    std::vector<double> skies;
    std::vector<double> noises;
    for (const FrameMeasures& frame : frames)
        if (std::isfinite(frame.hfr)) {
            skies.push_back(frame.background);
            noises.push_back(frame.noise);
        }
    if (skies.size() < kFewestBeside) return;
    const double sky = MedianOf(skies);
    const double noise = MedianOf(noises);
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const bool isTold = frames[i].fault.starts_with("a "); // by its header: "a dark frame"
        if (isTold || frames[i].stars > 0 || std::isfinite(frames[i].hfr)) continue;
        if (frames[i].background < sky - kBelowSky * noise)
            judged.looks[i] = "as dark as a dark frame";
        else if (frames[i].background > kFlat * sky)
            judged.looks[i] = "as bright as a flat frame";
    }
}

} // namespace

JudgedFrames JudgeFrames(std::span<const FrameMeasures> frames) {
    JudgedFrames judged;
    judged.transparency.assign(frames.size(), kNotMeasured);
    judged.scores.assign(frames.size(), kNotMeasured);
    judged.groups.assign(frames.size(), -1);
    judged.looks.resize(frames.size());
    std::map<std::string, int> numbers; // of the series
    std::vector<std::vector<std::size_t>> series;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (!std::isfinite(frames[i].hfr)) continue;
        const auto [found, isNew] = numbers.try_emplace(frames[i].series, int(series.size()));
        if (isNew) series.emplace_back();
        judged.groups[i] = found->second;
        series[std::size_t(found->second)].push_back(i);
    }
    for (const std::vector<std::size_t>& members : series)
        if (members.size() > 1) JudgeSeries(frames, members, judged);
    LookAtRest(frames, judged);
    return judged;
}

} // namespace tarn
