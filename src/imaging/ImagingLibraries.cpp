#include "imaging/ImagingLibraries.h"

#include "imaging/fits/FitsLibrary.h"

#include <cstdio> // which libjpeg needs

#include <jpeglib.h>
#include <jxl/decode.h>
#include <jxl/version.h>
#include <lcms2.h>
#include <libheif/heif.h>
#include <libraw/libraw.h>

namespace tarn {

namespace {

#define TARN_TEXT_OF(value) #value
#define TARN_TEXT(value) TARN_TEXT_OF(value)

#ifdef LIBJPEG_TURBO_VERSION
constexpr char kJpegBuilt[] = TARN_TEXT(LIBJPEG_TURBO_VERSION);
#else
constexpr char kJpegBuilt[] = TARN_TEXT(JPEG_LIB_VERSION);
#endif

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

} // namespace

std::vector<Library> ImagingLibraries() {
    return {
        {"libjpeg", kJpegBuilt, ""},
        {"CFITSIO", FitsLibraryBuilt(), FitsLibraryRuns()},
        {"LibRaw", Numbers(LIBRAW_VERSION_STR), Numbers(LibRaw::version())},
        {"LittleCMS", LcmsVersion(LCMS_VERSION), LcmsVersion(cmsGetEncodedCMMversion())},
        {"libheif", LIBHEIF_VERSION, heif_get_version()},
        {"libjxl",
         JxlVersion(JPEGXL_MAJOR_VERSION * 1000000U + JPEGXL_MINOR_VERSION * 1000U +
                    JPEGXL_PATCH_VERSION),
         JxlVersion(JxlDecoderVersion())},
    };
}

} // namespace tarn
