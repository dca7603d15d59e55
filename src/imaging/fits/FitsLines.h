// The header of a FITS file as lines of the camera data panel.
#pragma once

#include "imaging/fits/FitsHeader.h"

#include <string>
#include <vector>

namespace tarn {

// Each with a label of 14 characters; what the header does not say has no line. The size in pixels
// stands in the panel's own line.
std::vector<std::string> FitsLines(const FitsHeader& header);

// The same of a file; none when it is not a FITS file that can be read.
std::vector<std::string> FitsLinesOf(const std::string& path);

} // namespace tarn
