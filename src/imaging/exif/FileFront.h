// The first bytes in which a picture file tells of its camera.
#pragma once

#include "common/file_look.h"
#include "imaging/exif/FileBytes.h"

#include <span>

namespace tarn {

// As they stand in JPEG files, big-endian TIFF files and all that has no camera data. Of other
// files those that a JPEG file of the same data would begin with. None when the file cannot be
// read.
std::optional<std::string> ReadFileFront(int file);

// The same into memory at hand, whose rest stays as it is; how many there are.
std::optional<std::size_t> ReadFileFront(int file, std::span<std::uint8_t, kFileFront> front);

// How the pixels of a file are to be turned, 1 to 8. Always 1 for JPEG files: whoever shows the
// picture turns it by their camera data.
int OrientationOfContainer(const FileBytes& file);

} // namespace tarn
