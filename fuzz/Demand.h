// What a target expects of every input; it stops the run where it does not hold.
#pragma once

#include <cstdlib>

namespace tarn::fuzz {

inline void Demand(bool condition) {
    if (!condition) std::abort();
}

} // namespace tarn::fuzz
