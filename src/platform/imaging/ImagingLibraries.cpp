#include "platform/imaging/ImagingLibraries.h"

#include <cstdio> // which the next one needs

#include <jpeglib.h>

namespace tarn {

namespace {

#define TARN_TEXT_OF(value) #value
#define TARN_TEXT(value) TARN_TEXT_OF(value)

#ifdef LIBJPEG_TURBO_VERSION
constexpr char kJpegBuilt[] = TARN_TEXT(LIBJPEG_TURBO_VERSION);
#else
constexpr char kJpegBuilt[] = TARN_TEXT(JPEG_LIB_VERSION);
#endif

} // namespace

std::vector<Library> ImagingLibraries() {
    return {
        {"libjpeg", kJpegBuilt, ""},
    };
}

} // namespace tarn
