// Dates of telescopes' files, which are those of world time unless they say otherwise.
#pragma once

#include "imaging/fits/FitsHeader.h"

#include <string>

namespace tarn {

// "2024-11-05 21:14:33.5 UT", "2024-11-05 14:14:33 UTC-07:00", "2024-11-05 21:15:42 TT".
std::string ShownFitsDate(const FitsHeader& header);

// In the form in which cameras write theirs, "2024:11:05 21:14:33", to the second and without its
// zone; empty where the header has no whole date.
std::string CameraDateOf(const FitsHeader& header);

} // namespace tarn
