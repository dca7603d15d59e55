// Whether another program has written a file to its end, by the file's own structure.
#pragma once

#include "common/file_look.h"

#include <string>

namespace tarn {

enum class Finished { No, Yes, Unknown }; // unknown: its kind does not tell

// FITS: all that its headers say is there. JPEG: its end is. No: it is not as `look` any more.
Finished FinishedOf(const std::string& path, const FileLook& look);

} // namespace tarn
