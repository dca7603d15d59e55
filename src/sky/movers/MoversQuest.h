// Files in which movers are looked for.
#pragma once

#include "sky/stack/SeriesPlan.h"

#include <string>
#include <vector>

namespace tarn {

struct MoversQuest {
    const std::vector<std::string>& paths; // of the plan's numbers
    const std::vector<FrameMeasures>& measures;
    const SeriesPlan& plan;
};

} // namespace tarn
