// Nights with movers of known speed among all that only seems to move.
#pragma once

#include "MadeSeries.h"

#include "sky/movers/Movers.h"
#include "sky/stack/SeriesPlan.h"
#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tarn::testing {

inline constexpr int kNightWidth = 640;
inline constexpr int kNightHeight = 480;
inline constexpr double kNightSky = 1000;
inline constexpr double kNightReadNoise = 8;

struct TrueMover {
    double x; // of the field, in the middle of the night
    double y;
    double speed; // pixels an hour
    double angle;
    double signal; // of each frame
};

struct NightLike {
    unsigned seed = 1;
    int frames = 30;
    double minutes = 5; // from frame to frame
    double drift = 0.4; // pixels a frame
    double turn = 0;    // degrees over the night; 180: a half turn in the middle
    double exposed = 0; // part of that time in which movers are drawn out
    bool told = true;   // that they may be
};

// How many times the area of a point that of a trail is, as a matched filter weighs it.
inline double Drawn(double trail) {
    const double sigma = 3 / 2.3548;
    double sum = 0; // of the overlap of all pairs of its points
    constexpr int kParts = 200;
    for (int i = 0; i < kParts; ++i)
        for (int j = 0; j < kParts; ++j)
            sum += std::exp(-std::pow(trail * (i - j) / kParts / sigma, 2) / 4);
    return kParts * kParts / sum;
}

// Flux that stands out so far in a frame of this night.
inline double FluxOf(double signal) {
    const double sigma = 3 / 2.3548;
    return signal *
           std::sqrt((kNightSky + kNightReadNoise * kNightReadNoise) * 4 * std::numbers::pi) *
           sigma;
}

class MadeNight {
public:
    MadeNight(const NightLike& like, std::vector<TrueMover> movers)
        : m_like(like), m_movers(std::move(movers)),
          m_series(kNightWidth, kNightHeight, like.seed, 70) {
        const std::vector<MadeStar> still = m_series.Stars();
        MadeSky random(2, 2, like.seed + 5);
        std::vector<std::pair<int, int>> hot;
        for (int i = 0; i < 80; ++i)
            hot.emplace_back(int(random.Random(5, kNightWidth - 5)),
                             int(random.Random(5, kNightHeight - 5)));
        for (int frame = 0; frame < like.frames; ++frame) {
            const double part = double(frame) / like.frames;
            SeenFrame seen;
            const double turn = like.turn == 180 ? (part < 0.5 ? 0 : 180) : like.turn * part;
            seen.fromField = TurnedMap(kNightWidth, kNightHeight, turn, like.drift * frame,
                                       -0.3 * like.drift * frame);
            seen.fwhm = random.Random(2.8, 3.3);
            seen.light = random.Random(0.85, 1);
            // Some stars vary.
            for (std::size_t i = 0; i < m_series.Stars().size(); i += 25)
                m_series.Stars()[i].peak =
                    still[i].peak * (1 + 0.4 * std::sin(0.35 * frame + double(i)));
            const auto more = [&](MadeSky& sky) { AddAll(sky, seen, frame); };
            const auto after = [&](MadeSky& sky) {
                for (std::size_t i = 0; i < hot.size(); ++i) {
                    sky.At(hot[i].first, hot[i].second) += float(300 + 100 * i);
                    if (i % 8 == 0) sky.At(hot[i].first + 1, hot[i].second) += 700;
                }
                for (int i = 0; i < 12; ++i)
                    sky.At(int(random.Random(2, kNightWidth - 3)),
                           int(random.Random(2, kNightHeight - 3))) += 4000;
            };
            m_series.Add(seen, like.seed * 1000 + unsigned(frame), more, after);
        }
    }

    MoversResult Find(double cell = 1) const {
        const std::vector<FrameMeasures> measures = m_series.Measures();
        const SeriesPlan plan = PlanSeries(measures);
        std::vector<MoversFrame> frames;
        for (const SeriesFrame& frame : plan.frames)
            frames.push_back(
                {frame, 60 * m_like.minutes * double(frame.number), measures[frame.number].fwhm,
                 m_like.told ? 60 * m_like.minutes * std::max(0.5, m_like.exposed) : 0});
        MoversOrder order;
        order.scratch = "/tmp";
        order.cell = cell;
        return FindMovers(frames, *plan.reference, m_series.Reader(), order);
    }

