// Where picture files of all kinds but JPEG keep their camera data.
#pragma once

#include "imaging/exif/Boxes.h"

#include <string_view>

namespace tarn {

// Blocks that each begin as a TIFF file does; of no length where there is none. Mostly the first
// has them all.
struct ExifPlaces {
    Span first;
    Span exif;            // where the Exif directory stands apart
    Span maker;           // and the maker's note
    Span satellites = {}; // and what satellites tell
};

// `start` are the first bytes of the file. Plain TIFF files are not meant.
ExifPlaces FindExif(const FileBytes& file, std::string_view start);

} // namespace tarn
