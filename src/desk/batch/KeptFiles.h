// What works through many files may leave those out that are not marked to keep.
#pragma once

#include "desk/Context.h"

#include <string>

namespace tarn {

inline bool IsKept(const Context& m, const std::string& path) {
    const auto mark = m.marks.MarkOf(path);
    return mark && mark->decision == Decision::Keep;
}

// The marks of the list are known; ahead of what goes by them. False: the user did not wait.
bool AwaitMarks(Context& m);

} // namespace tarn
