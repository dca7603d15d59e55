// What was found to move, cut out of its frames.
#pragma once

#include "sky/movers/Movers.h"
#include "sky/stack/SeriesPlan.h"

#include <QImage>

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

struct FoundMovers {
    std::vector<std::string> paths; // of the plan's numbers
    SeriesPlan plan;
    MoversResult result;
    std::optional<double> scale; // arc seconds of a pixel, by the reference's header
    std::vector<QImage> strips;  // one for each mover, as far as there are any
};

// Each mover in the middle, in some of its frames by time, in the grid and at the stretch of the
// reference. Reads each frame once.
void CutStrips(FoundMovers& found, const std::atomic<bool>& givenUp);

// A mover in words and numbers, with a row for each frame.
std::string MoverText(const FoundMovers& found, std::size_t index);

} // namespace tarn
