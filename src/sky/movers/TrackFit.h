// A track measured in all frames at once.
#pragma once

#include "sky/movers/Differences.h"
#include "sky/movers/Tracks.h"
#include "sky/stack/WarpedSeries.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarn {

struct TrackSight {
    bool covered = false; // the frame has all of its place
    double flux = 0;      // in values of the grid
    double signal = 0;    // over its noise
};

struct MeasuredTrack {
    Track track;
    double signal = 0;              // of all frames together
    std::vector<TrackSight> sights; // of each frame
};

// How far it is drawn out in the longest exposure, samples.
double TrailOf(const Track& track, std::span<const DifferenceFrame> frames);

// A star's profile that moves steadily over a sky that stands still, by least squares; the sky
// under it is what all frames have there, less what the mover itself brings, so that also one that
// covers its own way through the night loses nothing. Of a way so long that it has more than `most`
// values, the sky is that of parts of the night. None where nothing is left of it; `fault` when the
// disk errs, or the track has no room in memory.
inline constexpr std::size_t kMostWayValues = 16'000'000;
std::optional<MeasuredTrack> MeasureTrack(const WarpedSeries& series,
                                          std::span<const DifferenceFrame> frames, Track track,
                                          std::string& fault, std::size_t most = kMostWayValues);

} // namespace tarn
