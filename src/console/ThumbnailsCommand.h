// "tarn thumbnails": the thumbnails of a folder, as the window makes them.
#pragma once

#include "console/Subcommand.h"

namespace tarn {

extern const Usage kThumbnailsUsage;

// A row for each thumbnail, then the report. The size is the width in pixels, 16 to 9999. What
// stands in the sub folder goes without a question, as for a new user, unless it is an update.
int RunThumbnails(std::span<const std::string> words, const ThumbnailMaker& make);

} // namespace tarn