    // Where a mover stands in a frame.
    std::pair<double, double> PlaceIn(const TrueMover& mover, std::size_t frame) const {
        const double hours = m_like.minutes / 60 * (double(frame) - m_like.frames / 2.0);
        const double angle = mover.angle * std::numbers::pi / 180;
        return m_series.Frame(frame).fromField(mover.x + mover.speed * hours * std::cos(angle),
                                               mover.y + mover.speed * hours * std::sin(angle));
    }

    // The mover's own; null where it was not found within a pixel and 5 % of its speed.
    const Mover* Found(const MoversResult& result, const TrueMover& truth) const {
        for (const Mover& mover : result.movers) {
            std::vector<double> off;
            for (const MoverSight& sight : mover.sights) {
                const auto [x, y] = PlaceIn(truth, sight.number);
                off.push_back(std::hypot(sight.x - x, sight.y - y));
            }
            if (MedianOf(off) < 1 && std::abs(mover.speed - truth.speed) < 0.05 * truth.speed)
                return &mover;
        }
        return nullptr;
    }

    const MadeSeries& Series() const { return m_series; }
    const std::vector<TrueMover>& Movers() const { return m_movers; }

private:
    void AddAll(MadeSky& sky, const SeenFrame& seen, int frame) const {
        for (const TrueMover& mover : m_movers) {
            const double hours = m_like.minutes / 60 * (frame - m_like.frames / 2.0);
            const double angle = mover.angle * std::numbers::pi / 180;
            const double trail = mover.speed * m_like.minutes / 60 * m_like.exposed;
            const int parts = 1 + int(trail);
            const double flux = FluxOf(mover.signal) * std::sqrt(Drawn(trail)) * seen.light / parts;
            for (int part = 0; part < parts; ++part) {
                const double way = mover.speed * hours + trail * ((part + 0.5) / parts - 0.5);
                const auto [x, y] = seen.fromField(mover.x + way * std::cos(angle),
                                                   mover.y + way * std::sin(angle));
                sky.Add({.x = x,
                         .y = y,
                         .peak = flux * 4 * std::numbers::ln2 /
                                 (std::numbers::pi * seen.fwhm * seen.fwhm),
                         .fwhm = seen.fwhm});
            }
        }
        if (frame % 9 == 4) // a satellite
            for (int x = 0; x < kNightWidth; ++x)
                sky.Add({.x = double(x), .y = 50.0 + 8 * frame + 0.3 * x, .peak = 150, .fwhm = 3});
    }

    NightLike m_like;
    std::vector<TrueMover> m_movers;
    MadeSeries m_series;
};

// One of each speed.
inline std::vector<TrueMover> SomeMovers(unsigned seed, double signal, double hours) {
    MadeSky random(2, 2, seed);
    std::vector<TrueMover> movers;
    for (const double speed : {10.0, 14.0, 25.0, 50.0, 90.0, 160.0, 280.0, 400.0}) {
        TrueMover mover{0, 0, speed, random.Random(-180, 180), signal};
        // As much of its way in the frame as there is room for.
        const double half = std::min(170.0, speed * hours / 2);
        mover.x = random.Random(half + 30, kNightWidth - half - 30);
        mover.y = random.Random(half + 30, kNightHeight - half - 30);
        movers.push_back(mover);
    }
    return movers;
}

// What was not found of a night, as speeds, and what was found that is none of it.
struct NightSurvey {
    std::string fault;
    std::vector<double> missed;
    std::vector<double> wrong;
};

inline NightSurvey SurveyOf(const MadeNight& night) {
    const MoversResult result = night.Find();
    NightSurvey survey;
    survey.fault = result.fault;
    for (const TrueMover& mover : night.Movers())
        if (!night.Found(result, mover)) survey.missed.push_back(mover.speed);
    for (const Mover& mover : result.movers) {
        const bool isTrue =
            std::any_of(night.Movers().begin(), night.Movers().end(), [&](const TrueMover& truth) {
                return night.Found({{mover}, {}, {}, false}, truth) != nullptr;
            });
        if (!isTrue) survey.wrong.push_back(mover.speed);
    }
    return survey;
}

} // namespace tarn::testing
