// Takes the input for the first bytes of a picture file.
#include "Demand.h"
#include "Input.h"

#include "imaging/FormatOf.h"

#include <algorithm>

namespace tarn {

// Only which one it is counts here.
const PictureFormat kJpegFormat{};
const PictureFormat kFitsFormat{};
const PictureFormat kRawFormat{};
const PictureFormat kHeifFormat{};
const PictureFormat kJxlFormat{};
const PictureFormat kTiffFormat{};
const PictureFormat kToolkitFormat{};

} // namespace tarn

using namespace tarn;
using namespace tarn::fuzz;

namespace {

const PictureFormat& FormatOfBytes(std::string bytes) {
    std::FILE* file = ::fmemopen(bytes.data(), bytes.size(), "rb");
    Demand(file != nullptr);
    const PictureFormat& format = FormatOf(file);
    Demand(std::ftell(file) == 0);
    std::fclose(file);
    return format;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = Input(data, size).Rest();
    if (bytes.empty()) return 0;
    const PictureFormat& format = FormatOfBytes(bytes);
    Demand(bytes.starts_with("\xFF\xD8\xFF") == (&format == &kJpegFormat));
    const bool sky = bytes.starts_with("SIMPLE  =") || bytes.starts_with("XISF0100");
    Demand(sky == (&format == &kFitsFormat) || bytes.starts_with("\x1F\x8B"));
    // What is further down says nothing.
    constexpr std::size_t kLooked = 4096;
    if (bytes.size() > kLooked) Demand(&FormatOfBytes(bytes.substr(0, kLooked)) == &format);
    return 0;
}
