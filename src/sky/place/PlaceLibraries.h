// Versions of what times and places of the sky stand on.
#pragma once

#include "platform/Libraries.h"

#include <vector>

namespace tarn {

std::vector<Library> PlaceLibraries();

} // namespace tarn
