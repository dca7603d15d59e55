// What is measured of one picture of the sky.
#pragma once

#include "sky/stars/Sources.h"
#include "sky/stars/ValuePlane.h"

#include <limits>
#include <string>
#include <vector>

namespace tarn {

inline constexpr double kNotMeasured = std::numeric_limits<double>::quiet_NaN();

// Raised when the same picture gives other numbers than before.
inline constexpr int kMeasuringMethod = 2;

inline constexpr int kFewestStars = 5; // below which sizes mean nothing

// One source. Places and sizes in pixels of the file, (0, 0) the centre of the first; values above
// the sky around it, in those of the plane. Numbers that could not be had are kNotMeasured.
struct MeasuredStar {
    SourceKind kind = SourceKind::Star;
    double x = 0;
    double y = 0;
    double flux = 0;            // within six half-flux radii, less where a neighbour is nearer
    double peak = 0;            // highest sample
    double hfr = kNotMeasured;  // radius that holds half of the flux, the pixel's width in it
    double fwhm = kNotMeasured; // of the core, geometric mean of the axes
    double eccentricity = kNotMeasured; // 0 to 1; what noise alone would make of it taken away
    double angle = kNotMeasured;        // from +x to +y, degrees, above -90 to 90
};

// Of a place and a flux, for what compares frames.
struct StarPlace {
    float x = 0;
    float y = 0;
    float flux = 0;

    bool operator==(const StarPlace&) const = default;
};

// The row of a frame. Sizes are medians over the brightest stars, some hundreds at most.
struct FrameMeasures {
    int width = 0; // pixels of the file
    int height = 0;
    int stars = 0;
    double hfr = kNotMeasured;
    double fwhm = kNotMeasured;
    double eccentricity = kNotMeasured;
    double background = kNotMeasured; // values of the file
    double noise = kNotMeasured;
    int saturated = 0;
    double sharpness = kNotMeasured;
    std::vector<StarPlace> brightest; // the stars that were sized, the brightest first
    std::string series; // what frames have in common that may be judged beside each other
    std::string fault;  // why there are no sizes, or nothing at all; empty when all was measured
};

// No fault of the plane is thrown; "no data", "no stars", "fewer than 5 stars" and the like are
// told in the row. Any thread.
FrameMeasures MeasureFrame(const ValuePlane& plane);

// All sources but hot pixels, hits and trails, the brightest first.
std::vector<MeasuredStar> ListSources(const ValuePlane& plane, std::string& fault);

} // namespace tarn
