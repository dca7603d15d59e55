// What the module that links the library of raw files exports.
#pragma once

#include "imaging/PictureFormat.h"
#include "imaging/fits/FitsSamples.h"

#include <optional>
#include <string>

namespace tarn {

struct RawModule {
    static constexpr char kModule[] = "raw";
    FormatModule format; // first: by that it is known where all formats are alike
    std::optional<FitsSamples> (*samples)(std::FILE* file, std::string& error);
};

} // namespace tarn
