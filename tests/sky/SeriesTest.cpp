// Frames judged beside each other.
#include "MadeSky.h"

#include "sky/align/Align.h"
#include "sky/stars/Series.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

struct Conditions {
    double fwhm = 3;
    double clear = 1; // part of the light that comes through
    double eccentricity = 0;
    double sky = 1000;
    double shiftX = 0;
    double shiftY = 0;
    bool turned = false;
};

FrameMeasures FrameUnder(const Conditions& conditions, unsigned seed) {
    constexpr int kSide = 500;
    MadeSky stars(kSide, kSide, 1); // of one place, for all frames
    const auto scattered = stars.Scatter(60, {.fwhm = 3, .beta = 4}, 1500, 30000, 30);
    MadeSky sky(kSide, kSide, seed);
    sky.AddLevel(conditions.sky);
    for (MadeStar star : scattered) {
        star.x += conditions.shiftX;
        star.y += conditions.shiftY;
        if (conditions.turned) {
            star.x = kSide - 1 - star.x;
            star.y = kSide - 1 - star.y;
        }
        star.peak *= conditions.clear * std::pow(3 / conditions.fwhm, 2);
        star.fwhm = conditions.fwhm;
        star.eccentricity = conditions.eccentricity;
        sky.Add(star);
    }
    sky.Record(10, 200000);
    return MeasureFrame(sky.Plane());
}

std::vector<double> TransparencyOf(std::span<const FrameMeasures> frames) {
    const std::size_t reference = ReferenceOf(frames);
    return TransparencyOf(frames, reference, MapsOnto(reference, frames));
}

std::vector<double> RanksOf(const std::vector<double>& values) {
    std::vector<double> ranks;
    for (const double value : values)
        ranks.push_back(double(std::count_if(values.begin(), values.end(),
                                             [&](double other) { return other < value; })));
    return ranks;
}

double RankCorrelation(const std::vector<double>& one, const std::vector<double>& other) {
    const std::vector<double> a = RanksOf(one);
    const std::vector<double> b = RanksOf(other);
    double squares = 0;
    for (std::size_t i = 0; i < a.size(); ++i) squares += (a[i] - b[i]) * (a[i] - b[i]);
    const auto n = double(a.size());
    return 1 - 6 * squares / (n * (n * n - 1));
}

} // namespace

TEST(Series, TransparencyIsThePartOfTheLightThatComesThrough) {
    const std::vector<Conditions> night{{},
                                        {.shiftX = 17.3, .shiftY = -9.6},
                                        {.clear = 0.5, .shiftX = -30},
                                        {.shiftX = 5, .turned = true},
                                        {.fwhm = 4, .clear = 0.8},
                                        {}};
    std::vector<FrameMeasures> frames;
    for (std::size_t i = 0; i < night.size(); ++i)
        frames.push_back(FrameUnder(night[i], unsigned(i + 2)));
    frames.emplace_back(); // one without any star
    const std::vector<double> transparency = TransparencyOf(frames);
    for (std::size_t i = 0; i < night.size(); ++i)
        EXPECT_NEAR(transparency[i], night[i].clear, 0.04) << i;
    EXPECT_TRUE(std::isnan(transparency.back()));
    EXPECT_TRUE(std::isnan(TransparencyOf(std::span(frames).first(1))[0]));
}

TEST(Series, ScoresHaveTheOrderOfTheNight) {
    std::vector<FrameMeasures> frames;
    std::vector<double> planted;
    std::minstd_rand random(4);
    for (unsigned i = 0; i < 24; ++i) {
        const double badness = double(random() % 1000) / 1000;
        planted.push_back(-badness);
        frames.push_back(FrameUnder({.fwhm = 2.8 + 2.5 * badness,
                                     .clear = 1 - 0.5 * badness,
                                     .eccentricity = 0.7 * badness,
                                     .sky = 1000 + 1500 * badness},
                                    i + 20));
    }
    frames.emplace_back();
    const std::vector<double> scores = ScoresOf(frames, TransparencyOf(frames));
    EXPECT_TRUE(std::isnan(scores.back()));
    const std::vector<double> judged(scores.begin(), scores.end() - 1);
    EXPECT_GE(RankCorrelation(judged, planted), 0.9);
    EXPECT_LE(*std::max_element(judged.begin(), judged.end()), 100);
    EXPECT_GE(*std::max_element(judged.begin(), judged.end()), 80);
    EXPECT_LE(*std::min_element(judged.begin(), judged.end()), 30);
}

TEST(Series, OneMeasureAloneOrdersASeries) {
    std::vector<FrameMeasures> frames(20);
    std::vector<double> worse;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        frames[i].hfr = 2 + 0.05 * double(i * 7 % 20);
        frames[i].eccentricity = 0.3;
        frames[i].noise = 10;
        worse.push_back(-frames[i].hfr);
    }
    frames[3].hfr = 300;
    worse[3] = -300;
    EXPECT_GE(RankCorrelation(ScoresOf(frames, {}), worse), 0.9);
}
