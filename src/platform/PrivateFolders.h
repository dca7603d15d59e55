// Folders for the user alone: what lies in them is nobody else's business.
#pragma once

#include <string>

namespace tarn {

// The folder and those above it that are missing. False, with errno, when one cannot be made.
bool MakePrivateFolders(const std::string& path);

} // namespace tarn
