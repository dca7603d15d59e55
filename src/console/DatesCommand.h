// "tarn dates": the file dates of a folder's pictures set to their camera dates.
#pragma once

#include "console/Subcommand.h"

namespace tarn {

extern const Usage kDatesUsage;

// The pictures of the folder as a new user's list shows them. A row for each: name, tab, the date
// that its file got, or with "--dry-run" would get; nothing behind the tab when the picture has no
// date of its own, and its file is left alone.
int RunDates(std::span<const std::string> words);

} // namespace tarn
