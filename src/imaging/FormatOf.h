// Which reader a file is for, by its first bytes, never by its name.
#pragma once

#include "imaging/PictureFormat.h"

#include <string_view>

namespace tarn {

// Leaves the file at its beginning.
const PictureFormat& FormatOf(std::FILE* file);

// The toolkit's name of the reader for a file with these first bytes; null for what is left to
// none. It has readers for more kinds, and takes those of others that lie beside it: drawings that
// are programs, films, pages. They are never asked.
const char* ToolkitNameOf(std::string_view start);

} // namespace tarn
