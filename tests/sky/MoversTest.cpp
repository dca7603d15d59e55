// Movers of known speed, and what only seems to move.
#include "MadeNights.h"

#include "sky/movers/MedianRows.h"
#include "sky/movers/TrackFit.h"

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

TEST(Movers, AllThatStandOutTenfoldAreFoundAndNothingElse) {
    for (const NightLike& like :
         {NightLike{1}, NightLike{.seed = 2, .drift = 0.8, .turn = 3},
          NightLike{.seed = 3, .drift = 0.3, .turn = 180}, NightLike{.seed = 4, .minutes = 2}}) {
        const NightSurvey survey = SurveyOf(
            MadeNight(like, SomeMovers(17 * like.seed, 10, like.minutes * like.frames / 60)));
        EXPECT_EQ(survey.missed, std::vector<double>()) << like.seed;
        EXPECT_EQ(survey.fault, "") << like.seed;
        EXPECT_EQ(survey.wrong, std::vector<double>()) << like.seed;
    }
}

TEST(Movers, NineOfTenOfEightfoldAreFound) {
    std::size_t missed = 0;
    for (const NightLike& like : {NightLike{5}, NightLike{.seed = 6, .turn = 180}}) {
        const NightSurvey survey = SurveyOf(MadeNight(like, SomeMovers(17 * like.seed, 8, 2.5)));
        missed += survey.missed.size();
        EXPECT_EQ(survey.fault, "") << like.seed;
        EXPECT_EQ(survey.wrong, std::vector<double>()) << like.seed;
    }
    EXPECT_LE(missed, 1U);
}

// Their light is that of points which stand out as far, over a larger area.
TEST(Movers, FastOnesAreDrawnOut) {
    const NightLike like{.seed = 11, .turn = 2, .exposed = 0.9};
    const NightSurvey survey = SurveyOf(MadeNight(like, SomeMovers(61, 10, 2.5)));
    EXPECT_EQ(survey.fault, "");
    EXPECT_EQ(survey.missed, std::vector<double>());
    EXPECT_EQ(survey.wrong, std::vector<double>());
}

TEST(Movers, ANightWithoutAnyHasNone) {
    EXPECT_EQ(SurveyOf(MadeNight({.seed = 7, .drift = 0.9}, {})).wrong, std::vector<double>());
}

TEST(Movers, SightsAreInTheirOwnFrames) {
    const TrueMover truth{300, 200, 60, 30, 25};
    const MadeNight night({.seed = 8, .frames = 6, .minutes = 10, .drift = 5, .turn = 180},
                          {truth});
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
    const MadeNight night({.seed = 9, .frames = 6, .minutes = 10}, {{300, 200, 60, 30, 25}});
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

// What moves is told in pixels, of which a sample may be a cell.
TEST(Movers, SlowOnesOfAMosaicAreFound) {
    const TrueMover slow{300, 200, 6, 30, 25};
    const MadeNight night({.seed = 12, .frames = 16, .minutes = 12}, {slow});
    EXPECT_EQ(night.Found(night.Find(), slow), nullptr);
    const MoversResult found = night.Find(2);
    EXPECT_EQ(found.movers.size(), 1U);
    EXPECT_NE(night.Found(found, slow), nullptr);
}

// Two files of one exposure tell of one moment, and no exposure fills the memory.
TEST(Movers, MomentsCountAndExposuresHaveALimit) {
    const MadeNight night({.seed = 9, .frames = 6, .minutes = 10}, {{300, 200, 60, 30, 25}});
    std::vector<MoversFrame> frames;
    for (std::size_t i = 0; i < 6; ++i)
        frames.push_back({{i, Inverse(night.Series().Frame(i).fromField), 1},
                          600.0 * double(i / 3),
                          3,
                          i == 0   ? 1e30
                          : i == 1 ? INFINITY
                                   : 0});
    MoversOrder order;
    order.scratch = ::testing::TempDir();
    const FrameReader read = night.Series().Reader();
    EXPECT_EQ(FindMovers(frames, 0, read, order).faults,
              std::vector<std::string>(6, "fewer than three frames of its night"));
    for (std::size_t i = 0; i < 6; ++i) frames[i].seconds = 600.0 * double(i);
    const MoversResult result = FindMovers(frames, 0, read, order);
    EXPECT_EQ(result.fault, "");
    EXPECT_EQ(result.movers.size(), 1U);
    EXPECT_EQ(CountMoments({3, 1, 1, 2, 3}), 3U);
}

namespace {

// A night of one fast mover, laid over its field.
struct LaidNight {
    TrueMover fast{320, 240, 200, 20, 25};
    MadeNight night{{.seed = 13, .frames = 32, .minutes = 5}, {fast}};
    WarpedSeries series{::testing::TempDir(), night.Series().Reader()};
    std::vector<SeriesFrame> frames{};
    std::vector<DifferenceFrame> times{};

    LaidNight() {
        EXPECT_EQ(series.SetReference(0), "");
        for (std::size_t i = 0; i < 32; ++i) {
            frames.push_back({i, Inverse(night.Series().Frame(i).fromField), 1});
            times.push_back({double(i) / 12, 1.3, 0});
        }
        std::vector<std::string> faults;
        EXPECT_TRUE(series.Make(frames, {}, faults));
    }
    std::pair<double, double> PlaceAt(std::size_t frame) const {
        const auto [x, y] = night.PlaceIn(fast, frame);
        return frames[frame].map(x, y);
    }
};

} // namespace

TEST(Movers, LongWaysAreMeasuredInParts) {
    const LaidNight laid;
    const auto [x, y] = laid.PlaceAt(0);
    const double angle = laid.fast.angle * std::numbers::pi / 180;
    const Track track{x + 0.5, y - 0.4, 200 * std::cos(angle), 200 * std::sin(angle), {}};
    std::string fault;
    const auto whole = MeasureTrack(laid.series, laid.times, track, fault);
    const auto parts = MeasureTrack(laid.series, laid.times, track, fault, 60'000);
    ASSERT_EQ(fault, "");
    ASSERT_TRUE(whole);
    ASSERT_TRUE(parts);
    EXPECT_NEAR(parts->track.speedX, whole->track.speedX, 0.2);
    EXPECT_NEAR(parts->track.x, whole->track.x, 0.1);
    EXPECT_NEAR(parts->signal, whole->signal, 0.1 * whole->signal);
    EXPECT_FALSE(MeasureTrack(laid.series, laid.times, track, fault, 1000));
    EXPECT_NE(fault, "");
}

// Where rows of all frames are too much, tiles are looked through, each source in one of them.
TEST(Movers, ManyFramesAreLookedThroughInTiles) {
    const LaidNight laid;
    std::vector<std::vector<NewSource>> sources;
    ASSERT_EQ(FindNewSources(laid.series, laid.times, {}, {}, sources, 1), "");
    std::vector<std::size_t> missed;
    for (std::size_t frame = 0; frame < sources.size(); ++frame) {
        const auto [x, y] = laid.PlaceAt(frame);
        if (x < 5 || y < 5 || x > kNightWidth - 6 || y > kNightHeight - 6) continue;
        const auto near = std::count_if(sources[frame].begin(), sources[frame].end(),
                                        [x = x, y = y](const NewSource& source) {
                                            return std::hypot(source.x - x, source.y - y) < 1.5;
                                        });
        EXPECT_LE(near, 1) << frame;
        if (near == 0) missed.push_back(frame);
    }
    EXPECT_LE(missed.size(), 3U); // before a star
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
