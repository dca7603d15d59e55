#include "PictureFiles.h"

#include <QBuffer>
#include <QColorSpace>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <jpeglib.h>

namespace tarn::testing {

namespace {

std::vector<JSAMPLE> Samples(const QImage& picture, int y, JpegKind kind) {
    std::vector<JSAMPLE> row;
    for (int x = 0; x < picture.width(); ++x) {
        const QRgb pixel = picture.pixel(x, y);
        const std::vector<int> light{qRed(pixel), qGreen(pixel), qBlue(pixel)};
        if (kind == JpegKind::Gray) {
            row.push_back(JSAMPLE(qGray(pixel)));
        } else if (kind == JpegKind::Color) {
            row.insert(row.end(), light.begin(), light.end());
        } else {
            const int turn = kind == JpegKind::AdobeCmyk ? 0 : 255;
            for (const int value : light) row.push_back(JSAMPLE(value ^ turn));
            row.push_back(JSAMPLE(255 ^ turn));
        }
    }
    return row;
}

void SetKind(jpeg_compress_struct& info, JpegKind kind) {
    info.input_components = kind == JpegKind::Gray ? 1 : kind == JpegKind::Color ? 3 : 4;
    info.in_color_space = kind == JpegKind::Gray    ? JCS_GRAYSCALE
                          : kind == JpegKind::Color ? JCS_RGB
                                                    : JCS_CMYK;
    jpeg_set_defaults(&info);
    if (kind == JpegKind::Cmyk) info.write_Adobe_marker = FALSE;
}

char LetterOf(const QColor& color) {
    constexpr int kBright = 170;
    constexpr int kDark = 85;
    const int bits =
        (color.red() > kBright) * 4 + (color.green() > kBright) * 2 + (color.blue() > kBright);
    const int notDark =
        (color.red() > kDark) * 4 + (color.green() > kDark) * 2 + (color.blue() > kDark);
    if (bits != notDark) return '?';
    return bits == 4 ? 'r' : bits == 2 ? 'g' : bits == 1 ? 'b' : bits == 6 ? 'y' : '?';
}

} // namespace

std::string JpegBytes(const QImage& picture, JpegKind kind, int quality, bool progressive) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &bytes, &size);
    info.image_width = JDIMENSION(picture.width());
    info.image_height = JDIMENSION(picture.height());
    SetKind(info, kind);
    jpeg_set_quality(&info, quality, TRUE);
    if (progressive) jpeg_simple_progression(&info);
    jpeg_start_compress(&info, TRUE);
    for (int y = 0; y < picture.height(); ++y) {
        std::vector<JSAMPLE> samples = Samples(picture, y, kind);
        JSAMPROW row = samples.data();
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    const std::unique_ptr<unsigned char, decltype(&std::free)> owner(bytes, std::free);
    return {reinterpret_cast<const char*>(bytes), size};
}

std::string PictureBytes(const QImage& picture, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, format)) return {};
    return bytes.toStdString();
}

std::string WithProfile(const std::string& jpeg, const std::string& profile) {
    const std::string body = std::string("ICC_PROFILE\0\1\1", 14) + profile;
    const std::size_t length = body.size() + 2;
    return jpeg.substr(0, 2) + "\xFF\xE2" + char(length >> 8) + char(length & 0xFF) + body +
           jpeg.substr(2);
}

std::string SwappedProfile() {
    const QColorSpace swapped(QPointF(0.3127, 0.3290), QPointF(0.15, 0.06), QPointF(0.30, 0.60),
                              QPointF(0.64, 0.33), QColorSpace::TransferFunction::SRgb);
    return swapped.iccProfile().toStdString();
}

QImage TellTale(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool right = x >= width / 2;
            const bool lower = y >= height / 2;
            picture.setPixel(x, y,
                             lower ? (right ? qRgb(255, 255, 0) : qRgb(0, 0, 255))
                                   : (right ? qRgb(0, 255, 0) : qRgb(255, 0, 0)));
        }
    return picture;
}

std::string Quarters(const QImage& picture) {
    std::string letters;
    for (const int y : {1, 3})
        for (const int x : {1, 3})
            letters +=
                LetterOf(picture.pixelColor(picture.width() * x / 4, picture.height() * y / 4));
    return letters;
}

} // namespace tarn::testing
