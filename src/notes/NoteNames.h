// Paths of notes: one flat folder, one file a picture name.
#pragma once

#include <string>
#include <string_view>

namespace tarn {

// The note of a picture. Without a folder the result begins with a separator.
std::string NotePath(std::string_view folder, std::string_view fileName);

// The path as a message shows it: longer than 64 characters and of more than four parts, only the
// first two and the last two parts are kept, "..." between them.
std::string DisplayPath(const std::string& path);

} // namespace tarn
