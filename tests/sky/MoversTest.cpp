// Nights with movers of known speed among all that only seems to move.
#include "MadeSeries.h"

#include "sky/movers/MedianRows.h"
#include "sky/movers/Movers.h"
#include "sky/stack/SeriesPlan.h"
#include "sky/stars/RobustStatistics.h"

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr double kSky = 1000;
constexpr double kReadNoise = 8;

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
};

// Flux that stands out so far in a frame of this night.
double FluxOf(double signal) {
    const double sigma = 3 / 2.3548;
    return signal * std::sqrt((kSky + kReadNoise * kReadNoise) * 4 * std::numbers::pi) * sigma;
}

class Night {
public:
    Night(const NightLike& like, std::vector<TrueMover> movers)
        : m_like(like), m_movers(std::move(movers)), m_series(kWidth, kHeight, like.seed, 70) {
        const std::vector<MadeStar> still = m_series.Stars();
        MadeSky random(2, 2, like.seed + 5);
        std::vector<std::pair<int, int>> hot;
        for (int i = 0; i < 80; ++i)
            hot.emplace_back(int(random.Random(5, kWidth - 5)), int(random.Random(5, kHeight - 5)));
        for (int frame = 0; frame < like.frames; ++frame) {
            const double part = double(frame) / like.frames;
            SeenFrame seen;
            const double turn = like.turn == 180 ? (part < 0.5 ? 0 : 180) : like.turn * part;
            seen.fromField =
                TurnedMap(kWidth, kHeight, turn, like.drift * frame, -0.3 * like.drift * frame);
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
                    sky.At(int(random.Random(2, kWidth - 3)), int(random.Random(2, kHeight - 3))) +=
                        4000;
            };
            m_series.Add(seen, like.seed * 1000 + unsigned(frame), more, after);
        }
    }

    MoversResult Find() const {
        const std::vector<FrameMeasures> measures = m_series.Measures();
        const SeriesPlan plan = PlanSeries(measures);
        EXPECT_EQ(plan.frames.size(), m_series.Count());
        std::vector<MoversFrame> frames;
        for (const SeriesFrame& frame : plan.frames)
            frames.push_back(
                {frame, 60 * m_like.minutes * double(frame.number), measures[frame.number].fwhm});
        MoversOrder order;
        order.scratch = ::testing::TempDir();
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
            const auto [x, y] = seen.fromField(mover.x + mover.speed * hours * std::cos(angle),
                                               mover.y + mover.speed * hours * std::sin(angle));
            const double flux = FluxOf(mover.signal) * seen.light;
            sky.Add(
                {.x = x,
                 .y = y,
                 .peak = flux * 4 * std::numbers::ln2 / (std::numbers::pi * seen.fwhm * seen.fwhm),
                 .fwhm = seen.fwhm});
        }
        if (frame % 9 == 4) // a satellite
            for (int x = 0; x < kWidth; ++x)
                sky.Add({.x = double(x), .y = 50.0 + 8 * frame + 0.3 * x, .peak = 150, .fwhm = 3});
    }

    NightLike m_like;
    std::vector<TrueMover> m_movers;
    MadeSeries m_series;
};

std::vector<TrueMover> SomeMovers(unsigned seed, double signal, double hours) {
    MadeSky random(2, 2, seed);
    std::vector<TrueMover> movers;
    for (const double speed : {10.0, 14.0, 25.0, 50.0, 90.0, 160.0, 280.0, 400.0}) {
        TrueMover mover{0, 0, speed, random.Random(-180, 180), signal};
        // As much of its way in the frame as there is room for.
        const double half = std::min(170.0, speed * hours / 2);
        mover.x = random.Random(half + 30, kWidth - half - 30);
        mover.y = random.Random(half + 30, kHeight - half - 30);
        movers.push_back(mover);
    }
    return movers;
}

// What was not found of a night, as speeds, and what was found that is none of it.
struct Survey {
    std::vector<double> missed;
    std::vector<double> wrong;
};

Survey SurveyOf(const Night& night) {
    const MoversResult result = night.Find();
    EXPECT_EQ(result.fault, "");
    Survey survey;
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

} // namespace

TEST(Movers, AllThatStandOutTenfoldAreFoundAndNothingElse) {
    for (const NightLike& like :
         {NightLike{1}, NightLike{.seed = 2, .drift = 0.8, .turn = 3},
          NightLike{.seed = 3, .drift = 0.3, .turn = 180}, NightLike{.seed = 4, .minutes = 2}}) {
        const Survey survey =
            SurveyOf(Night(like, SomeMovers(17 * like.seed, 10, like.minutes * like.frames / 60)));
        EXPECT_EQ(survey.missed, std::vector<double>()) << like.seed;
        EXPECT_EQ(survey.wrong, std::vector<double>()) << like.seed;
    }
}

