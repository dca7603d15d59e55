// Sizes, places and counts against skies whose truth is known.
#include "MadeSky.h"

#include "sky/stars/FrameMeasures.h"
#include "sky/stars/GrowthCurve.h"

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

constexpr double kSky = 1000;
constexpr double kReadNoise = 10;
const double kNoise = std::sqrt(kSky + kReadNoise * kReadNoise); // 33

struct Field {
    MadeSky sky;
    std::vector<MadeStar> stars;
};

// Stars of 20 deviations and more.
Field FieldOf(const MadeStar& like, int count = 150, int side = 1000) {
    Field field{MadeSky(side, side, unsigned(like.fwhm * 100 + like.beta)), {}};
    field.sky.AddLevel(kSky);
    field.stars = field.sky.Scatter(count, like, 20 * kNoise, 40000, std::max(30.0, 6 * like.fwhm));
    field.sky.Record(kReadNoise, 200000);
    return field;
}

const MeasuredStar* NearestTo(const std::vector<MeasuredStar>& found, const MadeStar& star) {
    const MeasuredStar* nearest = nullptr;
    double distance = 2;
    for (const MeasuredStar& each : found) {
        const double apart = std::hypot(each.x - star.x, each.y - star.y);
        if (apart < distance) nearest = &each;
        distance = std::min(distance, apart);
    }
    return nearest;
}

} // namespace

TEST(GrowthCurve, CutsPixelsByTheDisc) {
    EXPECT_NEAR(PartInDisc(0, 0, 0.3), std::numbers::pi * 0.09, 1e-9);
    EXPECT_NEAR(PartInDisc(0, 0, 5), 1, 1e-9);
    EXPECT_NEAR(PartInDisc(5, 0, 5), 0.5, 0.02);
    for (const double radius : {0.4, 1.0, 1.3, 2.7, 6.05}) {
        double area = 0;
        for (int y = -8; y <= 8; ++y)
            for (int x = -8; x <= 8; ++x) area += PartInDisc(x + 0.3, y - 0.45, radius);
        EXPECT_NEAR(area, std::numbers::pi * radius * radius, 1e-6) << radius;
    }
}

TEST(StarShapes, RoundGaussiansHaveTheirSizes) {
    for (const double fwhm : {2.2, 3.0, 4.5, 8.0}) {
        const Field field = FieldOf({.fwhm = fwhm});
        const FrameMeasures row = MeasureFrame(field.sky.Plane());
        EXPECT_EQ(row.fault, "");
        EXPECT_NEAR(row.hfr / (fwhm / 2), 1, 0.02) << fwhm;
        EXPECT_NEAR(row.fwhm / fwhm, 1, 0.02) << fwhm;
        EXPECT_NEAR(row.eccentricity, 0, 0.05) << fwhm;
        EXPECT_NEAR(row.background, kSky, 2) << fwhm;
        EXPECT_NEAR(row.noise, kNoise, 0.7) << fwhm;
    }
}

TEST(StarShapes, WingsAreNoWidth) {
    for (const double beta : {2.5, 3.5})
        for (const double fwhm : {2.5, 7.0}) {
            const MadeStar like{.fwhm = fwhm, .beta = beta};
            const Field field = FieldOf(like, 100, 1000);
            const FrameMeasures row = MeasureFrame(field.sky.Plane());
            EXPECT_NEAR(row.fwhm / fwhm, 1, 0.02) << beta << " " << fwhm;
            EXPECT_NEAR(row.hfr / like.HalfFluxRadius(), 1, 0.02) << beta << " " << fwhm;
        }
}

TEST(StarShapes, LongStarsHaveTheirShapeAndDirection) {
    for (const double eccentricity : {0.3, 0.7})
        for (const double angle : {-60.0, 25.0, 90.0}) {
            const Field field =
                FieldOf({.fwhm = 4, .eccentricity = eccentricity, .angle = angle, .beta = 4}, 60);
            const FrameMeasures row = MeasureFrame(field.sky.Plane());
            EXPECT_NEAR(row.eccentricity, eccentricity, 0.05) << eccentricity << " " << angle;
            EXPECT_NEAR(row.fwhm, 4, 0.08);
            std::string fault;
            const auto listed = ListSources(field.sky.Plane(), fault);
            ASSERT_FALSE(listed.empty());
            const double off = std::remainder(listed.front().angle - angle, 180);
            EXPECT_NEAR(off, 0, 4) << eccentricity << " " << angle;
        }
}

