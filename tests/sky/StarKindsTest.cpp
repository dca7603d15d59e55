// What only looks like a star is not counted, and frames without stars say so.
#include "MadeSky.h"

#include "sky/stars/FrameMeasures.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

using namespace tarn;
using namespace tarn::testing;

namespace {

MadeSky Night(int stars, unsigned seed = 7, double fwhm = 3) {
    MadeSky sky(800, 600, seed);
    sky.AddLevel(1000);
    sky.Scatter(stars, {.fwhm = fwhm, .beta = 4}, 800, 20000, 25);
    return sky;
}

FrameMeasures RowOf(MadeSky& sky, double white = 65535) {
    sky.Record(10, white);
    return MeasureFrame(sky.Plane());
}

std::map<SourceKind, int> KindsOf(const MadeSky& sky) {
    const SkyMesh mesh(sky.Plane());
    std::map<SourceKind, int> kinds;
    for (const Source& source :
         ListOf(sky.Plane(), mesh, FindFootprints(sky.Plane(), mesh, 4), 5).all)
        ++kinds[source.kind];
    return kinds;
}

} // namespace

TEST(StarKinds, HotPixelsAndHitsAreNone) {
    MadeSky clean = Night(60);
    MadeSky sky = Night(60);
    for (int i = 0; i < 300; ++i) sky.At(int(sky.Random(5, 795)), int(sky.Random(5, 595))) += 3000;
    for (int i = 0; i < 30; ++i) { // hits: two or three pixels with sharp edges
        const int x = int(sky.Random(5, 790));
        const int y = int(sky.Random(5, 590));
        for (int step = 0; step <= i % 2 + 1; ++step)
            sky.At(x + step, y + (i % 3 == 0 ? step : 0)) += 5000;
    }
    const FrameMeasures without = RowOf(clean);
    const FrameMeasures with = RowOf(sky);
    EXPECT_NEAR(with.stars, without.stars, 4);
    EXPECT_NEAR(with.hfr, without.hfr, 0.02 * without.hfr);
    EXPECT_GT(KindsOf(sky)[SourceKind::HotPixel], 200);
    EXPECT_GE(KindsOf(sky)[SourceKind::Hit], 8);
}

TEST(StarKinds, TrailsAreNone) {
    MadeSky sky = Night(60);
    for (double x = 20; x < 780; x += 0.5) { // across the frame, and a short one
        sky.Add({.x = x, .y = 100 + x / 3, .peak = 100, .fwhm = 3});
        if (x < 60) sky.Add({.x = x, .y = 500 - x / 2, .peak = 400, .fwhm = 3});
    }
    MadeSky clean = Night(60);
    const FrameMeasures without = RowOf(clean);
    const FrameMeasures with = RowOf(sky);
    EXPECT_NEAR(with.stars, without.stars, 6);
    EXPECT_NEAR(with.eccentricity, without.eccentricity, 0.05);
    EXPECT_GE(KindsOf(sky)[SourceKind::Trail], 2);
}

TEST(StarKinds, TrailedFramesHaveStars) {
    MadeSky sky(800, 600, 3);
    sky.AddLevel(1000);
    const auto stars =
        sky.Scatter(40, {.fwhm = 5, .eccentricity = 0.95, .angle = 30}, 2000, 20000, 50);
    const FrameMeasures row = RowOf(sky);
    EXPECT_GE(row.stars, 30);
    EXPECT_NEAR(row.eccentricity, 0.95, 0.03);
}

TEST(StarKinds, GalaxiesAndNebulaeAreNone) {
    MadeSky clean = Night(60);
    MadeSky sky = Night(60);
    for (int i = 0; i < 12; ++i)
        sky.Add({.x = 60.0 + 60 * i, .y = 300, .peak = 3000, .fwhm = 12, .beta = 2});
    sky.Add({.x = 500, .y = 450, .peak = 2000, .fwhm = 160});
    const FrameMeasures without = RowOf(clean);
    const FrameMeasures with = RowOf(sky);
    EXPECT_NEAR(with.hfr, without.hfr, 0.03 * without.hfr);
    EXPECT_NEAR(with.stars, without.stars, 6);
    EXPECT_GE(KindsOf(sky)[SourceKind::Wide], 8);
}

TEST(StarKinds, SaturatedStarsAreCountedApart) {
    MadeSky sky = Night(60);
    for (int i = 0; i < 8; ++i)
        sky.Add({.x = 60.0 + 90 * i, .y = 300, .peak = 300000, .fwhm = 4, .beta = 4});
    const FrameMeasures row = RowOf(sky, 50000);
    EXPECT_EQ(row.saturated, 8);
    EXPECT_NEAR(row.fwhm, 3, 0.06);
    MadeSky unsaturated = Night(60);
    EXPECT_EQ(RowOf(unsaturated).saturated, 0);
}

TEST(StarKinds, BlendsAndBorderAreKnown) {
    MadeSky crowded(600, 600);
    crowded.AddLevel(1000);
    const auto stars = crowded.Scatter(60, {.fwhm = 4}, 3000, 3000.1, 40);
    for (std::size_t i = 0; i < 20; ++i) // resolved ones and others
        crowded.Add(
            {.x = stars[i].x + (i % 2 == 0 ? 3 : 4.2), .y = stars[i].y, .peak = 2500, .fwhm = 4});
    crowded.Add({.x = 200, .y = 0, .peak = 5000, .fwhm = 4});
    crowded.Record(10);
    auto kinds = KindsOf(crowded);
    EXPECT_NEAR(MeasureFrame(crowded.Plane()).stars, int(stars.size()) - 20, 4);
    EXPECT_GE(kinds[SourceKind::Blended], 15);
    EXPECT_GE(kinds[SourceKind::Border], 1);
}

