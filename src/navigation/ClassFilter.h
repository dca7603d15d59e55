// The pattern of the file list, put together from the classes of files that are ticked.
#pragma once

#include "shell/state/SelectionState.h"

#include <string>

namespace tarn {

// Patterns joined by ";".
std::string JoinPatterns(const std::string& patterns, const std::string& more);

// The pattern with which the program starts: pictures, videos and web files as their boxes stand.
std::string StartFileTypes(const SelectionState& state);

} // namespace tarn
