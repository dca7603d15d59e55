// One picture written as a JPEG, for the console companion. Needs the toolkit's application.
#pragma once

#include "console/Subcommand.h"

#include <string>

namespace tarn {

ConvertedFile WriteConverted(const std::string& path, const std::string& folder,
                             const ConvertOptions& options);

} // namespace tarn
