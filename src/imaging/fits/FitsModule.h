// What the module that links the library of FITS files does for FitsFile.h and FitsLibrary.h.
#pragma once

#include "imaging/fits/FitsFile.h"

namespace tarn {

struct FitsModule {
    static constexpr char kModule[] = "fits";
    std::optional<FitsHeader> (*header)(const std::string& path, int image, std::string& error);
    std::optional<FitsSamples> (*samples)(const std::string& path, int image, std::string& error);
    std::string (*version)();
};

} // namespace tarn
