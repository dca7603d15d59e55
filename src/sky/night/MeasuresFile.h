// Where the program keeps what was measured.
#pragma once

#include <string>

namespace tarn {

// Its folder is made where it is missing; without it nothing is kept.
std::string MeasuresFile();

} // namespace tarn
