// The camera's picture out of a raw file at the size of the window, beside the bare library that
// takes it out of the file and the decoder that reads it at the same scale.
#include "PictureFiles.h"
#include "RawFiles.h"
#include "Timing.h"

#include "imaging/ImgX.h"

#include <QTemporaryDir>

#include <libraw/libraw.h>

#include <jpeglib.h>

#include <cstdio>
#include <fstream>
#include <vector>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;

constexpr int kRounds = 15;
constexpr QSize kSensor(6000, 4000);
constexpr QSize kPreview(3000, 2000);
constexpr QSize kWindow(1400, 900);

int BareScale() {
    for (int part = 1; part < 8; ++part)
        if (kPreview.width() * part / 8 >= kSensor.scaled(kWindow, Qt::KeepAspectRatio).width())
            return part;
    return 8;
}

void Bare(const std::string& path) {
    LibRaw reader;
    if (reader.open_file(path.c_str()) != LIBRAW_SUCCESS || reader.unpack_thumb() != LIBRAW_SUCCESS)
        std::exit(1);
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<unsigned char*>(reader.imgdata.thumbnail.thumb),
                 reader.imgdata.thumbnail.tlength);
    jpeg_read_header(&info, TRUE);
    info.out_color_space = JCS_EXT_BGRA;
    info.scale_num = static_cast<unsigned>(BareScale());
    info.scale_denom = 8;
    jpeg_start_decompress(&info);
    std::vector<unsigned char> pixels(std::size_t(info.output_width) * info.output_height * 4);
    while (info.output_scanline < info.output_height) {
        JSAMPROW row = &pixels[std::size_t(info.output_scanline) * info.output_width * 4];
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
}

void Ours(const std::string& path) {
    tarn::ImgX picture;
    if (!picture.LoadFile(path, kWindow).empty()) std::exit(1);
}

} // namespace

int main() {
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString() + "/a.dng";
    const QImage scene = tarn::testing::TellTale(kSensor.width(), kSensor.height());
    QImage preview = scene.scaled(kPreview);
    for (int y = 0; y < preview.height(); ++y) // something to decode
        for (int x = 0; x < preview.width(); ++x)
            preview.setPixel(x, y, preview.pixel(x, y) ^ QRgb((x * 7919 + y * 104729) % 97));
    std::ofstream(path, std::ios::binary)
        << tarn::testing::RawFile(scene, tarn::testing::JpegBytes(preview), kPreview, 1).bytes;
    std::vector<double> ours;
    std::vector<double> bare;
    for (int i = 0; i < kRounds; ++i) {
        bare.push_back(Milliseconds([&] { Bare(path); }));
        ours.push_back(Milliseconds([&] { Ours(path); }));
    }
    std::printf("raw preview  %.1f ms  bare %.1f ms  ratio %.2f\n", Median(ours), Median(bare),
                Median(ours) / Median(bare));
}
