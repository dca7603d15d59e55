// What marks are read and written with, for "About".
#pragma once

#include "platform/Libraries.h"

#include <vector>

namespace tarn {

std::vector<Library> MarkLibraries();

} // namespace tarn
