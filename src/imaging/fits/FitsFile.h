// Reads the first picture of a FITS file: header and samples as they are stored. All errors are
// told as text. May be called from any thread; each call opens the file anew.
#pragma once

#include "imaging/fits/FitsHeader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tarn {

// The samples of one picture in the order of the file: row after row, plane after plane. Those of 8
// and 16 bits stand in `words`, all others in `floats`, where NaN means that there is none.
struct FitsSamples {
    FitsHeader header;
    std::unique_ptr<std::uint16_t[]> words;
    std::unique_ptr<float[]> floats; // the file's scale is in them already
    double zero = 0;                 // value of a word = zero + scale * word
    double scale = 1;
    int most = 0;          // the largest word where it counts from 0 and so tells white; else 0
    std::size_t count = 0; // samples from the start that could be read; all others are not set

    std::size_t PerPlane() const { return std::size_t(header.width) * std::size_t(header.height); }
    std::size_t All() const { return PerPlane() * std::size_t(header.planes); }
};

// The name is taken as it is, whatever signs are in it.
std::optional<FitsHeader> ReadFitsHeader(const std::string& path, std::string& error);

// Samples and an error both when the file ends too early.
std::optional<FitsSamples> ReadFitsSamples(const std::string& path, std::string& error);

// The library opens files by name: that of the very file that is open under this number.
std::string NameOfOpen(int file);

// By its first bytes.
bool IsFitsFile(const std::string& path);

} // namespace tarn
