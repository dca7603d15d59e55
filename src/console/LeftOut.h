// Frames that take no part in what is made of a series, which is no fault of theirs.
#pragma once

#include "console/MarkCommands.h"

#include <string>
#include <vector>

namespace tarn {

// Of each path the reason, empty for those that take part: marked as rejected; a sum of frames that
// stands in a folder, not named itself; a file that came before under this or another name.
std::vector<std::string> LeftOut(const std::vector<std::string>& paths,
                                 const std::vector<std::string>& operands, const MarkReader& read);

} // namespace tarn
