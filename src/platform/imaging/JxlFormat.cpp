// JPEG XL. The library turns the picture upright and gives its colours as the screen has them.
#include "platform/imaging/PictureFormat.h"

#include <jxl/decode.h>
#include <jxl/decode_cxx.h>

#include <vector>

namespace tarn {

namespace {

constexpr char kFault[] = "The picture cannot be read";

std::vector<std::uint8_t> AllBytes(std::FILE* file) {
    ::fseeko(file, 0, SEEK_END);
    const auto size = ::ftello(file);
    std::rewind(file);
    std::vector<std::uint8_t> bytes(size > 0 ? std::size_t(size) : 0);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    return bytes;
}

// Of a file that is read in full or in its beginning; null until the pixels are asked for.
QSize Decode(const std::vector<std::uint8_t>& bytes, QImage* picture, std::string& error) {
    const JxlDecoderPtr decoder = JxlDecoderMake(nullptr);
    JxlDecoderSubscribeEvents(decoder.get(),
                              JXL_DEC_BASIC_INFO | (picture ? JXL_DEC_FULL_IMAGE : 0));
    JxlDecoderSetInput(decoder.get(), bytes.data(), bytes.size());
    JxlDecoderCloseInput(decoder.get());
    constexpr JxlPixelFormat kPixels{4, JXL_TYPE_UINT8, JXL_NATIVE_ENDIAN, 0};
    JxlBasicInfo info{};
    for (;;) {
        switch (JxlDecoderProcessInput(decoder.get())) {
        case JXL_DEC_BASIC_INFO:
            JxlDecoderGetBasicInfo(decoder.get(), &info);
            if (!picture) return {int(info.xsize), int(info.ysize)};
            *picture = QImage(int(info.xsize), int(info.ysize), QImage::Format_RGBA8888);
            if (picture->isNull()) return error = "Not enough memory", QSize(0, 0);
            break;
        case JXL_DEC_NEED_IMAGE_OUT_BUFFER:
            JxlDecoderSetImageOutBuffer(decoder.get(), &kPixels, picture->bits(),
                                        std::size_t(picture->sizeInBytes()));
            break;
        case JXL_DEC_FULL_IMAGE:
            picture->convertTo(info.alpha_bits > 0 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
            return picture->size();
        default:
            return error = kFault, QSize(0, 0);
        }
    }
}

QSize JxlSize(std::FILE* file, std::string& error) {
    return Decode(AllBytes(file), nullptr, error);
}

QImage DecodeJxl(std::FILE* file, QSize, std::string& error) {
    QImage picture;
    Decode(AllBytes(file), &picture, error);
    return error.empty() ? picture : QImage();
}

} // namespace

const PictureFormat kJxlFormat{JxlSize, DecodeJxl, false, true, nullptr};

} // namespace tarn
