// "tarn dates": the file dates of a folder's pictures set to their camera dates.
#pragma once

#include "console/Subcommand.h"

#include <cstdint>

namespace tarn {

extern const Usage kDatesUsage;

struct SetDate {
    std::string path;
    std::int64_t seconds = 0; // since 1970
    std::string error;        // why it was not set
};

// Sets the times of these files; the same with what went wrong.
using DateSetter = std::function<std::vector<SetDate>(const std::vector<SetDate>& wanted)>;

// The pictures of the folder as a new user's list shows them. A row for each: name, tab, the date
// that its file got, or with "--dry-run" would get; nothing behind the tab when the picture has no
// date of its own, and its file is left alone.
int RunDates(std::span<const std::string> words, const DateSetter& set);

} // namespace tarn