TEST(StarKinds, DefocusedStarsAreStars) {
    MadeSky sky(1200, 900, 5);
    sky.AddLevel(1000);
    const auto stars = sky.Scatter(60, {.fwhm = 16}, 400, 8000, 90);
    const FrameMeasures row = RowOf(sky);
    EXPECT_NEAR(row.hfr, 8, 0.4);
    EXPECT_NEAR(row.stars, 58, 6);
}

// Far out of focus of a telescope with a mirror in its middle: sizes, but no core to fit.
TEST(StarKinds, RingsAreStarsWithoutAWidth) {
    MadeSky sky(1200, 900, 6);
    sky.AddLevel(1000);
    for (int i = 0; i < 24; ++i)
        for (int dy = -16; dy <= 16; ++dy)
            for (int dx = -16; dx <= 16; ++dx)
                if (const double r = std::hypot(dx, dy); r > 6 && r < 15.6)
                    sky.At(100 + 190 * (i % 6) + dx, 100 + 220 * (i / 6) + dy) +=
                        float(600 + 100 * i);
    const FrameMeasures row = RowOf(sky);
    EXPECT_EQ(row.fault, "no width: the stars have no core");
    EXPECT_GE(row.stars, 18); // a bump in some looks like a peak of its own
    EXPECT_LE(row.stars, 24);
    EXPECT_NEAR(row.hfr, std::sqrt((15.6 * 15.6 + 6 * 6) / 2), 0.6);
    EXPECT_TRUE(std::isnan(row.fwhm));
    EXPECT_TRUE(std::isnan(row.eccentricity));
}

TEST(StarKinds, GradientsAndGapsDoNoHarm) {
    MadeSky sky = Night(60);
    sky.AddLevel(0, 1, 0.5);
    sky.Record(10);
    for (int y = 0; y < 600; ++y) sky.At(300, y) = std::nanf("");
    for (int y = 100; y < 200; ++y)
        for (int x = 500; x < 600; ++x) sky.At(x, y) = std::nanf("");
    for (int i = 0; i < 20; ++i) sky.At(40 + 30 * i, 50 + 20 * i) = i % 2 == 0 ? INFINITY : 3e38F;
    const FrameMeasures row = MeasureFrame(sky.Plane());
    EXPECT_NEAR(row.fwhm, 3, 0.06);
    EXPECT_GE(row.stars, 45);
    EXPECT_LE(row.stars, 60);
}

// Each has its reason, and no number that means nothing.
TEST(StarKinds, FramesWithoutStarsSayWhy) {
    const auto faultOf = [](MadeSky& sky) {
        const FrameMeasures row = MeasureFrame(sky.Plane());
        EXPECT_TRUE(std::isnan(row.hfr)) << row.fault;
        EXPECT_TRUE(std::isnan(row.fwhm)) << row.fault;
        EXPECT_TRUE(std::isnan(row.eccentricity)) << row.fault;
        EXPECT_LT(row.stars, kFewestStars) << row.fault << sky.Width() << row.hfr;
        return row.fault;
    };
    MadeSky none(300, 200);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 300; ++x) none.At(x, y) = std::nanf("");
    EXPECT_EQ(faultOf(none), "no data");
    MadeSky blank(300, 200);
    blank.AddLevel(500);
    EXPECT_EQ(faultOf(blank), "blank: all values are alike");
    MadeSky empty(300, 200);
    empty.AddLevel(500);
    empty.Record(5);
    EXPECT_EQ(faultOf(empty), "no stars");
    MadeSky few(300, 200);
    few.AddLevel(500);
    few.Scatter(4, {.fwhm = 3}, 2000, 5000, 40);
    few.Record(5);
    EXPECT_EQ(faultOf(few), "fewer than 5 stars");
    MadeSky moon(600, 400, 9);
    moon.AddLevel(100);
    for (int y = 0; y < 400; ++y)
        for (int x = 0; x < 600; ++x)
            if (std::hypot(x - 300, y - 200) < 150) moon.At(x, y) += 20000;
    for (int i = 0; i < 120; ++i) {
        const double size = moon.Random(2, 30);
        moon.Add({.x = moon.Random(200, 400),
                  .y = moon.Random(100, 300),
                  .peak = moon.Random(-8000, 5000),
                  .fwhm = size});
    }
    moon.Record(5);
    EXPECT_NE(faultOf(moon), "");
    MadeSky landscape(600, 400, 11);
    for (int i = 0; i < 4000; ++i) {
        const int x = int(landscape.Random(0, 590));
        const int y = int(landscape.Random(0, 390));
        const int width = int(landscape.Random(2, 40));
        const int height = int(landscape.Random(2, 40));
        const double value = landscape.Random(1000, 40000);
        for (int row = y; row < std::min(400, y + height); ++row)
            for (int column = x; column < std::min(600, x + width); ++column)
                landscape.At(column, row) = float(value);
    }
    landscape.Record(5);
    EXPECT_NE(faultOf(landscape), "");
    MadeSky dark(600, 400, 12);
    dark.AddLevel(200);
    for (int i = 0; i < 2000; ++i)
        dark.At(int(dark.Random(1, 599)), int(dark.Random(1, 399))) +=
            float(dark.Random(100, 20000));
    dark.Record(5);
    EXPECT_NE(faultOf(dark), "");
}

TEST(StarKinds, TinyPlanesAreMeasuredAsFarAsTheyGo) {
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 3}, {1, 50}, {40, 2}, {17, 17}}) {
        MadeSky sky(width, height);
        sky.AddLevel(100);
        sky.Record(5);
        const FrameMeasures row = MeasureFrame(sky.Plane());
        EXPECT_NE(row.fault, "") << width << " x " << height;
    }
}
