// Pictures of telescopes, stretched for the screen while they are decoded.
#include "imaging/DirectFormats.h"
#include "imaging/fits/FitsPixels.h"
#include "imaging/fits/SkyFile.h"
#include "platform/OpenRegular.h"

#include <sys/stat.h>

namespace tarn {

namespace {

constexpr long long kWorkBytes = 28; // a pixel of three colours, as samples, values and light

std::string NameOf(std::FILE* file) {
    return NameOfOpen(::fileno(file));
}

QSize FitsSize(std::FILE* file, std::string& error) {
    const auto header = ReadSkyHeader(NameOf(file), error);
    if (!header) return {};
    if (1LL * header->width * header->height <= PictureMemoryLimit() / kWorkBytes)
        return {header->width, header->height};
    error = "The picture of " + std::to_string(header->width) + " x " +
            std::to_string(header->height) + " pixels does not fit into memory";
    return {};
}

QImage DecodeFits(std::FILE* file, QSize wanted, std::string& error) {
    const StretchChoice choice = CurrentStretchChoice();
    const auto pixels = FitsPixels::Read(NameOf(file), wanted.width(), wanted.height(), error);
    if (!pixels) return {};
    QImage picture(pixels->Width(), pixels->Height(), QImage::Format_RGB32);
    if (picture.isNull()) {
        error = "Not enough memory";
        return {};
    }
    struct stat facts {};
    ::fstat(::fileno(file), &facts);
    const Stretch straight = LinearStretch(pixels->Range());
    const StretchedFile itself{static_cast<std::int64_t>(facts.st_dev),
                               static_cast<std::int64_t>(facts.st_ino), pixels->Bits(),
                               pixels->Channels()};
    const Stretch stretch = choice.For(itself, pixels->Automatic(), straight);
    pixels->ToRgb(stretch, reinterpret_cast<std::uint32_t*>(picture.bits()),
                  std::size_t(picture.bytesPerLine()) / sizeof(std::uint32_t));
    return picture;
}

} // namespace

const PictureFormat kDirectFits{FitsSize, DecodeFits, true, false, nullptr};

} // namespace tarn
