// The place that a sum is to get.
#pragma once

#include "console/MeasuredFrames.h"

#include <string>
#include <vector>

namespace tarn {

// Why no sum may be written there; empty where it may. A sum of ours that stands there, and goes to
// the wastebasket, is no longer among the frames afterwards; any other frame is refused.
std::string CheckTarget(const std::string& target, std::vector<NamedFrame>& frames);

} // namespace tarn
