// What stands above the sky: one pass over the plane.
#pragma once

#include "sky/stars/SkyMesh.h"

#include <cstddef>
#include <vector>

namespace tarn {

// Samples of one row beside each other.
struct FootprintRun {
    int y = 0;
    int begin = 0;
    int end = 0;            // behind the last
    std::size_t values = 0; // where theirs begin in `Footprints::values`
};

// Runs that touch each other, at a corner at least.
struct Footprint {
    std::size_t firstRun = 0;
    std::size_t runs = 0;
    std::size_t samples = 0;
    int left = 0;
    int top = 0;
    int right = 0; // the last
    int bottom = 0;

    int Width() const { return right - left + 1; }
    int Height() const { return bottom - top + 1; }
};

struct Footprints {
    std::vector<FootprintRun> runs; // those of one footprint beside each other, by rows
    std::vector<float> values;      // smoothed, in the values of the plane
    std::vector<Footprint> all;
    bool tooMuch = false; // so much stands above the sky that it is none; nothing is listed

    // Gradient energy of the smoothed plane over its mean square: the mean of the squares of the
    // central differences along both directions, over the mean of the squares of the values. Of
    // large planes from rows at equal distances. 0 or more; NaN without data.
    double sharpness = 0;
};

// Smoothed samples (weights 1 2 1 in both directions) more than `sigmas` of their own noise above
// the sky. A sample without data has none beside it.
Footprints FindFootprints(const ValuePlane& plane, const SkyMesh& sky, float sigmas);

} // namespace tarn