TEST(Movers, NineOfTenOfEightfoldAreFound) {
    std::size_t missed = 0;
    for (const NightLike& like : {NightLike{5}, NightLike{.seed = 6, .turn = 180}}) {
        const Survey survey = SurveyOf(Night(like, SomeMovers(17 * like.seed, 8, 2.5)));
        missed += survey.missed.size();
        EXPECT_EQ(survey.wrong, std::vector<double>()) << like.seed;
    }
    EXPECT_LE(missed, 1U);
}

TEST(Movers, ANightWithoutAnyHasNone) {
    EXPECT_EQ(SurveyOf(Night({.seed = 7, .drift = 0.9}, {})).wrong, std::vector<double>());
}

TEST(Movers, SightsAreInTheirOwnFrames) {
    const TrueMover truth{300, 200, 60, 30, 25};
    const Night night({.seed = 8, .frames = 6, .minutes = 10, .drift = 5, .turn = 180}, {truth});
    const MoversResult result = night.Find();
    ASSERT_EQ(result.movers.size(), 1U);
    const Mover& mover = result.movers.front();
    ASSERT_EQ(mover.sights.size(), 6U);
    for (std::size_t i = 0; i < mover.sights.size(); ++i) {
        const MoverSight& sight = mover.sights[i];
        EXPECT_EQ(sight.number, i);
        const auto [x, y] = night.PlaceIn(truth, i);
        EXPECT_NEAR(sight.x, x, 0.2) << i;
        EXPECT_NEAR(sight.y, y, 0.2) << i;
        const double flux = FluxOf(25) * night.Series().Frame(i).light;
        EXPECT_NEAR(sight.flux, flux, 0.2 * flux) << i;
    }
    EXPECT_NEAR(mover.speed, 60, 1);
}

TEST(Movers, FramesThatCannotBeReadAreToldAndLeftOut) {
    const Night night({.seed = 9, .frames = 6, .minutes = 10}, {{300, 200, 60, 30, 25}});
    std::vector<MoversFrame> frames;
    for (std::size_t i = 0; i < 6; ++i)
        frames.push_back({{i, Inverse(night.Series().Frame(i).fromField), 1}, 600.0 * double(i)});
    const auto read = [&](std::size_t number, std::string& error) -> std::optional<FrameSamples> {
        if (number != 2) return night.Series().Samples(number);
        error = "The file ends too early";
        return std::nullopt;
    };
    MoversOrder order;
    order.scratch = ::testing::TempDir();
    const MoversResult result = FindMovers(frames, 0, read, order);
    EXPECT_EQ(result.fault, "");
    EXPECT_EQ(result.faults[2], "The file ends too early");
    ASSERT_EQ(result.movers.size(), 1U);
    EXPECT_EQ(result.movers[0].sights.size(), 5U);
    EXPECT_NE(FindMovers(std::span(frames).first(2), 0, read, order).fault, "");
    std::atomic<bool> cancelled = true;
    order.watch.cancelled = &cancelled;
    EXPECT_TRUE(FindMovers(frames, 0, read, order).cancelled);
}

TEST(MedianRows, IsTheMiddleOfWhatIsThere) {
    std::minstd_rand random(3);
    const SampleCodes codes;
    for (const std::size_t count : {1U, 2U, 3U, 7U, 30U, 48U}) {
        constexpr std::size_t kSamples = 700;
        std::vector<std::vector<std::int16_t>> frames(count);
        std::vector<const std::int16_t*> rows;
        for (auto& frame : frames) {
            for (std::size_t i = 0; i < kSamples; ++i)
                frame.push_back(random() % 5 == 0 ? kNoSample
                                                  : codes.CodeOf(float(random() % 1000)));
            rows.push_back(frame.data());
        }
        std::vector<float> medians(kSamples);
        MedianRows(count).Take(rows, kSamples, medians.data());
        for (std::size_t i = 0; i < kSamples; ++i) {
            std::vector<float> values;
            for (const auto& frame : frames)
                if (frame[i] != kNoSample) values.push_back(SampleCodes::Deviations(frame[i]));
            if (values.empty())
                EXPECT_TRUE(std::isnan(medians[i])) << count;
            else
                EXPECT_FLOAT_EQ(medians[i], MedianInPlace(std::span(values))) << count << ' ' << i;
        }
    }
}
