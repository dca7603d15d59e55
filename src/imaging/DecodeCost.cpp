#include "imaging/DecodeCost.h"

#include "imaging/exif/FileBytes.h"
#include "imaging/exif/FileKind.h"
#include "platform/DecodeBudget.h"

namespace tarn {

namespace {

// Bytes a pixel.
constexpr long long kSky = 28;        // three colours as samples, values and light
constexpr long long kRaw = 20;        // samples, four colours of 16 bits, two pictures
constexpr long long kRawReduced = 6;  // the camera's own picture, or developed at half size
constexpr long long kHeif = 14;       // planes of 10 bits, the decoder's memory, two pictures
constexpr long long kJxl = 16;        // colours as fractions, two pictures
constexpr long long kDeep = 12;       // 16 bits a colour, and the picture
constexpr long long kTwoPictures = 8; // as read, and as shown
constexpr long long kWithIndices = 5; // grey or a palette, and the picture

long long ToolkitBytes(std::FILE* file) {
    constexpr std::size_t kDepth = 24;
    const std::string start = FileBytes(::fileno(file)).At(0, kDepth + 1);
    if (!IsPng(start)) return kTwoPictures;
    return start.size() > kDepth && start[kDepth] == 16 ? kDeep : kWithIndices;
}

long long BytesOfPixel(const PictureFormat& format, std::FILE* file, QSize wanted) {
    if (&format == &kFitsFormat) return kSky;
    if (&format == &kRawFormat) return wanted.isEmpty() ? kRaw : kRawReduced;
    if (&format == &kHeifFormat) return kHeif;
    if (&format == &kJxlFormat) return kJxl;
    if (&format == &kTiffFormat) return kTwoPictures; // most have 8 bits a colour
    return ToolkitBytes(file);
}

} // namespace

long long DecodeCost(const PictureFormat& format, std::FILE* file, QSize size, QSize wanted) {
    if (&format == &kJpegFormat) return JpegCost(file, wanted);
    return BytesOfPixel(format, file, wanted) * size.width() * size.height();
}

std::string CostFault(long long cost, QSize size, std::int64_t fileBytes) {
    // The emptiest picture of the best method has more than a byte for so many.
    constexpr long long kMostOfByte = 10'000;
    constexpr long long kLarge = 1LL << 30U; // smaller ones do no harm
    const std::string pixels =
        std::to_string(size.width()) + " x " + std::to_string(size.height()) + " pixels";
    if (cost > kLarge && cost / kMostOfByte > fileBytes)
        return "The file is too small for the " + pixels + " that it claims";
    if (cost > TheDecodeBudget().Bytes())
        return "The picture of " + pixels + " does not fit into memory";
    return {};
}

} // namespace tarn
