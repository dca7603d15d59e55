// What helps to find a fault: versions of the program, of its libraries and of the system.
#pragma once

#include "platform/Libraries.h"

#include <string>
#include <vector>

namespace tarn {

// Every library that is linked, the toolkit first.
std::vector<Library> Libraries(Versions asked);

// Lines of plain text, to be shown, copied and put into notes. Nothing in it tells of the user's
// files. `version` and `detail` are the program's own.
std::string AboutText(const std::string& version, const std::string& detail, Versions asked);

} // namespace tarn
