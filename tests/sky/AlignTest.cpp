// Maps between star lists of known shift, turn and scale.
#include "MadeSky.h"

#include "sky/align/Align.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using namespace tarn;
using namespace tarn::testing;

namespace {

constexpr double kSide = 3000;

class Field {
public:
    explicit Field(unsigned seed, int count = 150) : m_random(seed) {
        // Wider than a frame, so that shifted ones have other stars at their border.
        for (int i = 0; i < 4 * count; ++i)
            m_stars.push_back({float(Random(-kSide / 2, 1.5 * kSide)),
                               float(Random(-kSide / 2, 1.5 * kSide)),
                               float(std::pow(1000, Random(0, 1)))});
    }

    // What a frame has of it, each place measured with some noise, one of ten not found, another
    // of ten something else; the brightest first.
    std::vector<StarPlace> Through(const FrameMap& map, double noise = 0.03) {
        std::normal_distribution<double> normal(0, noise);
        std::vector<StarPlace> seen;
        for (const StarPlace& star : m_stars) {
            const auto [x, y] = map(star.x, star.y);
            if (x < 0 || y < 0 || x >= kSide || y >= kSide || Random(0, 1) < 0.1) continue;
            seen.push_back({float(x + normal(m_random)), float(y + normal(m_random)),
                            float(star.flux * Random(0.9, 1.1))});
            if (Random(0, 1) < 0.1)
                seen.push_back({float(Random(0, kSide)), float(Random(0, kSide)), star.flux});
        }
        std::sort(seen.begin(), seen.end(), [](const StarPlace& one, const StarPlace& other) {
            return one.flux > other.flux;
        });
        return seen;
    }

private:
    double Random(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    std::minstd_rand m_random;
    std::vector<StarPlace> m_stars;
};

// Around the middle of the frame, then shifted.
FrameMap Turned(double degrees, double scale, double shiftX, double shiftY, bool mirrored = false) {
    const double turn = degrees * std::numbers::pi / 180;
    FrameMap map{scale * std::cos(turn), -scale * std::sin(turn), 0,
                 scale * std::sin(turn), scale * std::cos(turn),  0};
    if (mirrored) {
        map.a = -map.a;
        map.d = -map.d;
    }
    const auto [x, y] = map(kSide / 2, kSide / 2);
    map.c = kSide / 2 - x + shiftX;
    map.f = kSide / 2 - y + shiftY;
    return map;
}

// The largest distance between where a star of the frame is put and where it stands.
double ErrorOf(const FrameMap& found, const FrameMap& toFrame) {
    double error = 0;
    for (const double x : {0.0, kSide / 2, kSide})
        for (const double y : {0.0, kSide / 2, kSide}) {
            const auto [frameX, frameY] = toFrame(x, y);
            if (frameX < 0 || frameY < 0 || frameX > kSide || frameY > kSide) continue;
            const auto [backX, backY] = found(frameX, frameY);
            error = std::max(error, std::hypot(backX - x, backY - y));
        }
    return error;
}

} // namespace

TEST(Align, FindsShiftsTurnsScalesAndMirrors) {
    unsigned seed = 1;
    for (const FrameMap& map :
         {FrameMap(), Turned(0, 1, 750, -700), Turned(180, 1, 12.5, 3), Turned(0.3, 1, -40, 2),
          Turned(37, 1, 100, 500), Turned(271, 1, 0, 0), Turned(12, 1.9, 50, 20),
          Turned(-95, 0.55, 10, -30), Turned(20, 1.1, 5, 5, true)}) {
        Field field(++seed);
        const auto reference = field.Through({});
        const Alignment found = Align(field.Through(map), reference);
        EXPECT_EQ(found.fault, "") << seed;
        EXPECT_LT(ErrorOf(found.map, map), 0.05) << seed;
        EXPECT_GT(found.matched, 20) << seed;
        EXPECT_LT(found.residual, 0.12) << seed;
    }
}

TEST(Align, EightStarsAreEnoughAndTenThousandNotTooMany) {
    for (const int count : {9, 10000}) {
        Field field(77, count);
        const FrameMap map = Turned(180, 1, 20, -35);
        const auto reference = field.Through({});
        const Alignment found = Align(field.Through(map), reference);
        EXPECT_EQ(found.fault, "") << count;
        EXPECT_LT(ErrorOf(found.map, map), 0.2) << count;
    }
}

TEST(Align, AnotherFieldIsRefusedEachTime) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        Field one(1000 + seed, seed % 2 == 0 ? 150 : 10);
        Field other(2000 + seed, seed % 4 < 2 ? 150 : 10);
        const Alignment found = Align(one.Through({}), other.Through({}));
        EXPECT_NE(found.fault, "") << seed << ": " << found.matched;
    }
    std::minstd_rand random(5); // many stars in little room agree with anything
    for (int trial = 0; trial < 300; ++trial) {
        std::vector<StarPlace> one(5 + random() % 150);
        std::vector<StarPlace> other(5 + random() % 150);
        const auto side = float(200 + random() % 1000);
        for (auto* stars : {&one, &other})
            for (StarPlace& star : *stars)
                star = {side * float(random() % 9973) / 9973, side * float(random() % 9973) / 9973,
                        1};
        EXPECT_NE(Align(one, other).fault, "") << trial;
    }
    Field field(5);
    const auto stars = field.Through({});
    EXPECT_NE(Align(stars, {}).fault, "");
    EXPECT_NE(Align(std::span(stars).first(4), stars).fault, "");
    const std::vector<StarPlace> line{
        {0, 0, 9}, {10, 10, 8}, {25, 25, 7}, {60, 60, 6}, {99, 99, 5}};
    EXPECT_NE(Align(line, line).fault, "");
}

// From the frames themselves: what is measured of places is good enough.
TEST(Align, FramesAreLaidOverEachOther) {
    constexpr int kFrame = 700;
    const auto frame = [](double shift, unsigned seed) {
        MadeSky stars(kFrame, kFrame, 3);
        const auto scattered = stars.Scatter(100, {.fwhm = 3, .beta = 4}, 800, 30000, 25);
        MadeSky sky(kFrame, kFrame, seed);
        sky.AddLevel(1000);
        for (MadeStar star : scattered) {
            star.x += shift;
            star.y -= 0.6 * shift;
            sky.Add(star);
        }
        sky.Record(10);
        return MeasureFrame(sky.Plane()).brightest;
    };
    const Alignment found = Align(frame(41.37, 8), frame(0, 9));
    EXPECT_EQ(found.fault, "");
    const auto [x, y] = found.map(300, 300);
    EXPECT_NEAR(x, 300 - 41.37, 0.05);
    EXPECT_NEAR(y, 300 + 0.6 * 41.37, 0.05);
}
