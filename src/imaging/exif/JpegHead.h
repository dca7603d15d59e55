// Camera data laid anew as the head of a JPEG file has them: the first directory, the Exif
// directory behind it, and the data of both, within the bytes that the reader of camera data looks
// at.
#pragma once

#include "imaging/exif/TiffBlock.h"

namespace tarn {

inline constexpr std::size_t kMostMakerBytes = 12000; // of a maker's note

inline constexpr unsigned kExifDirectory = 34665; // tags
inline constexpr unsigned kMakerNote = 37500;

// Whether the reader of camera data acts on it.
bool IsShownTag(unsigned tag);

// Only what is shown of a picture is kept. `exif` is the block of the Exif directory where it
// stands apart, `maker` the bytes of a maker's note that stands apart. Empty when nothing was
// found.
std::string JpegHead(const TiffBlock& first, const TiffBlock& exif, std::string_view maker);

} // namespace tarn
