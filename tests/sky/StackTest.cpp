// Sums of series of known truth.
#include "MadeSeries.h"

#include "sky/stack/Stack.h"
#include "sky/stars/RobustStatistics.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 300;

struct KeptSum : SumTarget {
    int width = 0;
    int height = 0;
    int colours = 0;
    std::vector<float> values;

    bool Begin(int w, int h, int c) override {
        width = w;
        height = h;
        colours = c;
        values.assign(std::size_t(w) * std::size_t(h) * std::size_t(c), -1);
        return true;
    }
    bool Write(int colour, int row, int rows, const float* from) override {
        const auto at =
            (std::size_t(colour) * std::size_t(height) + std::size_t(row)) * std::size_t(width);
        std::copy_n(from, std::size_t(rows) * std::size_t(width),
                    values.begin() + std::ptrdiff_t(at));
        return true;
    }
    float At(int x, int y, int colour = 0) const {
        return values[(std::size_t(colour) * std::size_t(height) + std::size_t(y)) *
                          std::size_t(width) +
                      std::size_t(x)];
    }
    ValuePlane Plane() const {
        ValuePlane plane;
        plane.width = width;
        plane.height = height;
        plane.floats = values.data();
        return plane;
    }
};

StackOrder Order(double sigmas = 3) {
    StackOrder order;
    order.sigmas = sigmas;
    order.scratch = ::testing::TempDir();
    return order;
}

struct Sum {
    SeriesPlan plan;
    StackResult result;
    KeptSum kept;
};

Sum SumOf(const MadeSeries& series, const StackOrder& order = Order()) {
    Sum sum;
    sum.plan = PlanSeries(series.Measures());
    sum.result = StackSeries(sum.plan, series.Reader(), order, sum.kept);
    EXPECT_EQ(sum.result.fault, "");
    return sum;
}

// The standard deviation of the sky between the stars, of a part that all frames cover.
double SkyNoise(const KeptSum& sum, const MadeSeries& series, const FrameMap& fromField) {
    std::vector<double> values;
    for (int y = 60; y < kHeight - 60; y += 3)
        for (int x = 60; x < kWidth - 60; x += 3) {
            bool isNear = false;
            for (const MadeStar& star : series.Stars()) {
                const auto [starX, starY] = fromField(star.x, star.y);
                isNear = isNear || std::hypot(starX - x, starY - y) < 12;
            }
            if (!isNear) values.push_back(sum.At(x, y));
        }
    return DeviationOf(values);
}

double FluxAt(const KeptSum& sum, double x, double y) {
    constexpr int kReach = 6;
    double flux = 0;
    std::vector<double> around;
    for (int dy = -kReach - 3; dy <= kReach + 3; ++dy)
        for (int dx = -kReach - 3; dx <= kReach + 3; ++dx) {
            const float value = sum.At(int(std::lround(x)) + dx, int(std::lround(y)) + dy);
            if (std::hypot(dx, dy) > kReach)
                around.push_back(value);
            else
                flux += value;
        }
    const double sky = MedianOf(around);
    int inside = 0;
    for (int dy = -kReach; dy <= kReach; ++dy)
        for (int dx = -kReach; dx <= kReach; ++dx) inside += std::hypot(dx, dy) <= kReach ? 1 : 0;
    return flux - sky * inside;
}

} // namespace

