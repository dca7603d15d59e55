// A frame by its ninths: how large its stars are there, and which way they are drawn out. No
// toolkit.
#pragma once

#include "sky/stars/FrameMeasures.h"

#include <array>
#include <span>

namespace tarn {

struct CornerStars {
    int stars = 0;
    double hfr = kNotMeasured; // median
    // Of the mean ellipse: 0 where the stars are drawn out in all directions or in none.
    double elongation = 0; // eccentricity, 0 to 1
    double angle = 0;      // from +x to +y, degrees, above -90 to 90
};

// Row after row, from the first stored one.
std::array<CornerStars, 9> CornersOf(std::span<const MeasuredStar> stars, int width, int height);

} // namespace tarn
