// "tarn convert": JPEG copies of pictures, reduced and with a line of text where that is asked for.
#pragma once

#include "console/Subcommand.h"

namespace tarn {

extern const Usage kConvertUsage;

// A row for each picture: its path, " -> ", the path of the copy. Quality is 1 to 100, a limit at
// least 10 pixels.
int RunConvert(std::span<const std::string> words, const PictureConverter& convert);

} // namespace tarn
