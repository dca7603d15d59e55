// Frames of clips with planted blur, drift, noise and brightness: their order, their centres, and
// what is never among the best.
#include "sky/frames/FrameRating.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace tarn::testing {
namespace {

struct Scene {
    int width = 320;
    int height = 240;
    int bits = 8;
    int samples = 1;
    bool bayer = false;
    bool highByteFirst = false;
    double radius = 60;
    double light = 0.6; // of what the samples hold
    double sky = 0.05;
    double noise = 0.01;
    double x = 160;
    double y = 120;
    double blur = 1.5; // pixels, standard deviation
};

double SmoothStep(double distance, double blur) {
    return 0.5 * std::erfc(distance / (blur * std::sqrt(2.0)));
}

// A disc with belts, blurred by what the air does.
double ValueAt(const Scene& scene, double x, double y) {
    const double dx = x - scene.x;
    const double dy = y - scene.y;
    const double disc = SmoothStep(std::hypot(dx, dy) - scene.radius, scene.blur);
    constexpr double kWaves = 2 * M_PI / 12; // belts of 12 pixels
    const double contrast = 0.3 * std::exp(-0.5 * std::pow(kWaves * scene.blur, 2));
    const double belts = 1 + contrast * std::sin(kWaves * dy) * std::cos(kWaves * 0.7 * dx);
    return scene.sky + scene.light * disc * belts;
}

std::vector<std::uint8_t> Draw(const Scene& scene, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<double> noise(0, std::max(1e-9, scene.noise));
    const double most = (1U << unsigned(scene.bits)) - 1U;
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < scene.height; ++y)
        for (int x = 0; x < scene.width; ++x)
            for (int i = 0; i < scene.samples; ++i) {
                // Under a Bayer pattern each colour has its own share.
                const double share = scene.bayer ? (x % 2 + y % 2 == 1 ? 1 : 0.6) : 1;
                const double value = share * ValueAt(scene, x, y) + noise(random);
                const auto sample = unsigned(std::lround(std::clamp(value, 0.0, 1.0) * most));
                if (scene.bits <= 8) {
                    bytes.push_back(std::uint8_t(sample));
                    continue;
                }
                const auto low = std::uint8_t(sample & 0xffU);
                const auto high = std::uint8_t(sample >> 8U);
                bytes.push_back(scene.highByteFirst ? high : low);
                bytes.push_back(scene.highByteFirst ? low : high);
            }
    return bytes;
}

RatedFrame RateScene(FrameRater& rater, const Scene& scene, unsigned seed) {
    const std::vector<std::uint8_t> bytes = Draw(scene, seed);
    return rater.Rate(
        {bytes, scene.width, scene.height, scene.bits, scene.samples, scene.highByteFirst});
}

std::vector<double> RanksOf(const std::vector<double>& values) {
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
    std::vector<double> ranks(values.size());
    for (std::size_t i = 0; i < order.size(); ++i) ranks[order[i]] = double(i);
    return ranks;
}

double Spearman(const std::vector<double>& a, const std::vector<double>& b) {
    const std::vector<double> one = RanksOf(a);
    const std::vector<double> other = RanksOf(b);
    const double middle = double(a.size() - 1) / 2;
    double both = 0;
    double alone = 0;
    for (std::size_t i = 0; i < one.size(); ++i) {
        both += (one[i] - middle) * (other[i] - middle);
        alone += (one[i] - middle) * (one[i] - middle);
    }
    return both / alone;
}

struct Kind {
    const char* name;
    int bits;
    int samples;
    bool bayer;
    bool highByteFirst;
    double noise;
};

class FrameKinds : public ::testing::TestWithParam<Kind> {};

// The air moves, dims and blurs.
TEST_P(FrameKinds, AreOrderedByTheirBlurAndFoundWhereTheyAre) {
    const Kind& kind = GetParam();
    std::mt19937 random(5);
    std::uniform_real_distribution<double> blur(0.8, 4);
    std::uniform_real_distribution<double> drift(-15, 15);
    std::uniform_real_distribution<double> dim(0.35, 0.65);
    FrameRater rater;
    std::vector<double> sharpness;
    std::vector<double> planted;
    double farthest = 0;
    for (unsigned i = 0; i < 40; ++i) {
        Scene scene{.width = 180, .height = 140, .radius = 40, .x = 90, .y = 70};
        scene.bits = kind.bits;
        scene.samples = kind.samples;
        scene.bayer = kind.bayer;
        scene.highByteFirst = kind.highByteFirst;
        scene.noise = kind.noise;
        scene.blur = blur(random);
        scene.x += drift(random);
        scene.y += drift(random);
        scene.light = dim(random);
        const RatedFrame rated = RateScene(rater, scene, i);
        ASSERT_EQ(rated.fault, "");
        EXPECT_FALSE(rated.cut);
        EXPECT_NEAR(rated.size, 2 * scene.radius, 6);
        farthest = std::max(farthest, std::hypot(rated.x - scene.x, rated.y - scene.y));
        sharpness.push_back(rated.sharpness);
        planted.push_back(-scene.blur);
    }
    EXPECT_GE(Spearman(sharpness, planted), 0.95);
    EXPECT_LE(farthest, 0.5);
}

