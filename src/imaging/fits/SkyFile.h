// Files of telescopes, FITS and XISF, by one door; of a file with several pictures the one that
// ImageChoice says. All errors are told as text. May be called from
// any thread; each call opens the file anew, under its name as it is, whatever signs are in it.
#pragma once

#include "imaging/fits/FitsSamples.h"

#include <optional>
#include <string>

namespace tarn {

// By its first bytes.
bool IsSkyFile(const std::string& path);

std::optional<FitsHeader> ReadSkyHeader(const std::string& path, std::string& error);

// Samples and an error both when the file ends too early, or is not as it was written.
std::optional<FitsSamples> ReadSkySamples(const std::string& path, std::string& error);

} // namespace tarn
