// What works through many files may leave those out that are not marked to keep.
#pragma once

#include "desk/Context.h"

#include <string>

namespace tarn {

inline bool IsKept(const Context& m, const std::string& path) {
    const auto mark = m.marks.MarkOf(path);
    return mark && mark->decision == Decision::Keep;
}

} // namespace tarn
