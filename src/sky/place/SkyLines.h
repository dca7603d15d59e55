// What stood in the sky as lines of a panel.
#pragma once

#include "sky/place/SkyRows.h"

#include <string>
#include <vector>

namespace tarn {

// Each with a label of 14 characters, as the camera data has them; what is not known has no line.
std::vector<std::string> SkyLines(const SkyRow& row, const LongitudeSense& sense, bool isUnsure);

} // namespace tarn
