// What moves in frames that are files.
#pragma once

#include "sky/movers/Movers.h"
#include "sky/movers/MoversQuest.h"

#include <string>

namespace tarn {

// Places and speeds in pixels of the files; faults of all paths. `scratch` as of a MoversOrder.
MoversResult FindMoversInFiles(const MoversQuest& quest, const std::string& scratch,
                               const SeriesWatch& watch = {});

} // namespace tarn