TEST(Stack, NoiseFallsAsItShouldAndLightStays) {
    MadeSeries series(kWidth, kHeight, 3);
    for (unsigned i = 0; i < 16; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 3.37 * (i % 5), -2.21 * (i % 3))},
                   100 + i);
    const Sum sum = SumOf(series);
    ASSERT_TRUE(sum.plan.reference);
    const FrameMap& fromField = series.Frame(*sum.plan.reference).fromField;
    // The grain of a warped frame is a little finer than that of a recorded one: what counts is
    // the noise of a star's light, which is that of sums over some samples.
    std::vector<double> off;
    for (const MadeStar& star : series.Stars()) {
        const auto [x, y] = fromField(star.x, star.y);
        if (x < 30 || y < 30 || x > kWidth - 30 || y > kHeight - 30) continue;
        const double flux = star.peak * 9 * std::numbers::pi / (4 * std::numbers::ln2);
        const double ofLight = 0.003 * flux; // known by the reference's stars alone
        const double noise =
            std::sqrt((flux + (1000 + 64) * std::numbers::pi * 36) / 16 + ofLight * ofLight);
        off.push_back((FluxAt(sum.kept, x, y) - flux) / noise);
    }
    ASSERT_GT(off.size(), 25U);
    EXPECT_LT(std::abs(MedianOf(off)), 0.6);
    EXPECT_LT(DeviationOf(off), 1.4); // 1 and the sky's own doubt
    const double ideal = std::sqrt((1000 + 64) / 16.0);
    EXPECT_LT(SkyNoise(sum.kept, series, fromField), ideal / 0.97);
    EXPECT_GT(SkyNoise(sum.kept, series, fromField), 0.7 * ideal);
    for (const StackedFrame& frame : sum.result.frames) {
        EXPECT_TRUE(frame.used);
        EXPECT_NEAR(frame.weight, 1 / 16.0, 0.01);
        EXPECT_LT(double(frame.rejected), 0.01 * kWidth * kHeight);
    }
}

TEST(Stack, HitsAndTrailsAreGoneAndCounted) {
    MadeSeries series(kWidth, kHeight, 5);
    const auto spoil = [](MadeSky& sky) {
        for (int x = 50; x < 350; ++x)
            sky.Add({.x = double(x), .y = 40 + 0.5 * x, .peak = 600, .fwhm = 3});
    };
    const auto hit = [](MadeSky& sky) {
        for (int i = 0; i < 30; ++i) sky.At(100 + 6 * i, 150) += 20000;
    };
    for (unsigned i = 0; i < 8; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, 0.2 * i, 1.5 * i, 0)}, 40 + i,
                   i == 2 ? std::function(spoil) : std::function<void(MadeSky&)>(),
                   i == 5 ? std::function(hit) : std::function<void(MadeSky&)>());
    const Sum with = SumOf(series);
    const Sum all = SumOf(series, Order(0));
    EXPECT_GT(with.result.frames[2].rejected, 1200U);
    EXPECT_GT(with.result.frames[5].rejected, 30U);
    EXPECT_EQ(all.result.frames[2].rejected, 0U);
    MadeSeries clean(kWidth, kHeight, 5);
    for (unsigned i = 0; i < 8; ++i)
        clean.Add({.fromField = TurnedMap(kWidth, kHeight, 0.2 * i, 1.5 * i, 0)}, 40 + i);
    const SeriesPlan& plan = with.plan;
    KeptSum truth;
    StackSeries(plan, clean.Reader(), Order(0), truth);
    int far = 0;
    double worst = 0;
    for (int y = 20; y < kHeight - 20; ++y)
        for (int x = 20; x < kWidth - 20; ++x) {
            const double noise = std::sqrt(std::max(1000.0F, truth.At(x, y)) / 8);
            const double off = std::abs(with.kept.At(x, y) - truth.At(x, y)) / noise;
            worst = std::max(worst, off);
            far += off > 3 ? 1 : 0;
        }
    EXPECT_LT(worst, 6);
    EXPECT_LT(far, 40);
}

