// Which reader a file is for, by its first bytes, never by its name.
#pragma once

#include "imaging/PictureFormat.h"

namespace tarn {

// Leaves the file at its beginning.
const PictureFormat& FormatOf(std::FILE* file);

} // namespace tarn
