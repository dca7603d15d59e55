// Writes pictures for the fuzz targets to begin with into the folder given.
#include "support/ExifBuilder.h"

#include <cstdio>
#include <fstream>
#include <string>

int main(int argc, char** argv) {
    using namespace tarn::testing;
    if (argc != 2) return 2;
    const auto write = [&](const char* name, const std::string& bytes) {
        std::ofstream file(std::string(argv[1]) + "/" + name, std::ios::binary);
        file << bytes;
        return static_cast<bool>(file.flush());
    };
    const std::string tiff = ExifBuilder(Endian::Big).Ascii(36867, "2004:06:22 20:15:30").Tiff();
    const bool written = write("canon", CanonPicture() + CanonPicture()) &&
                         write("nikon", NikonPicture() + NikonPicture()) &&
                         write("tiff", tiff + tiff);
    return written ? 0 : 1;
}
