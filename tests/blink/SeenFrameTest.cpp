// Frames laid over each other as they are seen: stars stand still, skies are level.
#include "MadeSeries.h"

#include "blink/FrameLight.h"
#include "blink/SeenFrame.h"
#include "sky/stars/RobustStatistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tarn::testing {
namespace {

using Seen = tarn::SeenFrame; // the other one is how a frame was taken

constexpr int kWidth = 720;
constexpr int kHeight = 480;

FrameMap After(const FrameMap& first, const FrameMap& second) {
    FrameMap both{
        second.a * first.a + second.b * first.d, second.a * first.b + second.b * first.e, 0,
        second.d * first.a + second.e * first.d, second.d * first.b + second.e * first.e, 0};
    std::tie(both.c, both.f) = second(first.c, first.f);
    return both;
}

// A night with drift, turn, a meridian flip, thin cloud and moonlight.
struct SeenNight {
    MadeSeries series{kWidth, kHeight, 4, 50};
    std::vector<SkyGrid> skies;

    SeenNight() {
        const double turns[] = {0, 0.4, -1.3, 180, 181.7};
        for (int i = 0; i < 5; ++i)
            series.Add({.fromField = TurnedMap(kWidth, kHeight, turns[i], 2.37 * i, -1.61 * i),
                        .fwhm = 2.8,
                        .light = i == 2 ? 0.7 : 1,
                        .sky = 1000.0 + 60 * i,
                        .slope = 100.0 * i},
                       unsigned(50 + i));
        for (std::size_t i = 0; i < series.Count(); ++i)
            skies.push_back(SkyOf(series.Samples(i), 0));
    }
    FrameMap MapOf(std::size_t frame) const {
        return After(Inverse(series.Frame(frame).fromField), series.Frame(0).fromField);
    }
    Seen See(std::size_t frame, const GridView& view) const {
        const double light = 1 / series.Frame(frame).light;
        const PlaneLevels levels{light, SurfaceBetween(skies[frame], light, MapOf(frame), skies[0]),
                                 SampleCodes(skies[0].level, skies[0].noise)};
        return SeeFrame(series.Samples(frame), MapOf(frame), {&levels, 1}, view);
    }
};

GridView ViewAt(double times, bool bottomUp = false) {
    GridView view{int(kWidth * std::min(1.0, times)), int(kHeight * std::min(1.0, times))};
    view.step = 1 / times;
    view.left = 0.5 / times - 0.5 + (times > 1 ? kWidth / 4.0 : 0);
    view.top = 0.5 / times - 0.5 + (times > 1 ? kHeight / 4.0 : 0);
    if (bottomUp) view.mirrorAt = kHeight - 1;
    return view;
}

// The centre of light around a place of the screen.
std::pair<double, double> CentreAt(const Seen& seen, double u, double v, double radius) {
    double sum = 0;
    double x = 0;
    double y = 0;
    for (int row = int(v - radius); row <= int(v + radius) + 1; ++row)
        for (int column = int(u - radius); column <= int(u + radius) + 1; ++column) {
            if (std::hypot(column - u, row - v) > radius) continue;
            const std::int16_t code =
                seen.codes[std::size_t(row) * std::size_t(seen.view.width) + std::size_t(column)];
            const double light = SampleCodes::Deviations(code);
            sum += light;
            x += light * column;
            y += light * row;
        }
    return {x / sum, y / sum};
}

// Bright ones by themselves, well inside of the view.
std::vector<MadeStar> StarsIn(const MadeSeries& series, const GridView& view) {
    std::vector<MadeStar> all;
    const FrameMap toScreen = Inverse(view.ToGrid());
    for (const MadeStar& star : series.Stars()) {
        const auto [x, y] = series.Frame(0).fromField(star.x, star.y);
        const auto [u, v] = toScreen(x, y);
        const bool alone =
            std::none_of(series.Stars().begin(), series.Stars().end(), [&](const MadeStar& other) {
                const double away = std::hypot(other.x - star.x, other.y - star.y);
                return away > 0 && away < 30;
            });
        const double border = 40 / view.step;
        if (star.peak > 10000 && alone && u > border && v > border && u < view.width - border &&
            v < view.height - border)
            all.push_back({.x = u, .y = v});
    }
    return all;
}

TEST(SeenFrame, StarsStandStillAtAnySizeAndAfterTheHalfTurn) {
    const SeenNight night;
    for (const double times : {0.27, 0.4, 0.6, 1.0, 2.0})
        for (const bool bottomUp : {false, true}) {
            const GridView view = ViewAt(times, bottomUp);
            const auto stars = StarsIn(night.series, view);
            ASSERT_GE(stars.size(), times > 1 ? 1U : 4U) << times;
            const double radius = std::max(3.0, 7 * times);
            for (std::size_t frame = 0; frame < night.series.Count(); ++frame) {
                const Seen seen = night.See(frame, view);
                double worst = 0;
                for (const MadeStar& star : stars) {
                    const auto [u, v] = CentreAt(seen, star.x, star.y, radius);
                    worst = std::max(worst, std::hypot(u - star.x, v - star.y));
                }
                // From its true place, so that from frame to frame it is at most twice as much.
                EXPECT_LT(worst, 0.1) << "frame " << frame << " at " << times;
            }
        }
}

TEST(SeenFrame, SkiesAndLightAreThoseOfTheReference) {
    const SeenNight night;
    const GridView view = ViewAt(0.4);
    const Seen reference = night.See(0, view);
    for (std::size_t frame = 1; frame < night.series.Count(); ++frame) {
        const Seen seen = night.See(frame, view);
        for (const int part : {1, 3, 5}) { // of the width, in sixths: left, middle, right
            std::vector<double> differences;
            for (int row = view.height / 4; row < view.height * 3 / 4; ++row)
                for (int column = view.width * part / 6 - 12; column < view.width * part / 6 + 12;
                     ++column) {
                    const std::size_t at =
                        std::size_t(row) * std::size_t(view.width) + std::size_t(column);
                    differences.push_back(SampleCodes::Deviations(seen.codes[at]) -
                                          SampleCodes::Deviations(reference.codes[at]));
                }
            EXPECT_NEAR(MedianOf(differences), 0, 0.12) << "frame " << frame << " part " << part;
        }
    }
}

TEST(SeenFrame, WhatTheFrameDoesNotReachIsNoSample) {
    MadeSeries series(60, 40, 3, 2);
    series.Add({}, 1);
    const PlaneLevels levels{1, {}, SampleCodes(1000, 30)};
    GridView view{60, 40};
    const FrameMap shifted{1, 0, 20, 0, 1, -10}; // to the right and up
    const Seen seen = SeeFrame(series.Samples(0), shifted, {&levels, 1}, view);
    const auto missing = [&](int row) {
        const auto* from = seen.codes.data() + std::ptrdiff_t(row) * 60;
        std::vector<int> columns;
        for (int x = 0; x < 60; ++x)
            if (from[x] == kNoSample) columns.push_back(x);
        return columns;
    };
    std::vector<int> left(20);
    std::vector<int> all(60);
    std::iota(left.begin(), left.end(), 0);
    std::iota(all.begin(), all.end(), 0);
    EXPECT_EQ(missing(0), left);
    EXPECT_EQ(missing(29), left);
    EXPECT_EQ(missing(30), all);
    const Seen away = SeeFrame(series.Samples(0), {1, 0, 500, 0, 1, 0}, {&levels, 1}, view);
    EXPECT_EQ(away.codes, std::vector<std::int16_t>(2400, kNoSample));
}

TEST(SeenFrame, MedianLeavesOutWhatIsNoSampleAndShowsWhatMoved) {
    std::vector<Seen> frames(3);
    for (int frame = 0; frame < 3; ++frame) {
        frames[std::size_t(frame)].view = {50, 1};
        for (int i = 0; i < 50; ++i)
            frames[std::size_t(frame)].codes.push_back(std::int16_t(100 * (i % 3) + 10 * frame));
    }
    frames[0].codes[7] = kNoSample;
    frames[2].codes[7] = kNoSample;
    frames[2].codes[20] = 4000;
    const std::vector<const Seen*> all{&frames[0], &frames[1], &frames[2]};
    const Seen median = MedianOfFrames(all);
    EXPECT_EQ(median.codes, frames[1].codes); // the middle one of each place, and all there is at 7
    const DifferenceLight light(frames[2], median);
    EXPECT_EQ(light(110, 110), 96); // grey
    EXPECT_EQ(light(4000, frames[1].codes[20]), 255);
    EXPECT_EQ(light(-4000, frames[1].codes[20]), 0);
    EXPECT_EQ(light(kNoSample, 110), 0);
}

TEST(SeenFrame, SkyIsADarkGreyAndStarsAreWhite) {
    MadeSeries series(200, 150, 3, 10);
    series.Add({}, 1);
    const SkyGrid sky = SkyOf(series.Samples(0), 0);
    const SampleCodes codes(sky.level, sky.noise);
    const LightOfCodes light(codes, StretchOfFrame(series.Samples(0)));
    EXPECT_NEAR(light(codes.CodeOf(float(sky.level))), 64, 6);
    EXPECT_GT(light(codes.CodeOf(30000)), 230);
    EXPECT_EQ(light(kNoSample), 0);
}

// Codes made many at a time are those made one by one.
TEST(SampleCodes, RowsAreAsSingleOnes) {
    const SampleCodes codes(1000, 25);
    std::vector<float> values{1000,  1001,  990,    0,
                              65535, 1e12F, -1e12F, std::numeric_limits<float>::quiet_NaN()};
    std::vector<std::int16_t> rows(values.size());
    codes.CodeRow(values.data(), values.size(), rows.data());
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_NEAR(rows[i], codes.CodeOf(values[i]), 1) << values[i];
    EXPECT_EQ(rows.back(), kNoSample);
}

} // namespace
} // namespace tarn::testing
