#include "night/StarCircles.h"

#include "sky/stars/RobustStatistics.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tarn {

namespace {

constexpr double kTimes = 3;    // half-flux radii
constexpr double kSharp = 0.85; // of the median: as green as can be
constexpr double kSoft = 1.5;   // and as red
constexpr double kGreen = 0.36; // of the circle of hues

int ColourOf(double size, double typical) {
    const double part = std::clamp((size / typical - kSharp) / (kSoft - kSharp), 0.0, 1.0);
    return int(QColor::fromHsvF(float(kGreen * (1 - part)), 0.75F, 1.0F).rgb() & 0xFFFFFF);
}

} // namespace

PictureRings RingsOf(const StarsOfFile& stars) {
    PictureRings rings;
    rings.path = stars.path;
    rings.raster = {stars.listed.width, stars.listed.height, stars.listed.bottomUp};
    std::vector<double> sizes;
    for (const MeasuredStar& star : stars.listed.stars)
        if (star.kind == SourceKind::Star && std::isfinite(star.hfr)) sizes.push_back(star.hfr);
    const double typical = MedianOf(sizes);
    for (const MeasuredStar& star : stars.listed.stars)
        if (star.kind == SourceKind::Star && std::isfinite(star.hfr))
            rings.rings.push_back({star.x, star.y, kTimes * star.hfr, ColourOf(star.hfr, typical)});
    return rings;
}

} // namespace tarn
