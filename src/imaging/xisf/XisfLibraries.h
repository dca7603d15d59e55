// The libraries that read XISF files: XML, codecs, checksums.
#pragma once

#include <string>

namespace tarn {

struct XisfVersions {
    std::string pugixml; // does not tell which one runs
    std::string zlib;
    std::string lz4;
    std::string zstd;
    std::string nettle;
};

XisfVersions XisfLibrariesBuilt(); // with which the program was built
XisfVersions XisfLibrariesRun();   // and with which it runs

} // namespace tarn