TEST(Stack, HalfTurnsSlopesAndOtherExposuresAreLevelled) {
    MadeSeries series(kWidth, kHeight, 9);
    for (unsigned i = 0; i < 6; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, i < 3 ? 0 : 180, 4.0 * i, 3),
                    .light = i % 2 == 0 ? 1 : 0.4,
                    .slope = 120.0 * i},
                   70 + i);
    const Sum sum = SumOf(series);
    const SeenFrame& reference = series.Frame(*sum.plan.reference);
    for (std::size_t i = 0; i < series.Count(); ++i) EXPECT_EQ(sum.result.frames[i].fault, "") << i;
    // Short exposures are noisier beside the light that they bring.
    EXPECT_LT(sum.result.frames[1].weight, 0.7 * sum.result.frames[0].weight);
    std::vector<double> ratios;
    for (const MadeStar& star : series.Stars()) {
        const auto [x, y] = reference.fromField(star.x, star.y);
        if (x < 40 || y < 40 || x > kWidth - 40 || y > kHeight - 40 || star.peak < 3000) continue;
        const double flux =
            reference.light * star.peak * 9 * std::numbers::pi / (4 * std::numbers::ln2);
        ratios.push_back(FluxAt(sum.kept, x, y) / flux);
    }
    EXPECT_NEAR(MedianOf(ratios), 1, 0.02);
    for (const int x : {60, 200, 340}) {
        std::vector<double> sky;
        for (int y = 60; y < 240; ++y)
            for (int dx = -12; dx <= 12; ++dx) sky.push_back(sum.kept.At(x + dx, y));
        EXPECT_NEAR(MedianOf(sky), reference.sky * reference.light + reference.slope * x / kWidth,
                    6)
            << x;
    }
}

TEST(Stack, LongSeriesGoInPartsAndShiftedBordersHaveFewerFrames) {
    MadeSeries series(160, 120, 4, 25);
    for (unsigned i = 0; i < 60; ++i)
        series.Add({.fromField = TurnedMap(160, 120, 0, i == 7 ? 30 : 0.1 * i, 0)}, 300 + i);
    std::atomic<std::size_t> told = 0;
    StackOrder order = Order();
    order.watch.shrink = 4;
    PartialSum last;
    order.watch.told = [&](std::size_t done, const PartialSum& sum) {
        told = done;
        last = sum;
    };
    const Sum sum = SumOf(series, order);
    EXPECT_EQ(told, 60U);
    EXPECT_EQ(last.width, 40);
    const FrameMap& fromField = series.Frame(*sum.plan.reference).fromField;
    const double noise = std::sqrt(1064 / 60.0);
    std::vector<double> off;
    for (int y = 8; y < 112; ++y)
        for (int x = 10; x < 120; ++x) {
            double truth = 1000;
            for (const MadeStar& star : series.Stars()) {
                const auto [starX, starY] = fromField(star.x, star.y);
                const double square = std::pow(starX - x, 2) + std::pow(starY - y, 2);
                if (square < 400) truth += star.peak * std::exp2(-square / 2.25);
            }
            if (truth < 1001) off.push_back((sum.kept.At(x, y) - truth) / noise);
        }
    EXPECT_LT(std::abs(MedianOf(off)), 0.4);
    EXPECT_LT(DeviationOf(off), 1 / 0.97);
    EXPECT_NEAR(last.values[std::size_t(15 * 40 + 20)], sum.kept.At(82, 62), 200);
}

TEST(Stack, WhatDoesNotFitIsToldAndTheRestGoesOn) {
    MadeSeries series(kWidth, kHeight, 3);
    for (unsigned i = 0; i < 3; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 2.0 * i, 0)}, 500 + i);
    series.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 3 * kWidth, 0)}, 600); // no stars
    std::vector<FrameMeasures> measures = series.Measures();
    measures.push_back(measures[1]);
    measures.back().width = 77;
    measures.push_back(measures[1]);
    const SeriesPlan plan =
        PlanSeries(measures, std::vector<std::string>{"", "", "", "", "", "kept out"});
    KeptSum kept;
    const StackResult result = StackSeries(
        plan,
        [&](std::size_t number, std::string& error) -> std::optional<FrameSamples> {
            if (number != 1) return series.Samples(number);
            error = "The file ends too early";
            return std::nullopt;
        },
        Order(), kept);
    ASSERT_EQ(result.fault, "");
    EXPECT_EQ(result.frames[1].fault, "The file ends too early");
    EXPECT_FALSE(result.frames[1].used);
    EXPECT_NE(result.frames[3].fault, "");
    EXPECT_EQ(result.frames[4].fault, "another size: 77 x 300");
    EXPECT_EQ(result.frames[5].fault, "kept out");
    EXPECT_NEAR(result.frames[0].weight + result.frames[2].weight, 1, 1e-9);

    StackOrder stopped = Order();
    std::atomic<bool> cancelled = true;
    stopped.watch.cancelled = &cancelled;
    EXPECT_TRUE(StackSeries(plan, series.Reader(), stopped, kept).cancelled);
    StackOrder nowhere = Order();
    nowhere.scratch = "/no such folder";
    EXPECT_NE(StackSeries(plan, series.Reader(), nowhere, kept).fault, "");
    EXPECT_NE(StackSeries(PlanSeries({}), series.Reader(), Order(), kept).fault, "");
}

