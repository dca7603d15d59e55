// What it costs that pictures are read by a process of their own: the same works in one run, within
// this process and by the other one, in turns; the ratio of medians counts.
#include "PictureFiles.h"
#include "RawFiles.h"
#include "Timing.h"

#include "decoder/DecoderPool.h"
#include "imaging/ImgX.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <fitsio.h>
#include <unistd.h>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;

constexpr QSize kSensor(6000, 4000);
constexpr QSize kPreview(3000, 2000);
constexpr QSize kBox(1400, 900);

QImage Scene(QSize size) {
    QImage scene = tarn::testing::TellTale(size.width(), size.height());
    for (int y = 0; y < scene.height(); ++y) // something to decode
        for (int x = 0; x < scene.width(); ++x)
            scene.setPixel(x, y, scene.pixel(x, y) ^ QRgb((x * 7919 + y * 104729) % 37));
    return scene;
}

void Write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

void WriteSky(const std::string& path) {
    std::minstd_rand random(1);
    std::normal_distribution<double> noise(1000, 20);
    std::vector<std::uint16_t> samples(std::size_t(kSensor.width()) * kSensor.height());
    for (std::uint16_t& sample : samples) sample = std::uint16_t(noise(random));
    fitsfile* file = nullptr;
    int status = 0;
    long axes[] = {kSensor.width(), kSensor.height()};
    fits_create_diskfile(&file, path.c_str(), &status);
    fits_create_img(file, USHORT_IMG, 2, axes, &status);
    fits_write_img(file, TUSHORT, 1, LONGLONG(samples.size()), samples.data(), &status);
    fits_close_file(file, &status);
    if (status != 0) std::exit(1);
}

void MustRun(const std::string& command) {
    if (std::system(command.c_str()) == 0) return;
    std::fprintf(stderr, "failed: %s\n", command.c_str());
    std::exit(1);
}

void Show(const std::string& path, QSize box) {
    tarn::ImgX picture;
    if (!picture.LoadFile(path, box).empty() || picture.SystemPicture().isNull()) std::exit(1);
}

// As a step does it, at the size of the window; without a box all pixels.
void Compare(const char* name, const std::string& path, QSize box, int rounds) {
    std::vector<double> inside;
    std::vector<double> apart;
    for (int round = 0; round < rounds; ++round) {
        tarn::UseDecoders({});
        inside.push_back(Milliseconds([&] { Show(path, box); }));
        tarn::UseDecoders();
        Show(path, box); // the process is there, and has read such a file
        apart.push_back(Milliseconds([&] { Show(path, box); }));
        if (!tarn::DecoderProtection().starts_with("a process of its own, system")) std::exit(1);
    }
    std::printf("%-24s inside %8.2f ms  apart %8.2f ms  %+7.2f ms  ratio %.3f\n", name,
                Median(inside), Median(apart), Median(apart) - Median(inside),
                Median(apart) / Median(inside));
    std::fflush(stdout);
}

// Until the first answer, started on demand.
void CompareStart(const std::string& path) {
    std::vector<double> times;
    for (int round = 0; round < 15; ++round) {
        tarn::UseDecoders();
        times.push_back(Milliseconds([&] { Show(path, {}); }));
    }
    std::vector<double> calls;
    for (int round = 0; round < 15; ++round) {
        tarn::UseDecoders();
        calls.push_back(Milliseconds([] { tarn::StartDecoderAhead(); }));
        ::usleep(200 * 1000);
    }
    std::printf("%-24s %.2f ms; started ahead it costs who starts it %.2f ms\n",
                "a start and a picture", Median(times), Median(calls));
}

} // namespace

int main() {
    const QTemporaryDir folder;
    const std::string base = folder.path().toStdString() + "/";
    const QImage scene = Scene(kSensor);
    const std::string small = base + "a.png";
    Write(small, tarn::testing::PictureBytes(tarn::testing::TellTale(64, 48), "PNG"));
    Write(base + "b.dng",
          tarn::testing::RawFile(scene, tarn::testing::JpegBytes(Scene(kPreview)), kPreview, 1)
              .bytes);
    Write(base + "c.jpg", tarn::testing::JpegBytes(scene));
    MustRun("ffmpeg -nostdin -loglevel error -y -i '" + base +
            "c.jpg' -frames:v 1 -c:v libaom-av1 " +
            "-cpu-used 8 -crf 30 -row-mt 1 -pix_fmt yuv420p '" + base + "c.avif'");
    WriteSky(base + "d.fit");
    Write(base + "e.tif", tarn::testing::PictureBytes(scene, "TIFF"));
    std::printf("%d x %d, %s\n", kSensor.width(), kSensor.height(), "box 1400 x 900");
    Compare("PNG of 64 x 48", small, {}, 101);
    Compare("raw preview", base + "b.dng", kBox, 21);
    Compare("raw, all pixels", base + "b.dng", {}, 5);
    Compare("HEIF preview", base + "c.avif", kBox, 7);
    Compare("FITS preview", base + "d.fit", kBox, 21);
    Compare("FITS, all pixels", base + "d.fit", {}, 9);
    Compare("TIFF", base + "e.tif", kBox, 9);
    CompareStart(small);
    tarn::UseDecoders({});
    return 0;
}
