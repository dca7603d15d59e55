#include "imaging/fits/FitsLibrary.h"

#include <fitsio.h>

#include <cmath>

namespace tarn {

std::string FitsLibraryRuns() {
    float version = 0; // as 4.02, or 4.0203 of later ones
    fits_get_version(&version);
    constexpr int kParts = 100;
    const long whole = std::lround(version * kParts);
    return std::to_string(whole / kParts) + "." + std::to_string(whole % kParts);
}

} // namespace tarn
