// Versions of the libraries that play clips: who links one adds its row.
#pragma once

#include "platform/Libraries.h"

#include <vector>

namespace tarn {

std::vector<Library> MciLibraries(Versions asked);

} // namespace tarn
