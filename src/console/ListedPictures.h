// A folder as a new user's picture list shows it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tarn {

// Names of its pictures in the list's order; none when it cannot be read.
std::optional<std::vector<std::string>> ListedPictures(const std::string& folder);

} // namespace tarn
