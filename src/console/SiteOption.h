// The option "--site" of subcommands.
#pragma once

#include "sky/place/Heavens.h"

#include <optional>
#include <string>

namespace tarn {

// "48.1,11.5,520": degrees, east positive, and metres, which may be left out. None with the fault
// where it is none.
std::optional<Site> ParseSite(const std::string& text, std::string& fault);

} // namespace tarn
