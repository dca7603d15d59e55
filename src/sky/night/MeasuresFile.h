// Where the program keeps what was measured.
#pragma once

#include <string>

namespace tarn {

// The program's folder for what may be thrown away, made where it is missing.
std::string CacheFolder();

// In that; without the folder nothing is kept.
std::string MeasuresFile();

} // namespace tarn
