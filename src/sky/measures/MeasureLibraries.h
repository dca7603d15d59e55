// Versions of what the store of measures stands on.
#pragma once

#include "platform/Libraries.h"

#include <vector>

namespace tarn {

std::vector<Library> MeasureLibraries();

} // namespace tarn
