// Where picture files of all kinds keep their XMP.
#pragma once

#include "imaging/exif/FileBytes.h"

#include <string>

namespace tarn {

// The first packet as it stands; empty where there is none, where it is packed, or where it has
// more bytes than what a picture says of itself.
std::string ReadXmp(const FileBytes& file);

} // namespace tarn