TEST(StarShapes, FindsStarsWhereTheyAreAndHardlyAnyElse) {
    for (const double fwhm : {2.2, 4.0, 8.0}) {
        const Field field = FieldOf({.fwhm = fwhm, .beta = 4}, 250, 1200);
        std::string fault;
        const auto listed = ListSources(field.sky.Plane(), fault);
        std::size_t found = 0;
        std::size_t inPlace = 0;
        std::size_t inside = 0;
        for (const MadeStar& star : field.stars) {
            if (std::min({star.x, star.y, 1199 - star.x, 1199 - star.y}) < 3 * fwhm) continue;
            ++inside;
            const MeasuredStar* measured = NearestTo(listed, star);
            if (!measured) continue;
            ++found;
            if (std::hypot(measured->x - star.x, measured->y - star.y) < 0.05) ++inPlace;
        }
        EXPECT_GE(double(found), 0.95 * double(inside)) << fwhm;
        EXPECT_GE(double(inPlace), 0.9 * double(inside)) << fwhm;
        EXPECT_LE(double(listed.size()), 1.01 * double(field.stars.size())) << fwhm;
    }
}

// A cell of four pixels is wider than one, and its middle lies between them.
TEST(StarShapes, CellsOfAMosaicGivePlacesAndSizesInPixels) {
    const MadeStar like{.fwhm = 3, .beta = 4};
    const Field field = FieldOf(like, 150, 1200);
    const MadeSky& sky = field.sky;
    std::vector<float> cells;
    const ValuePlane full = sky.Plane();
    for (int y = 0; y < sky.Height(); y += 2)
        for (int x = 0; x < sky.Width(); x += 2)
            cells.push_back(
                (full.At(x, y) + full.At(x + 1, y) + full.At(x, y + 1) + full.At(x + 1, y + 1)) /
                4);
    ValuePlane plane;
    plane.width = sky.Width() / 2;
    plane.height = sky.Height() / 2;
    plane.floats = cells.data();
    plane.cell = 2;
    const FrameMeasures row = MeasureFrame(plane);
    EXPECT_EQ(row.width, 1200);
    EXPECT_NEAR(row.fwhm, 3, 0.18);
    EXPECT_NEAR(row.hfr / like.HalfFluxRadius(), 1, 0.06);
    std::string fault;
    const auto listed = ListSources(plane, fault);
    const auto brightest =
        std::max_element(field.stars.begin(), field.stars.end(),
                         [](const auto& one, const auto& other) { return one.peak < other.peak; });
    const MeasuredStar* measured = NearestTo(listed, *brightest);
    ASSERT_NE(measured, nullptr);
    EXPECT_NEAR(measured->x, brightest->x, 0.05);
    EXPECT_NEAR(measured->y, brightest->y, 0.05);
}

TEST(StarShapes, WordsWithAScaleAreTheSameValues) {
    Field field = FieldOf({.fwhm = 3});
    const std::vector<std::uint16_t> words = field.sky.Words();
    ValuePlane plane = field.sky.Plane();
    plane.floats = nullptr;
    plane.words = words.data();
    const FrameMeasures plain = MeasureFrame(plane);
    plane.scale = 0.01;
    plane.zero = -3;
    const FrameMeasures scaled = MeasureFrame(plane);
    EXPECT_NEAR(scaled.hfr, plain.hfr, 0.01);
    EXPECT_NEAR(scaled.background, plain.background * 0.01 - 3, 0.01);
    EXPECT_NEAR(scaled.noise, plain.noise * 0.01, 0.001);
    EXPECT_EQ(scaled.stars, plain.stars);
}
