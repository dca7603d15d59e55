// What each frame has that its series has not: sources of the difference of a frame and the median.
#pragma once

#include "sky/stack/WarpedSeries.h"

#include <span>
#include <string>
#include <vector>

namespace tarn {

struct DifferenceFrame {
    double hours = 0;    // from the first frame on
    double sigma = 1.3;  // of its stars, samples of the grid
    double exposure = 0; // hours, in which a mover draws a short trail; 0: none
};

// A source, by a filter of its frame's star width.
struct NewSource {
    double x = 0; // of the grid
    double y = 0;
    float signal = 0; // its flux over the noise of the area that the filter weighs
    float blur = 0;   // samples along its trail by which its place may be off
    float peak = 0; // its height over that of the filtered one: of a star 2, of single samples more
};

// Samples of the grid an hour. Slower than the slowest nothing moves: what stands still for as long
// as that takes to leave its place is a star that varies, or a fault of the sensor.
struct Pace {
    double slowest = 8; // both with a little to spare
    double fastest = 450;
};

// Of the fastest in one exposure, samples; longer exposures count as such.
inline constexpr double kLongestTrail = 300;

// Of each frame at least `kLeastSignal` strong. What is drawn out as far as the fastest mover would
// be is one source, by filters of such lengths along all directions; longer trails are left out.
// The median is that of all frames; in a night so short that the slowest hardly leave their place,
// of those of its other end. Stars of frame and median are brought to one width. The answer is
// why they cannot be had, or that it was cancelled.
inline constexpr float kLeastSignal = 4.5F;
inline constexpr std::size_t kBytesOfThread = 24U << 20U; // of its frames' samples, about
std::string FindNewSources(const WarpedSeries& series, std::span<const DifferenceFrame> frames,
                           const Pace& pace, const SeriesWatch& watch,
                           std::vector<std::vector<NewSource>>& sources,
                           std::size_t bytes = kBytesOfThread);

} // namespace tarn