// Frames that are each alone with their filter have no score.
TEST(Plan, ReferenceWithoutScoresHasTheSmallestStars) {
    MadeSeries series(kWidth, kHeight, 9);
    for (const double fwhm : {3.4, 2.6, 3.0})
        series.Add({.fromField = {}, .fwhm = fwhm}, unsigned(10 * fwhm));
    std::vector<FrameMeasures> measures = series.Measures();
    for (std::size_t i = 0; i < measures.size(); ++i) measures[i].series = std::to_string(i);
    EXPECT_EQ(PlanSeries(measures).reference, 1U);
}

// A sum with rows of nothing in it is none.
TEST(Stack, WhatBreaksOnTheWayLeavesNoSum) {
    MadeSeries series(kWidth, kHeight, 3);
    for (unsigned i = 0; i < 4; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 2.0 * i, 0)}, 510 + i);
    const SeriesPlan plan = PlanSeries(series.Measures());
    struct Narrow : KeptSum {
        bool Write(int colour, int row, int rows, const float* from) override {
            if (row > 0) throw std::bad_alloc();
            return KeptSum::Write(colour, row, rows, from);
        }
    } narrow;
    EXPECT_EQ(StackSeries(plan, series.Reader(), Order(), narrow).fault, "Not enough memory");

    KeptSum kept;
    rlimit old{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{kWidth * kHeight * sizeof(std::int16_t) * 2, old.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    const StackResult result = StackSeries(plan, series.Reader(), Order(), kept);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &old), 0);
    EXPECT_NE(result.fault, "");
    EXPECT_FALSE(result.cancelled);
    for (const StackedFrame& frame : result.frames) EXPECT_EQ(frame.fault, "");
}

TEST(Stack, AFrameThatHasBecomeAnotherIsLeftOut) {
    MadeSeries series(kWidth, kHeight, 3);
    for (unsigned i = 0; i < 3; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 2.0 * i, 0)}, 520 + i);
    const SeriesPlan plan = PlanSeries(series.Measures());
    ASSERT_TRUE(plan.reference);
    const std::size_t other = (*plan.reference + 1) % 3;
    const auto read = [&](std::size_t number, std::string&) {
        FrameSamples samples = series.Samples(number);
        if (number == other) samples.height -= 100;
        return std::optional(samples);
    };
    KeptSum kept;
    const StackResult result = StackSeries(plan, read, Order(), kept);
    EXPECT_EQ(result.fault, "");
    EXPECT_EQ(result.frames[other].fault, "another size: 400 x 200");
}

TEST(Stack, TheReferenceIsOneThatMostFramesFit) {
    MadeSeries elsewhere(kWidth, kHeight, 77);
    elsewhere.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 0, 0), .fwhm = 2.2}, 1);
    MadeSeries large(kWidth + 40, kHeight, 3);
    large.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 0, 0), .fwhm = 2.2}, 2);
    MadeSeries series(kWidth, kHeight, 3);
    for (unsigned i = 0; i < 4; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 2.0 * i, 0)}, 530 + i);
    std::vector<FrameMeasures> measures = series.Measures();
    measures.push_back(elsewhere.Measures().front());
    measures.push_back(large.Measures().front());
    const SeriesPlan plan = PlanSeries(measures);
    std::vector<std::size_t> used;
    for (const SeriesFrame& frame : plan.frames) used.push_back(frame.number);
    EXPECT_EQ(used, (std::vector<std::size_t>{0, 1, 2, 3}));
    EXPECT_NE(plan.faults[4], "");
    EXPECT_EQ(plan.faults[5], "another size: 440 x 300");
}

