// What moves among the stars of a night.
#pragma once

#include "sky/stack/WarpedSeries.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarn {

struct MoversFrame {
    SeriesFrame frame;   // its map in samples
    double seconds = 0;  // middle of the exposure, from any beginning
    double fwhm = 3;     // of its stars, samples
    double exposure = 0; // seconds; 0: not known, movers are points
};

struct MoversOrder {
    std::string scratch; // a folder with room for half of the frames' floats
    double cell = 1;     // pixels a side in one sample: what counts as moving is told in pixels
    SeriesWatch watch;
};

// One frame's sight of it. Places are samples of that frame, flux in its values.
struct MoverSight {
    std::size_t number = 0;
    double x = 0;
    double y = 0;
    double flux = 0;
    double signal = 0; // flux over the noise of the area that it fills
};

struct Mover {
    std::vector<MoverSight> sights; // by time, where it stands out
    double speed = 0;               // samples of the reference an hour
    double angle = 0;               // degrees from +x to +y, above -180 to 180
    double signal = 0;              // of all frames together
};

struct MoversResult {
    std::vector<Mover> movers;       // of each night the strongest first
    std::vector<std::string> faults; // of the frames, in their order
    std::string fault;               // why nothing was looked for
    bool cancelled = false;
};

// Of frames that lie in the grid of the one of the number `reference`; each night by itself, which
// needs frames of at least three moments.
MoversResult FindMovers(std::span<const MoversFrame> frames, std::size_t reference,
                        const FrameReader& read, const MoversOrder& order);

} // namespace tarn
