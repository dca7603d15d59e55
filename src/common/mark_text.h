// Marks as they are read.
#pragma once

#include "common/mark.h"

#include <string>

namespace tarn {

// "Kept 3★", "Rejected", "2★"; empty for no mark.
std::string MarkText(const Mark& mark);

// The same for a voice: "kept, 3 stars".
std::string SpokenMark(const Mark& mark);

// What a command did to a mark, with what follows: "Kept", "Rejected", "3 stars", "No stars",
// "Mark cleared".
std::string SaidOfChange(const MarkChange& change);

} // namespace tarn
