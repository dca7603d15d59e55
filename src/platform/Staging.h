// Files written into a hidden folder beside their places.
#pragma once

#include "platform/Files.h"

namespace tarn {

// Null, and the system's text, when nothing can be written in the folder.
std::unique_ptr<StagedFiles> MakeStaging(const std::string& folder, std::string* error);

} // namespace tarn
