// Two frames of one field laid over each other by their stars.
#pragma once

#include "sky/stars/FrameMap.h"
#include "sky/stars/FrameMeasures.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarn {

struct Alignment {
    FrameMap map;        // from the frame to the reference; of no use with a fault
    int matched = 0;     // stars that agree with it
    double residual = 0; // their root mean square distance, pixels of the reference
    std::string fault;   // why there is no map; empty when there is one
};

// Lists as `FrameMeasures::brightest` has them, the brightest first; of long ones the brightest
// some hundred count. Shifts, any turn, mirroring, scales of 0.5 to 2. A map is only given where so
// many stars agree that it cannot be chance: at least 5, and a third of those that both frames
// have place for.
Alignment Align(std::span<const StarPlace> frame, std::span<const StarPlace> reference);

// Of all frames onto one of them; none for those that have none.
std::vector<std::optional<FrameMap>> MapsOnto(std::size_t reference,
                                              std::span<const FrameMeasures> frames);

} // namespace tarn
