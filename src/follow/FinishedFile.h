// Whether another program has written a file to its end, by the file's own structure.
#pragma once

#include <string>

namespace tarn {

enum class Finished { No, Yes, Unknown }; // unknown: its kind does not tell

// FITS: all that its headers say is there. JPEG: its end is.
Finished FinishedOf(const std::string& path);

} // namespace tarn
