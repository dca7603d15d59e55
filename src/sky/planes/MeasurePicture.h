// Stars of picture files.
#pragma once

#include "sky/stars/FrameMeasures.h"

#include <string>
#include <vector>

namespace tarn {

// The row of a file; any thread. What cannot be read has a row with the reason. Frames that hold no
// stars by their header (darks, flats, bias) have the level and noise alone.
FrameMeasures MeasurePicture(const std::string& path);

// Its sources, the brightest first; `fault` where there are none, or nothing could be read.
std::vector<MeasuredStar> ListSourcesOf(const std::string& path, std::string& fault);

} // namespace tarn
