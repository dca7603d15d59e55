// Which frames of a series are laid over each other, onto which, and why the others are not.
#pragma once

#include "sky/stack/WarpedSeries.h"
#include "sky/stars/FrameMeasures.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarn {

struct SeriesPlan {
    std::optional<std::size_t> reference; // none where no frame can be used
    std::vector<SeriesFrame> frames;      // that are used, numbers as of the measures
    std::vector<std::string> faults;      // of all; empty for those used
    std::vector<double> scores;           // of all; kNotMeasured where there is none
};

// Maps and light by the stars that the measures list; without enough of them frames have no map.
// `left` has a reason for each frame that is not to be used, or nothing at all. The reference is
// of the commonest size; the frame of the best score that has at least half as many stars as the
// one with most, or where fewer than half of the frames fit it, the next best that more fit.
SeriesPlan PlanSeries(std::span<const FrameMeasures> frames,
                      std::span<const std::string> left = {});

} // namespace tarn
