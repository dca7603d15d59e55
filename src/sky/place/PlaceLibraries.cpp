#include "sky/place/PlaceLibraries.h"

#include <erfaextra.h>

namespace tarn {

// As built it is said by the build alone.
std::vector<Library> PlaceLibraries() {
    return {{"ERFA", TARN_ERFA_VERSION, ::eraVersion()}};
}

} // namespace tarn
