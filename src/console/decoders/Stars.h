// The stars of many files, for the console companion. Needs the toolkit's application.
#pragma once

#include "sky/stars/FrameMeasures.h"

#include <string>
#include <vector>

namespace tarn {

// On two threads; a file that was measured before is not read again.
std::vector<FrameMeasures> MeasureFiles(const std::vector<std::string>& paths);

} // namespace tarn
