// Reads a picture of an XISF file that is one whole: header and samples as they are stored. All
// errors are told as text. May be called from any thread; each call opens the file anew.
#pragma once

#include "imaging/fits/FitsSamples.h"

#include <optional>
#include <string>

namespace tarn {

// `image` counts the file's pictures from 0; the first stands for one that is not there.
std::optional<FitsHeader> ReadXisfHeader(const std::string& path, int image, std::string& error);

// Samples and an error both when the file ends too early, or its checksum says that it is not as it
// was written.
std::optional<FitsSamples> ReadXisfSamples(const std::string& path, int image, std::string& error);

} // namespace tarn
