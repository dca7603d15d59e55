// JPEG XL. The library turns the picture upright.
#include "imaging/PictureFormat.h"

#include <jxl/decode.h>
#include <jxl/decode_cxx.h>

#include <vector>

namespace tarn {

namespace {

constexpr std::size_t kPiece = 1 << 16; // bytes of the file at a time

// One reading of one file, as far as is asked for.
class Jxl {
public:
    Jxl(std::FILE* file, int events) : m_file(file), m_decoder(JxlDecoderMake(nullptr)) {
        JxlDecoderSubscribeEvents(m_decoder.get(), events);
    }
    JxlDecoder* operator->() { return m_decoder.get(); }
    JxlDecoder* get() { return m_decoder.get(); }

    JxlDecoderStatus Next() {
        for (;;) {
            const JxlDecoderStatus status = JxlDecoderProcessInput(m_decoder.get());
            if (status != JXL_DEC_NEED_MORE_INPUT) return status;
            const std::size_t left = JxlDecoderReleaseInput(m_decoder.get());
            m_bytes.erase(m_bytes.begin(), m_bytes.end() - std::ptrdiff_t(left));
            m_bytes.resize(left + kPiece);
            const std::size_t got = std::fread(&m_bytes[left], 1, kPiece, m_file);
            if (got == 0) return JXL_DEC_ERROR;
            m_bytes.resize(left + got);
            JxlDecoderSetInput(m_decoder.get(), m_bytes.data(), m_bytes.size());
        }
    }

private:
    std::FILE* m_file;
    JxlDecoderPtr m_decoder;
    std::vector<std::uint8_t> m_bytes;
};

QSize JxlSize(std::FILE* file, std::string& error) {
    Jxl jxl(file, JXL_DEC_BASIC_INFO);
    JxlBasicInfo info{};
    if (jxl.Next() == JXL_DEC_BASIC_INFO &&
        JxlDecoderGetBasicInfo(jxl.get(), &info) == JXL_DEC_SUCCESS)
        return {int(info.xsize), int(info.ysize)};
    error = "The picture cannot be read";
    return {0, 0};
}

QImage DecodeJxl(std::FILE* file, QSize, std::string& error) {
    constexpr JxlPixelFormat kPixels{4, JXL_TYPE_UINT8, JXL_NATIVE_ENDIAN, 0};
    Jxl jxl(file, JXL_DEC_BASIC_INFO | JXL_DEC_FULL_IMAGE);
    JxlBasicInfo info{};
    QImage picture;
    for (;;) {
        switch (jxl.Next()) {
        case JXL_DEC_BASIC_INFO:
            JxlDecoderGetBasicInfo(jxl.get(), &info);
            picture = QImage(int(info.xsize), int(info.ysize), QImage::Format_RGBA8888);
            if (picture.isNull()) return error = "Not enough memory", QImage();
            break;
        case JXL_DEC_NEED_IMAGE_OUT_BUFFER:
            JxlDecoderSetImageOutBuffer(jxl.get(), &kPixels, picture.bits(),
                                        std::size_t(picture.sizeInBytes()));
            break;
        case JXL_DEC_FULL_IMAGE:
            return picture.convertToFormat(info.alpha_bits > 0 ? QImage::Format_ARGB32
                                                               : QImage::Format_RGB32);
        default:
            return error = "The picture cannot be read", QImage();
        }
    }
}

// Of the pixels as the library gives them.
std::string ProfileOfJxl(std::FILE* file) {
    Jxl jxl(file, JXL_DEC_BASIC_INFO | JXL_DEC_COLOR_ENCODING);
    std::size_t size = 0;
    if (jxl.Next() != JXL_DEC_BASIC_INFO || jxl.Next() != JXL_DEC_COLOR_ENCODING ||
        JxlDecoderGetICCProfileSize(jxl.get(), nullptr, JXL_COLOR_PROFILE_TARGET_DATA, &size) !=
            JXL_DEC_SUCCESS ||
        size > kLargestProfile)
        return {};
    std::string profile(size, '\0');
    JxlDecoderGetColorAsICCProfile(jxl.get(), nullptr, JXL_COLOR_PROFILE_TARGET_DATA,
                                   reinterpret_cast<std::uint8_t*>(profile.data()), size);
    return profile;
}

constexpr PictureFormat kFormat{JxlSize, DecodeJxl, false, true, ProfileOfJxl};

std::string Version() {
    const std::uint32_t version = JxlDecoderVersion(); // 7000 is 0.7.0
    return std::to_string(version / 1000000) + "." + std::to_string(version / 1000 % 1000) + "." +
           std::to_string(version % 1000);
}

} // namespace

extern "C" const FormatModule TarnModule{&kFormat, Version};

} // namespace tarn