INSTANTIATE_TEST_SUITE_P(Clips, FrameKinds,
                         ::testing::Values(Kind{"mono", 8, 1, false, false, 0.01},
                                           Kind{"noisy", 8, 1, false, false, 0.05},
                                           Kind{"bayer", 8, 1, true, false, 0.02},
                                           Kind{"colour", 8, 3, false, false, 0.02},
                                           Kind{"twelve", 12, 1, false, false, 0.02},
                                           Kind{"swapped", 16, 1, false, true, 0.02},
                                           Kind{"wide", 16, 1, false, false, 0.02},
                                           Kind{"widecolour", 16, 3, false, true, 0.02}),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST(FrameRating, LightAtTheBorderIsCut) {
    FrameRater rater;
    Scene scene;
    for (const auto& [x, y] :
         std::vector<std::pair<double, double>>{{50, 120}, {270, 120}, {160, 50}, {160, 190}}) {
        scene.x = x;
        scene.y = y;
        EXPECT_TRUE(RateScene(rater, scene, 1).cut) << x << " " << y;
    }
    scene.x = 70;
    scene.y = 70;
    EXPECT_FALSE(RateScene(rater, scene, 1).cut);
}

TEST(FrameRating, WhatHasNoLightIsToldAndNeverRanked) {
    FrameRater rater;
    Scene none;
    none.light = 0;
    Scene black = none;
    black.sky = black.noise = 0;
    EXPECT_EQ(RateScene(rater, none, 1).fault, "no light stands out of the sky");
    EXPECT_EQ(RateScene(rater, black, 1).fault, "no light stands out of the sky");
    std::vector<std::uint8_t> bytes = Draw(black, 1);
    for (const std::size_t at : {1000U, 20000U, 60000U}) bytes[at] = 255; // hot pixels
    EXPECT_EQ(rater.Rate({bytes, 320, 240}).fault, "no light stands out of the sky");
    bytes.resize(1000);
    EXPECT_EQ(rater.Rate({bytes, 320, 240}).fault, "the frame is cut off");
    EXPECT_EQ(rater.Rate({bytes, 4, 4}).fault, "the frames are too small to be rated");
}

// A field of stars: light in few places.
TEST(FrameRating, StarsAreOrderedByTheirBlur) {
    FrameRater rater;
    std::vector<double> sharpness;
    std::vector<double> planted;
    std::mt19937 random(9);
    std::uniform_real_distribution<double> blurs(1.2, 3.5);
    for (int i = 0; i < 30; ++i) {
        const double blur = blurs(random);
        std::normal_distribution<double> noise(0, 2);
        std::vector<std::uint8_t> bytes(320 * 240);
        for (int y = 0; y < 240; ++y)
            for (int x = 0; x < 320; ++x) {
                double value = 10 + noise(random);
                for (const auto& [sx, sy, flux] : std::vector<std::array<double, 3>>{
                         {60.3, 70.1, 2000}, {200.7, 40.4, 1500}, {250.2, 180.9, 1800}})
                    value += flux / (2 * M_PI * blur * blur) *
                             std::exp(-0.5 * (std::pow(x - sx, 2) + std::pow(y - sy, 2)) /
                                      (blur * blur));
                bytes[std::size_t(y * 320 + x)] = std::uint8_t(std::clamp(value, 0.0, 255.0));
            }
        const RatedFrame rated = rater.Rate({bytes, 320, 240});
        ASSERT_EQ(rated.fault, "");
        sharpness.push_back(rated.sharpness);
        planted.push_back(-blur);
    }
    EXPECT_GE(Spearman(sharpness, planted), 0.95);
}

RatedFrame Rated(double sharpness, bool cut = false, double brightness = 0.5, double size = 100) {
    RatedFrame frame;
    frame.sharpness = sharpness;
    frame.cut = cut;
    frame.brightness = brightness;
    frame.size = size;
    return frame;
}

TEST(BestFrames, AreTheSharpestOfThoseThatCanBeTrusted) {
    RatedFrame black;
    black.fault = "no light stands out of the sky";
    std::vector<RatedFrame> frames{
        Rated(3), Rated(9, true),           Rated(5), Rated(8, false, 0.1), black,
        Rated(4), Rated(7, false, 0.5, 40), Rated(6)};
    using Indices = std::vector<std::size_t>;
    EXPECT_EQ(BestFrames(frames, 3), (Indices{7, 2, 5}));
    EXPECT_EQ(BestFrames(frames, 100), (Indices{7, 2, 5, 0}));
    EXPECT_EQ(BestFrames({}, 5), Indices());
    for (RatedFrame& frame : frames) frame.cut = true; // the Moon fills all of them
    EXPECT_EQ(BestFrames(frames, 2), (Indices{1, 6}));
}

} // namespace
} // namespace tarn::testing
