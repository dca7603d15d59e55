// A library that is linked, for the list of versions in "About".
#pragma once

#include <string>

namespace tarn {

struct Library {
    std::string name;
    std::string built;   // version that the program was built with
    std::string running; // version that it runs with; empty when it does not tell or is not asked
};

// Whether modules are loaded to ask them.
enum class Versions { Running, AsBuilt };

} // namespace tarn
