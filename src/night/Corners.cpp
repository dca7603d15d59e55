#include "night/Corners.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace tarn {

namespace {

constexpr std::size_t kFewest = 3; // of which a median says something

struct Ninth {
    std::vector<double> sizes;
    double along = 0; // the sums of (major^2 - minor^2) / (major^2 + minor^2) at twice the angle
    double across = 0;
    int shaped = 0;
};

void Add(const MeasuredStar& star, Ninth& ninth) {
    ninth.sizes.push_back(star.hfr);
    if (!std::isfinite(star.eccentricity) || !std::isfinite(star.angle)) return;
    const double square = star.eccentricity * star.eccentricity;
    const double shape = square / (2 - square);
    const double twice = 2 * star.angle * std::numbers::pi / 180;
    ninth.along += shape * std::cos(twice);
    ninth.across += shape * std::sin(twice);
    ++ninth.shaped;
}

CornerStars Told(const Ninth& ninth) {
    CornerStars told;
    told.stars = int(ninth.sizes.size());
    if (ninth.sizes.size() < kFewest) return told;
    told.hfr = MedianOf(ninth.sizes);
    if (ninth.shaped == 0) return told;
    const double shape = std::hypot(ninth.along, ninth.across) / ninth.shaped;
    told.elongation = std::sqrt(2 * shape / (1 + shape));
    told.angle = std::atan2(ninth.across, ninth.along) / 2 * 180 / std::numbers::pi;
    return told;
}

} // namespace

std::array<CornerStars, 9> CornersOf(std::span<const MeasuredStar> stars, int width, int height) {
    std::array<Ninth, 9> ninths;
    for (const MeasuredStar& star : stars) {
        if (star.kind != SourceKind::Star || !std::isfinite(star.hfr)) continue;
        const int column = std::clamp(int(3 * (star.x + 0.5) / std::max(1, width)), 0, 2);
        const int row = std::clamp(int(3 * (star.y + 0.5) / std::max(1, height)), 0, 2);
        Add(star, ninths[std::size_t(3 * row + column)]);
    }
    std::array<CornerStars, 9> corners;
    std::transform(ninths.begin(), ninths.end(), corners.begin(), Told);
    return corners;
}

} // namespace tarn