// Where all of the sky lies within a step or two, it still has noise.
TEST(Stack, CoarseValuesHaveTheNoiseOfTheirSteps) {
    constexpr float kStep = 64;
    const auto round = [](MadeSky& sky) {
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                sky.At(x, y) = std::round(sky.At(x, y) / kStep) * kStep;
    };
    MadeSeries series(kWidth, kHeight, 3);
    for (unsigned i = 0; i < 8; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 1.3 * i, 0),
                    .sky = 100 + 4.0 * i,
                    .readNoise = 2},
                   540 + i, {}, round);
    const Sum sum = SumOf(series);
    for (const StackedFrame& frame : sum.result.frames) {
        EXPECT_GT(frame.weight, 0.03); // of one between two steps
        EXPECT_LT(frame.weight, 0.25);
        EXPECT_LT(double(frame.rejected), 0.02 * kWidth * kHeight);
    }
}

TEST(Stack, APixelIsCountedOnceForAllItsColours) {
    const auto hit = [](MadeSky& sky) {
        for (int i = 0; i < 50; ++i) sky.At(80 + 4 * i, 150) += 20000;
    };
    MadeSeries series(kWidth, kHeight, 5);
    for (unsigned i = 0; i < 6; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, 0, 1.5 * i, 0)}, 560 + i, {},
                   i == 2 ? std::function(hit) : std::function<void(MadeSky&)>());
    const Sum grey = SumOf(series);
    const auto read = [&](std::size_t number, std::string&) {
        FrameSamples samples = series.Samples(number);
        auto colours = std::make_shared<std::vector<float>>();
        for (int colour = 0; colour < 3; ++colour)
            colours->insert(colours->end(), samples.floats, samples.floats + kWidth * kHeight);
        samples.planes = 3;
        samples.floats = colours->data();
        samples.kept = colours;
        return std::optional(samples);
    };
    KeptSum kept;
    const StackResult colour = StackSeries(grey.plan, read, Order(), kept);
    EXPECT_GT(colour.frames[2].rejected, 50U);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(colour.frames[i].rejected, grey.result.frames[i].rejected) << i;
}

// Colours of a mosaic come apart, each from its own samples.
TEST(Stack, MosaicsGiveThreeColours) {
    constexpr std::array<double, 3> kLevels{500, 1000, 300};
    constexpr std::array<int, 4> kPattern{0, 1, 1, 2};
    MadeSeries series(kWidth, kHeight, 12);
    const auto colour = [&](MadeSky& sky) {
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                sky.At(x, y) *=
                    float(kLevels[std::size_t(kPattern[std::size_t(y % 2 * 2 + x % 2)])] / 1000);
    };
    for (unsigned i = 0; i < 4; ++i)
        series.Add({.fromField = TurnedMap(kWidth, kHeight, i == 3 ? 180 : 0, 1.3 * i, 2.0 * i),
                    .fwhm = 4},
                   800 + i, colour);
    std::vector<FrameMeasures> measures;
    for (std::size_t i = 0; i < series.Count(); ++i) {
        std::vector<float> cells;
        const FrameSamples samples = series.Samples(i);
        for (int y = 0; y < kHeight; y += 2)
            for (int x = 0; x < kWidth; x += 2)
                cells.push_back((samples.At(0, x, y) + samples.At(0, x + 1, y) +
                                 samples.At(0, x, y + 1) + samples.At(0, x + 1, y + 1)) /
                                4);
        ValuePlane plane;
        plane.width = kWidth / 2;
        plane.height = kHeight / 2;
        plane.cell = 2;
        plane.floats = cells.data();
        measures.push_back(MeasureFrame(plane));
    }
    const SeriesPlan plan = PlanSeries(measures);
    KeptSum kept;
    const auto read = [&](std::size_t number, std::string&) {
        FrameSamples samples = series.Samples(number);
        samples.mosaic = true;
        samples.colours = kPattern;
        return std::optional(samples);
    };
    const StackResult result = StackSeries(plan, read, Order(), kept);
    ASSERT_EQ(result.fault, "");
    ASSERT_EQ(kept.colours, 3);
    for (int c = 0; c < 3; ++c) {
        std::vector<double> sky;
        for (int y = 40; y < kHeight - 40; ++y)
            for (int x = 40; x < kWidth - 40; ++x) sky.push_back(kept.At(x, y, c));
        EXPECT_NEAR(MedianOf(sky), kLevels[std::size_t(c)], 5) << c;
    }
    const FrameMap& fromField = series.Frame(*plan.reference).fromField;
    for (const MadeStar& star : series.Stars()) {
        const auto [x, y] = fromField(star.x, star.y);
        if (star.peak < 8000 || x < 50 || y < 50 || x > kWidth - 50 || y > kHeight - 50) continue;
        const double flux =
            kLevels[0] / 1000 * star.peak * 9 * std::numbers::pi / (4 * std::numbers::ln2);
        EXPECT_NEAR(FluxAt(kept, x, y), flux, 0.06 * flux);
    }
}

