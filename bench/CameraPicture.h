// Files that compress as pictures of a camera do, and the least program that shows one: a scaled
// decode and a smooth scaling.
#pragma once

#include <QImage>
#include <QSize>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

#include <jpeglib.h>

namespace tarn::bench {

using Light = std::array<int, 3>;

// Slow gradients and sensor noise; with a `patch`, grey ones around the patch, which fills the
// middle half and by which a picture is known again on a screen.
inline int CameraSample(int x, int y, int channel, QSize size, const std::optional<Light>& patch) {
    if (patch && std::abs(2 * x - size.width()) < size.width() / 2 &&
        std::abs(2 * y - size.height()) < size.height() / 2)
        return (*patch)[std::size_t(channel)];
    const int phase = patch ? 0 : channel;
    return int(128 + 45 * (std::sin(x * 0.004 + phase) + std::cos(y * 0.006 - phase)));
}

inline void WriteCameraPicture(const std::string& path, QSize size, int quality = 92,
                               const std::optional<Light>& patch = {}) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) std::exit(1);
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    jpeg_stdio_dest(&info, file);
    info.image_width = static_cast<JDIMENSION>(size.width());
    info.image_height = static_cast<JDIMENSION>(size.height());
    info.input_components = 3;
    info.in_color_space = JCS_RGB;
    jpeg_set_defaults(&info); // chroma at half size in both directions
    jpeg_set_quality(&info, quality, TRUE);
    jpeg_start_compress(&info, TRUE);
    std::minstd_rand random(1);
    std::vector<JSAMPLE> samples(std::size_t(size.width()) * 3);
    for (int y = 0; y < size.height(); ++y) {
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const int light = CameraSample(int(i / 3), y, int(i % 3), size, patch);
            samples[i] =
                JSAMPLE(std::clamp(light + double(random() % 1000) / 1000 * 16 - 8, 0.0, 255.0));
        }
        JSAMPROW row = samples.data();
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::fclose(file);
}

// The same picture under `count` names, p100.jpg first.
inline void FillFolder(const std::string& folder, int count, QSize size) {
    const std::string first = folder + "/p100.jpg";
    WriteCameraPicture(first, size);
    for (int i = 1; i < count; ++i)
        if (::link(first.c_str(), (folder + "/p" + std::to_string(100 + i) + ".jpg").c_str()))
            std::perror("link");
}

// The coarsest reading that fills the box, or all pixels where there is none, and the size to which
// they are to be scaled.
struct BareReading {
    QImage pixels;
    QSize fitted;
};
inline BareReading BareDecode(const std::string& path, QSize box = {}) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) std::exit(1);
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_stdio_src(&info, file);
    jpeg_read_header(&info, TRUE);
    const QSize whole(int(info.image_width), int(info.image_height));
    const QSize fitted = box.isEmpty() ? whole : whole.scaled(box, Qt::KeepAspectRatio);
    info.out_color_space = JCS_EXT_BGRX;
    info.scale_denom = 8;
    info.scale_num = unsigned((fitted.width() * 8 + whole.width() - 1) / whole.width());
    jpeg_start_decompress(&info);
    QImage picture(int(info.output_width), int(info.output_height), QImage::Format_RGB32);
    while (info.output_scanline < info.output_height) {
        JSAMPROW row = picture.scanLine(int(info.output_scanline));
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    std::fclose(file);
    return {picture, fitted};
}

inline QImage BareDecodeAndScale(const std::string& path, QSize box) {
    const BareReading read = BareDecode(path, box);
    return read.pixels.scaled(read.fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace tarn::bench
