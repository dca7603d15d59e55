// The library that reads FITS files.
#pragma once

#include <string>

namespace tarn {

std::string FitsLibraryBuilt(); // the version that the program was built with
std::string FitsLibraryRuns();  // and the one that runs

} // namespace tarn
