// Sources of several frames that lie on a straight way at a steady pace.
#pragma once

#include "sky/movers/Differences.h"
#include "sky/stars/FrameMap.h"

#include <span>
#include <vector>

namespace tarn {

struct TrackFrame {
    double hours = 0;
    FrameMap back; // from the grid to the frame's samples
};

struct Track {
    double x = 0; // of the grid, at hour 0
    double y = 0;
    double speedX = 0; // samples of the grid an hour
    double speedY = 0;
    std::vector<std::size_t> frames; // that have a source on it

    double XAt(double hours) const { return x + speedX * hours; }
    double YAt(double hours) const { return y + speedY * hours; }
};

// How many are apart from each other: two files of one exposure, as of a camera that writes raw
// files and JPEGs, tell of one moment only.
std::size_t CountMoments(std::vector<double> hours);

// Leaves out what stands still for longer than the slowest mover takes to leave its place: in the
// sky, or on the sensor and narrower than a star; a mover that the telescope follows is none.
void LeaveOutStill(std::span<const TrackFrame> frames, const Pace& pace,
                   std::vector<std::vector<NewSource>>& sources);

// Sources of at least three moments, those with most of them first. A source belongs to one track.
// Some may be chance: who knows the frames looks again.
std::vector<Track> FindTracks(std::span<const TrackFrame> frames, const Pace& pace,
                              const std::vector<std::vector<NewSource>>& sources);

} // namespace tarn
