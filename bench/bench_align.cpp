// Frames laid over each other by their stars: how far the found map is off the true one, from
// frames of known places, and how long a pair takes from its lists. With a folder the lists are
// written there, two for each row, as x and y of each star, the brightest first, for other
// programs.
#include "MadeSky.h"
#include "Timing.h"

#include "sky/align/Align.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

using namespace tarn;
using tarn::testing::MadeSky;
using tarn::testing::MadeStar;

namespace {

constexpr int kWidth = 3000;
constexpr int kHeight = 2000;
constexpr int kTimes = 50;

struct Case {
    const char* name;
    int stars; // of a frame
    double turn = 0;
    double scale = 1;
    double shiftX = 0;
    double shiftY = 0;
    bool mirrored = false;
    bool otherField = false;
};

// From the field to the frame, around the middle of both.
FrameMap MapOf(const Case& of) {
    const double turn = of.turn * std::numbers::pi / 180;
    FrameMap map{of.scale * std::cos(turn), -of.scale * std::sin(turn), 0,
                 of.scale * std::sin(turn), of.scale * std::cos(turn),  0};
    if (of.mirrored) {
        map.a = -map.a;
        map.d = -map.d;
    }
    const auto [x, y] = map(kWidth / 2.0, kHeight / 2.0);
    map.c = kWidth / 2.0 - x + of.shiftX;
    map.f = kHeight / 2.0 - y + of.shiftY;
    return map;
}

std::vector<MadeStar> FieldOf(int stars, unsigned seed) {
    MadeSky field(3 * kWidth, 3 * kHeight, seed);
    std::vector<MadeStar> all =
        field.Scatter(9 * stars, {.fwhm = 3, .beta = 4}, 600, 40000, stars > 1000 ? 8 : 25);
    for (MadeStar& star : all) {
        star.x -= kWidth;
        star.y -= kHeight;
    }
    return all;
}

std::vector<StarPlace> ListOf(const std::vector<MadeStar>& field, const FrameMap& map,
                              unsigned seed) {
    MadeSky sky(kWidth, kHeight, seed);
    sky.AddLevel(1000);
    for (MadeStar star : field) {
        const auto [x, y] = map(star.x, star.y);
        star.x = x;
        star.y = y;
        if (x > -20 && y > -20 && x < kWidth + 20 && y < kHeight + 20) sky.Add(star);
    }
    sky.Record(10);
    return MeasureFrame(sky.Plane()).brightest;
}

// The largest distance between where a place of the frame is put and where it stands.
double ErrorOf(const FrameMap& found, const FrameMap& toFrame) {
    double error = 0;
    for (const double x : {0.0, kWidth / 2.0, kWidth - 1.0})
        for (const double y : {0.0, kHeight / 2.0, kHeight - 1.0}) {
            const auto [frameX, frameY] = toFrame(x, y);
            if (frameX < 0 || frameY < 0 || frameX > kWidth || frameY > kHeight) continue;
            const auto [backX, backY] = found(frameX, frameY);
            error = std::max(error, std::hypot(backX - x, backY - y));
        }
    return error;
}

void Write(const std::string& path, const std::vector<StarPlace>& stars) {
    std::ofstream file(path);
    for (const StarPlace& star : stars) file << star.x << ' ' << star.y << '\n';
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<Case> cases{
        {"shift of 41.4, -17.2", 100, 0, 1, 41.37, -17.21},
        {"shift of a quarter", 100, 0, 1, 750, -500},
        {"half turn", 100, 180, 1, 12.4, 3.3},
        {"37 degrees", 100, 37, 1, 100, 50},
        {"mirrored, 20 degrees", 100, 20, 1, 5, 5, true},
        {"scale 0.55", 100, 5, 0.55, 10, -30},
        {"scale 1.9", 100, 5, 1.9, 50, 20},
        {"8 stars", 8, 3, 1, 20, 10},
        {"3000 stars", 3000, 180, 1, 20, -35},
        {"10,000 stars", 10000, 180, 1, 20, -35},
        {"another field", 100, 0, 1, 0, 0, false, true},
        {"another, 3000 stars", 3000, 0, 1, 0, 0, false, true},
    };
    std::printf("frames of %d x %d, FWHM 3; error is the largest at nine places\n", kWidth,
                kHeight);
    unsigned seed = 10;
    bool good = true;
    for (const Case& each : cases) {
        seed += 10;
        const FrameMap map = MapOf(each);
        const std::vector<MadeStar> field = FieldOf(each.stars, seed);
        const auto reference = ListOf(field, {}, seed + 1);
        const auto frame =
            ListOf(each.otherField ? FieldOf(each.stars, seed + 5) : field, map, seed + 2);
        Alignment found;
        std::vector<double> times;
        for (int i = 0; i < kTimes; ++i)
            times.push_back(bench::Milliseconds([&] { found = Align(frame, reference); }));
        const double error = found.fault.empty() ? ErrorOf(found.map, map) : 0;
        std::printf("%-22s %3zu and %3zu stars: %-22s %3d matched, residual %.3f, error %.3f, "
                    "%6.2f ms\n",
                    each.name, frame.size(), reference.size(),
                    found.fault.empty() ? "found" : found.fault.c_str(), found.matched,
                    found.residual, error, bench::Median(times));
        good = good && found.fault.empty() != each.otherField;
        if (argc > 1) {
            const std::string begin = argv[1] + std::string("/") + std::to_string(seed);
            Write(begin + "-frame.txt", frame);
            Write(begin + "-reference.txt", reference);
        }
    }
    return good ? 0 : 1;
}
