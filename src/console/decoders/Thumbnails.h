// The thumbnails of a folder, for the console companion. Needs the toolkit's application.
#pragma once

#include "console/Subcommand.h"

namespace tarn {

ThumbnailOutcome MakeThumbnails(const ThumbnailOrder& order);

} // namespace tarn
