// A folder as a new user's picture list shows it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// Names of its pictures in the list's order; none when it cannot be read.
std::optional<std::vector<std::string>> ListedPictures(const std::string& folder);

// The same of the types that are named, "*.fits;*.cr2".
std::optional<std::vector<std::string>> ListedFiles(const std::string& folder,
                                                    std::string_view types);

} // namespace tarn
