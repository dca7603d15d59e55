// What the module that links the libraries of XISF files does for XisfFile.h and XisfLibraries.h.
#pragma once

#include "imaging/xisf/XisfFile.h"
#include "imaging/xisf/XisfLibraries.h"

namespace tarn {

struct XisfModule {
    static constexpr char kModule[] = "xisf";
    std::optional<FitsHeader> (*header)(const std::string& path, int image, std::string& error);
    std::optional<FitsSamples> (*samples)(const std::string& path, int image, std::string& error);
    XisfVersions (*versions)();
};

} // namespace tarn
