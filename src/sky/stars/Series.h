// Frames of one series (one target, filter and exposure) judged beside each other.
#pragma once

#include "sky/stars/FrameMap.h"
#include "sky/stars/FrameMeasures.h"

#include <optional>
#include <span>
#include <vector>

namespace tarn {

// The frame that others of the series are compared with: of most stars. There is one at least.
std::size_t ReferenceOf(std::span<const FrameMeasures> frames);

// For each frame the flux of the stars that it has in common with the reference, over theirs
// there, relative to the middle of the series: 1 is typical. kNotMeasured for frames without a map,
// or with fewer than 5 common stars, and for all when fewer than two have as many. `maps` lead to
// the reference, one for each frame.
std::vector<double> TransparencyOf(std::span<const FrameMeasures> frames, std::size_t reference,
                                   std::span<const std::optional<FrameMap>> maps);

// 0 to 100 for each frame, kNotMeasured without a HFR: 100 times the product over hfr, elongation
// 1 / sqrt(1 - eccentricity^2), transparency and noise of 1 / (1 + d / 4). d is how far the frame
// is worse than the median of the series' best tenth, in robust deviations of the series (1.4826
// times the median of absolute deviations), which count at least 3 % of that best. What is not
// measured counts as the best.
std::vector<double> ScoresOf(std::span<const FrameMeasures> frames,
                             std::span<const double> transparency);

} // namespace tarn
