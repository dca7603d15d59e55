// Versions of the libraries that read pictures: who links one adds its row.
#pragma once

#include "platform/Libraries.h"

#include <vector>

namespace tarn {

std::vector<Library> ImagingLibraries(Versions asked);

} // namespace tarn
