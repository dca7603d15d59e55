// How long a picture of a camera takes from the file to the preview: this program's imaging layer
// beside the least program that does the same, one scaled decode and one smooth scaling. Both run
// in turns in one process, so that the machine's moods reach both; the ratio of medians counts.
#include "platform/imaging/ImgX.h"

#include <QImage>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <jpeglib.h>

namespace {

constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr int kQuality = 92;
constexpr QSize kBox(1400, 900);
constexpr int kRounds = 31;

using Clock = std::chrono::steady_clock;

// Slow gradients and sensor noise: compresses as a picture of a camera does.
void WritePicture(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) std::exit(1);
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    jpeg_stdio_dest(&info, file);
    info.image_width = kWidth;
    info.image_height = kHeight;
    info.input_components = 3;
    info.in_color_space = JCS_RGB;
    jpeg_set_defaults(&info); // chroma at half size in both directions
    jpeg_set_quality(&info, kQuality, TRUE);
    jpeg_start_compress(&info, TRUE);
    std::minstd_rand random(1);
    std::vector<JSAMPLE> samples(std::size_t(kWidth) * 3);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x)
            for (int channel = 0; channel < 3; ++channel) {
                const double wave = std::sin(x * 0.004 + channel) + std::cos(y * 0.006 - channel) +
                                    0.3 * std::sin(x * y * 0.00002);
                const double noise = double(random() % 1000) / 1000 * 16 - 8;
                samples[std::size_t(x) * 3 + channel] =
                    JSAMPLE(std::clamp(128 + 45 * wave + noise, 0.0, 255.0));
            }
        JSAMPROW row = samples.data();
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::fclose(file);
}

QSize Fitted() {
    const QSize whole(kWidth, kHeight);
    return whole.scaled(kBox, Qt::KeepAspectRatio);
}

QImage Bare(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_stdio_src(&info, file);
    jpeg_read_header(&info, TRUE);
    info.out_color_space = JCS_EXT_BGRX;
    info.scale_denom = 8;
    info.scale_num = unsigned((Fitted().width() * 8 + kWidth - 1) / kWidth);
    jpeg_start_decompress(&info);
    QImage picture(int(info.output_width), int(info.output_height), QImage::Format_RGB32);
    while (info.output_scanline < info.output_height) {
        JSAMPROW row = picture.scanLine(int(info.output_scanline));
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    std::fclose(file);
    return picture.scaled(Fitted(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage Preview(const std::string& path) {
    tarn::ImgX preview;
    tarn::ImgX full;
    tarn::ImgX secondFull;
    tarn::ImgX base;
    if (tarn::ImgX::ReadFileInfo(path).isEmpty() || !preview.LoadFile(path, kBox).empty())
        return {};
    full.CopyFrom(preview);
    secondFull.CopyFrom(preview);
    base.CopyFrom(preview);
    preview.Scale(Fitted().width(), Fitted().height());
    return preview.SystemPicture();
}

double Milliseconds(const std::function<QImage()>& work) {
    const auto start = Clock::now();
    const QImage picture = work();
    const std::chrono::duration<double, std::milli> time = Clock::now() - start;
    if (picture.size() != Fitted()) {
        std::fprintf(stderr, "no picture of the right size\n");
        std::exit(1);
    }
    return time.count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main() {
    const QTemporaryDir folder;
    const std::string path = folder.filePath("bench.jpg").toStdString();
    WritePicture(path);
    std::vector<double> bare;
    std::vector<double> preview;
    for (int round = 0; round < kRounds; ++round) {
        const bool bareFirst = round % 2 == 0;
        if (bareFirst) bare.push_back(Milliseconds([&] { return Bare(path); }));
        preview.push_back(Milliseconds([&] { return Preview(path); }));
        if (!bareFirst) bare.push_back(Milliseconds([&] { return Bare(path); }));
    }
    std::printf("%d x %d to %d x %d, %d rounds\n", kWidth, kHeight, Fitted().width(),
                Fitted().height(), kRounds);
    std::printf("bare decode and scaling  %7.2f ms\n", Median(bare));
    std::printf("imaging layer            %7.2f ms\n", Median(preview));
    std::printf("ratio                    %7.3f\n", Median(preview) / Median(bare));
    return 0;
}
