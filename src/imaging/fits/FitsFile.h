// Reads a picture of a FITS file: header and samples as they are stored. All errors are
// told as text. May be called from any thread; each call opens the file anew.
#pragma once

#include "imaging/fits/FitsSamples.h"

#include <optional>
#include <string>

namespace tarn {

// The name is taken as it is, whatever signs are in it.
std::optional<FitsHeader> ReadFitsHeader(const std::string& path, int image, std::string& error);

// Samples and an error both when the file ends too early.
std::optional<FitsSamples> ReadFitsSamples(const std::string& path, int image, std::string& error);

} // namespace tarn
