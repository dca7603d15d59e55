#include "imaging/ImagingLibraries.h"

#include "imaging/PictureFormat.h"
#include "imaging/fits/FitsLibrary.h"
#include "imaging/xisf/XisfLibraries.h"
#include "platform/Modules.h"

#include <cstdio> // which libjpeg needs

#include <jpeglib.h>
// Of libraries in modules the numbers alone: nothing of them is called here.
#include <jxl/version.h>
#include <lcms2.h>
#include <libheif/heif_version.h>
#include <libraw/libraw_version.h>
#include <seccomp.h>
#include <tiffvers.h>

namespace tarn {

namespace {

#define TARN_TEXT_OF(value) #value
#define TARN_TEXT(value) TARN_TEXT_OF(value)

#ifdef LIBJPEG_TURBO_VERSION
constexpr char kJpegBuilt[] = TARN_TEXT(LIBJPEG_TURBO_VERSION);
#else
constexpr char kJpegBuilt[] = TARN_TEXT(JPEG_LIB_VERSION);
#endif

constexpr char kTiffBuilt[] = TARN_TEXT(TIFFLIB_MAJOR_VERSION) "." TARN_TEXT(
    TIFFLIB_MINOR_VERSION) "." TARN_TEXT(TIFFLIB_MICRO_VERSION);

constexpr char kSeccompBuilt[] =
    TARN_TEXT(SCMP_VER_MAJOR) "." TARN_TEXT(SCMP_VER_MINOR) "." TARN_TEXT(SCMP_VER_MICRO);

// "0.20.2-Release" is 0.20.2.
std::string Numbers(const std::string& version) {
    return version.substr(0, version.find_first_not_of("0123456789."));
}

// 2140 is 2.14.
std::string LcmsVersion(int version) {
    return std::to_string(version / 1000) + "." + std::to_string(version / 10 % 100);
}

// 7000 is 0.7.0.
std::string JxlVersion(unsigned version) {
    return std::to_string(version / 1000000) + "." + std::to_string(version / 1000 % 1000) + "." +
           std::to_string(version % 1000);
}

// What a module says of its library.
std::string Running(Versions asked, const char* name) {
    if (asked == Versions::AsBuilt) return {};
    const auto* module = static_cast<const FormatModule*>(LoadModule(name));
    return module ? module->version() : std::string();
}

} // namespace

std::vector<Library> ImagingLibraries(Versions asked) {
    const XisfVersions built = XisfLibrariesBuilt();
    const XisfVersions runs = asked == Versions::AsBuilt ? XisfVersions() : XisfLibrariesRun();
    return {
        {"libjpeg", kJpegBuilt, ""},
        {"CFITSIO", FitsLibraryBuilt(), asked == Versions::AsBuilt ? "" : FitsLibraryRuns()},
        {"LibRaw", Numbers(LIBRAW_VERSION_STR), Running(asked, "raw")},
        {"LittleCMS", LcmsVersion(LCMS_VERSION), LcmsVersion(cmsGetEncodedCMMversion())},
        {"libheif", LIBHEIF_VERSION, Running(asked, "heif")},
        {"libjxl",
         JxlVersion(JPEGXL_MAJOR_VERSION * 1000000U + JPEGXL_MINOR_VERSION * 1000U +
                    JPEGXL_PATCH_VERSION),
         Running(asked, "jxl")},
        {"pugixml", built.pugixml, ""},
        {"zlib", built.zlib, runs.zlib},
        {"LZ4", built.lz4, runs.lz4},
        {"Zstandard", built.zstd, runs.zstd},
        {"Nettle", built.nettle, runs.nettle},
        {"libtiff", kTiffBuilt, Running(asked, "tiff")},
        {"libseccomp", kSeccompBuilt, ""},
    };
}

} // namespace tarn
