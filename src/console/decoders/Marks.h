// Marks for the console.
#pragma once

#include "console/MarkCommands.h"

namespace tarn {

std::vector<FileMark> ReadMarks(const std::vector<std::string>& paths);
std::vector<FileMark> WriteMarks(const std::vector<std::string>& paths, const MarkChange& change);

} // namespace tarn
