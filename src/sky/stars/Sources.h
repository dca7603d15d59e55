// The sources of a plane, told apart: stars, and what only looks like one.
#pragma once

#include "sky/stars/Footprints.h"

#include <string_view>
#include <vector>

namespace tarn {

enum class SourceKind {
    Star,
    Saturated, // its peak is at the plateau of the data
    Border,    // touches the border, or where there is no data
    Blended,   // more than a quarter of its flux is a neighbour's
    HotPixel,  // its neighbours have none of its flux
    Hit,       // narrower than the stars: a particle, or a group of hot pixels
    Trail,     // of a satellite or aircraft
    Wide,      // a galaxy, a comet, a nebula: more than a star's width
};
std::string_view NameOf(SourceKind kind); // "hot pixel"

// All in samples of the plane, by what stands above the footprints' threshold.
struct Source {
    SourceKind kind = SourceKind::Star;
    double x = 0; // centre of its flux
    double y = 0;
    double flux = 0;     // above the sky, in values of the plane
    double peak = 0;     // highest sample above the sky
    double smoothed = 0; // the same of the smoothed plane
    double major = 0;    // standard deviations of its flux along the axes
    double minor = 0;
    int samples = 0;
    int flat = 0;      // of them, those within a hundredth of the peak
    int length = 0;    // the longer side of what it takes in
    double around = 0; // mean above the sky of the four samples beside the highest
    bool border = false;

    double Area() const { return peak > 0 ? flux / peak : 0; } // 2 pi s^2 of a Gaussian
};

struct SourceList {
    std::vector<Source> all; // the brightest first
    double sigma = 0;        // typical deviation of a star's flux, samples; 0 without stars
    double plateau = 0;      // values that are full, in those of the plane; infinite if none are
};

// Sources whose smoothed peak is at least `sigmas` of its noise above the sky.
SourceList ListOf(const ValuePlane& plane, const SkyMesh& sky, const Footprints& footprints,
                  float sigmas);

} // namespace tarn
