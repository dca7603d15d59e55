// Files made of boxes within boxes, each with its length and a name of four letters in front:
// HEIF, AVIF, JPEG XL and the raw files of one maker.
#pragma once

#include "imaging/exif/FileBytes.h"

#include <functional>
#include <string_view>

namespace tarn {

// A part of a file.
struct Span {
    std::int64_t place = 0;
    std::int64_t length = 0;
    bool operator==(const Span&) const = default;
};

inline Span WholeOf(const FileBytes& file) {
    return {0, file.Size()};
}

// The contents of the first box of this name within a part; of no length when there is none.
Span FindBox(const FileBytes& file, Span within, std::string_view name);

// False for a file made of more parts than its readers go through in time.
bool HasFewBoxes(const FileBytes& file);

// The camera data that a HEIF file keeps as an item of its own: from their TIFF header on.
Span ExifOfHeif(const FileBytes& file);

// And its XMP.
Span XmpOfHeif(const FileBytes& file);

// Whether a HEIF file says itself how its pictures are turned.
bool HeifTurns(const FileBytes& file);

// Camera data whose first four bytes say how far behind them the TIFF header stands.
Span BehindOffset(const FileBytes& file, Span block);

} // namespace tarn
