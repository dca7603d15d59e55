#include "sky/stars/Series.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarn {

namespace {

constexpr double kNear = 4; // pixels that two places of one star lie apart at most
constexpr std::size_t kFewestCommon = 5;
constexpr double kWild = 2; // times the middle: another star, or a changed one

struct Pair {
    double here;
    double there;
};

StarPlace Mapped(const StarPlace& star, const FrameMap& map) {
    return {float(map.a * star.x + map.b * star.y + map.c),
            float(map.d * star.x + map.e * star.y + map.f), star.flux};
}

std::vector<Pair> CommonStars(const FrameMeasures& frame, const FrameMap& map,
                              const FrameMeasures& reference) {
    std::vector<StarPlace> known = reference.brightest;
    std::sort(known.begin(), known.end(),
              [](const StarPlace& one, const StarPlace& other) { return one.x < other.x; });
    std::vector<Pair> pairs;
    for (const StarPlace& each : frame.brightest) {
        const StarPlace star = Mapped(each, map);
        auto at =
            std::lower_bound(known.begin(), known.end(), star.x - kNear,
                             [](const StarPlace& one, double x) { return double(one.x) < x; });
        const StarPlace* nearest = nullptr;
        double distance = kNear;
        for (; at != known.end() && at->x <= star.x + kNear; ++at) {
            const double apart = std::hypot(at->x - star.x, at->y - star.y);
            if (apart > distance) continue;
            distance = apart;
            nearest = &*at;
        }
        if (nearest && nearest->flux > 0 && star.flux > 0)
            pairs.push_back({star.flux, nearest->flux});
    }
    return pairs;
}

double RatioOf(std::vector<Pair> pairs) {
    if (pairs.size() < kFewestCommon) return kNotMeasured;
    std::vector<double> ratios;
    for (const Pair& pair : pairs) ratios.push_back(pair.here / pair.there);
    const double middle = MedianOf(ratios);
    std::erase_if(pairs, [&](const Pair& pair) {
        const double ratio = pair.here / pair.there / middle;
        return ratio > kWild || ratio < 1 / kWild;
    });
    if (pairs.size() < kFewestCommon) return kNotMeasured;
    double here = 0;
    double there = 0;
    for (const Pair& pair : pairs) {
        here += pair.here;
        there += pair.there;
    }
    return here / there;
}

std::vector<double> Measured(std::span<const double> values) {
    std::vector<double> measured;
    std::copy_if(values.begin(), values.end(), std::back_inserter(measured),
                 [](double value) { return std::isfinite(value); });
    return measured;
}

constexpr double kHalfWorth = 4;     // deviations from the best that halve a score
constexpr double kLeastScale = 0.03; // of the best

// Multiplies the scores by what one measure leaves of them. Less is better.
void Judge(const std::vector<double>& values, std::vector<double>& scores) {
    std::vector<double> known = Measured(values);
    if (known.size() < 2) return;
    std::sort(known.begin(), known.end());
    const std::size_t tenth = (known.size() + 9) / 10;
    const double best = MedianInPlace(std::span(known).first(tenth));
    const double scale = std::max(DeviationOf(known), kLeastScale * std::abs(best));
    if (!(scale > 0)) return;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (std::isfinite(values[i]))
            scores[i] /= 1 + std::max(0.0, values[i] - best) / scale / kHalfWorth;
}

} // namespace

std::size_t ReferenceOf(std::span<const FrameMeasures> frames) {
    const auto most = std::max_element(frames.begin(), frames.end(),
                                       [](const FrameMeasures& one, const FrameMeasures& other) {
                                           return std::pair(one.brightest.size(), one.stars) <
                                                  std::pair(other.brightest.size(), other.stars);
                                       });
    return std::size_t(most - frames.begin());
}

std::vector<double> TransparencyOf(std::span<const FrameMeasures> frames, std::size_t reference,
                                   std::span<const std::optional<FrameMap>> maps) {
    std::vector<double> ratios(frames.size(), kNotMeasured);
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (maps[i]) ratios[i] = RatioOf(CommonStars(frames[i], *maps[i], frames[reference]));
    const std::vector<double> known = Measured(ratios);
    const double middle = MedianOf(known);
    for (double& ratio : ratios) ratio = known.size() < 2 ? kNotMeasured : ratio / middle;
    return ratios;
}

std::vector<double> ScoresOf(std::span<const FrameMeasures> frames,
                             std::span<const double> transparency) {
    std::vector<double> scores(frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i)
        scores[i] = std::isfinite(frames[i].hfr) ? 100 : kNotMeasured;
    // Frames without stars are no part of the series.
    const auto values = [&](const auto& of) {
        std::vector<double> all(frames.size(), kNotMeasured);
        for (std::size_t i = 0; i < frames.size(); ++i)
            if (std::isfinite(scores[i])) all[i] = of(i);
        return all;
    };
    Judge(values([&](std::size_t i) { return frames[i].hfr; }), scores);
    Judge(values([&](std::size_t i) {
              const double e = frames[i].eccentricity;
              return 1 / std::sqrt(std::max(1e-3, 1 - e * e));
          }),
          scores);
    // So much less light is as much worse, whatever it is less of.
    Judge(values([&](std::size_t i) {
              return i < transparency.size() ? 1 / std::max(1e-3, transparency[i]) : kNotMeasured;
          }),
          scores);
    Judge(values([&](std::size_t i) { return frames[i].noise; }), scores);
    return scores;
}

} // namespace tarn
