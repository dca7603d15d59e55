// The pictures of the folder shown.
#pragma once

#include "desk/Context.h"

#include <optional>
#include <string>
#include <vector>

namespace tarn {

// All of the folder, also where the list is narrowed; paths.
std::vector<std::string> NightPictures(const Context& m);

// Those of any folder, in the order of a list by name; none, and why, when it cannot be read.
std::optional<std::vector<std::string>> NightPicturesOf(const Context& m, const std::string& folder,
                                                        std::string& error);

} // namespace tarn