TEST(Warp, APixelWithoutDataTakesLittleWithIt) {
    std::vector<float> values(40 * 30, 100);
    values[15 * 40 + 20] = NAN;
    FrameSamples samples;
    samples.width = 40;
    samples.height = 30;
    samples.floats = values.data();
    for (const WarpKernel kernel : {WarpKernel::Lanczos, WarpKernel::Bilinear})
        for (const double shift : {0.0, 0.3}) {
            std::vector<float> warped(values.size());
            Warp(samples, {1, 0, shift, 0, 1, shift}, kernel).Take({0, 0, 40, 30}, warped.data());
            std::vector<std::size_t> none;
            for (int y = 5; y < 25; ++y)
                for (int x = 5; x < 35; ++x) {
                    const auto at = std::size_t(y * 40 + x);
                    if (std::isnan(warped[at]))
                        none.push_back(at);
                    else
                        EXPECT_NEAR(warped[at], 100, 1e-3);
                }
            EXPECT_EQ(none, std::vector<std::size_t>{15 * 40 + 20}) << shift;
        }
}

TEST(Warp, KeepsPlacesAndLightThroughATurn) {
    MadeSky sky(120, 90);
    sky.AddLevel(100);
    sky.Add({.x = 60.3, .y = 40.8, .peak = 5000, .fwhm = 3});
    FrameSamples samples;
    samples.width = 120;
    samples.height = 90;
    samples.floats = sky.Plane().floats;
    const FrameMap map = TurnedMap(120, 90, 30, 5.2, -3.6);
    const auto [x, y] = map(60.3, 40.8);
    for (const WarpKernel kernel : {WarpKernel::Lanczos, WarpKernel::Bilinear}) {
        const GridPart part{3, 2, 110, 80};
        std::vector<float> warped(part.Samples());
        Warp(samples, map, kernel).Take(part, warped.data());
        double flux = 0;
        double sumX = 0;
        double sumY = 0;
        for (int dy = -9; dy <= 9; ++dy)
            for (int dx = -9; dx <= 9; ++dx) {
                const int column = int(x) + dx;
                const int row = int(y) + dy;
                const double value =
                    warped[std::size_t(row - part.top) * 110 + std::size_t(column - part.left)] -
                    100;
                flux += value;
                sumX += value * column;
                sumY += value * row;
            }
        EXPECT_NEAR(flux, 5000 * 9 * std::numbers::pi / (4 * std::numbers::ln2), 150);
        EXPECT_NEAR(sumX / flux, x, 0.01);
        EXPECT_NEAR(sumY / flux, y, 0.01);
        EXPECT_TRUE(std::isnan(warped[0]));
    }
}
