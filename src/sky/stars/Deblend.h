// A footprint taken apart at the saddles between its peaks.
#pragma once

#include "sky/stars/Footprints.h"

#include <vector>

namespace tarn {

struct FootprintSample {
    int x = 0;
    int y = 0;
    float above = 0; // smoothed, above the sky
};

// The samples of one peak, the highest first.
struct Basin {
    std::vector<FootprintSample> samples;
};

// A peak counts as one of its own when it rises from its saddle by `leastRise`, in values of the
// plane, and by three hundredths of its height. A sample belongs to the peak that the steepest way
// up from it leads to.
void TakeApart(const Footprints& of, const Footprint& footprint, const SkyMesh& sky,
               float leastRise, std::vector<Basin>& basins);

} // namespace tarn
