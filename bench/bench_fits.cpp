// How long a picture of a telescope takes from the file to the stretched preview: this program's
// imaging layer beside the least program that reads all samples, takes median and deviation and
// maps every sample once, on two threads as well. Both run in turns in one process; the ratio of
// medians counts. Then a move of a stretch slider: values at hand, to light, fitted.
#include "Timing.h"

#include "imaging/ImgX.h"
#include "imaging/fits/FitsPixels.h"

#include <QImage>
#include <QTemporaryDir>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <fitsio.h>

namespace {

constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr std::size_t kPixels = std::size_t(kWidth) * kHeight;
constexpr std::size_t kValues = 65536;
constexpr QSize kBox(1400, 900);
constexpr int kRounds = 21;

void WriteSky(const std::string& path) {
    std::minstd_rand random(1);
    std::normal_distribution<double> noise(1000, 20);
    std::vector<std::uint16_t> samples(kPixels);
    for (std::uint16_t& sample : samples) sample = std::uint16_t(noise(random));
    for (int star = 0; star < 2000; ++star) samples[random() % kPixels] = 60000;
    fitsfile* file = nullptr;
    int status = 0;
    std::array<long, 2> axes{kWidth, kHeight};
    fits_create_diskfile(&file, path.c_str(), &status);
    fits_create_img(file, USHORT_IMG, 2, axes.data(), &status);
    fits_write_img(file, TUSHORT, 1, LONGLONG(kPixels), samples.data(), &status);
    fits_close_file(file, &status);
    if (status != 0) std::exit(1);
}

template <typename Work> void OnTwo(const Work& work) {
    std::thread second([&] { work(1, kPixels / 2, kPixels); });
    work(0, std::size_t(0), kPixels / 2);
    second.join();
}

std::size_t Middle(const std::vector<std::size_t>& counts) {
    std::size_t sum = 0;
    std::size_t at = 0;
    while (sum + counts[at] < kPixels / 2) sum += counts[at++];
    return at;
}

QImage Bare(const std::string& path) {
    const std::unique_ptr<std::uint16_t[]> samples(new std::uint16_t[kPixels]);
    std::array<std::vector<std::size_t>, 2> counts;
    OnTwo([&](std::size_t half, std::size_t begin, std::size_t end) {
        fitsfile* file = nullptr;
        int status = 0;
        fits_open_diskfile(&file, path.c_str(), READONLY, &status);
        fits_read_img(file, TUSHORT, LONGLONG(begin) + 1, LONGLONG(end - begin), nullptr,
                      samples.get() + begin, nullptr, &status);
        fits_close_file(file, &status);
        if (status != 0) std::exit(1);
        counts[half].assign(kValues, 0);
        for (std::size_t i = begin; i < end; ++i) ++counts[half][samples[i]];
    });
    for (std::size_t i = 0; i < kValues; ++i) counts[0][i] += counts[1][i];
    const std::size_t median = Middle(counts[0]);
    std::vector<std::size_t> distances(kValues);
    for (std::size_t i = 0; i < kValues; ++i)
        distances[i > median ? i - median : median - i] += counts[0][i];
    const tarn::ChannelStatistics sky{double(median), 1.4826 * double(Middle(distances))};
    const tarn::ToLight light(tarn::AutomaticStretch({0, 65535}, {&sky, 1}), 0);
    std::vector<std::uint32_t> table(kValues);
    for (std::size_t i = 0; i < kValues; ++i) table[i] = 0xFF000000 | light(float(i)) * 0x010101;
    QImage picture(kWidth, kHeight, QImage::Format_RGB32);
    auto* pixels = reinterpret_cast<std::uint32_t*>(picture.bits());
    OnTwo([&](std::size_t, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) pixels[i] = table[samples[i]];
    });
    return picture;
}

QImage Preview(const std::string& path) {
    tarn::ImgX picture;
    if (tarn::ImgX::ReadFileInfo(path).isEmpty() || !picture.LoadFile(path, kBox).empty())
        return {};
    const QSize fitted = QSize(kWidth, kHeight).scaled(kBox, Qt::KeepAspectRatio);
    picture.Scale(fitted.width(), fitted.height());
    return picture.SystemPicture();
}

double Timed(const std::function<QImage()>& work) {
    QImage picture;
    const double time = tarn::bench::Milliseconds([&] { picture = work(); });
    const int sky = picture.isNull() ? 0 : qGray(picture.pixel(picture.width() / 2, 3));
    if (sky > 20 && sky < 200) return time;
    std::fprintf(stderr, "no stretched picture\n");
    std::exit(1);
}

} // namespace

int main() {
    const QTemporaryDir folder;
    const std::string path = folder.filePath("bench.fit").toStdString();
    WriteSky(path);
    std::vector<double> bare;
    std::vector<double> preview;
    std::vector<double> full;
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(Timed([&] { return Bare(path); }));
        preview.push_back(Timed([&] { return Preview(path); }));
        full.push_back(Timed([&] {
            tarn::ImgX picture;
            picture.LoadFile(path, {});
            return picture.FullPicture();
        }));
    }
    std::string error;
    const auto pixels = tarn::FitsPixels::Read(path, kBox.width(), kBox.height(), error);
    std::vector<double> moves;
    for (int round = 0; round < kRounds; ++round)
        moves.push_back(Timed([&] {
            tarn::Stretch stretch = pixels->Automatic();
            stretch.midtones *= 1 + 0.01 * round;
            QImage picture(pixels->Width(), pixels->Height(), QImage::Format_RGB32);
            pixels->ToRgb(stretch, reinterpret_cast<std::uint32_t*>(picture.bits()),
                          std::size_t(picture.width()));
            tarn::ImgX shown;
            shown.TakePicture(picture);
            shown.Scale(1350, 900);
            return shown.SystemPicture();
        }));
    using tarn::bench::Median;
    std::printf("%d x %d, 16 bits, %d rounds\n", kWidth, kHeight, kRounds);
    std::printf("bare reading, statistics, mapping  %7.2f ms\n", Median(bare));
    std::printf("to the stretched preview           %7.2f ms, ratio %.3f\n", Median(preview),
                Median(preview) / Median(bare));
    std::printf("all pixels stretched               %7.2f ms, ratio %.3f\n", Median(full),
                Median(full) / Median(bare));
    std::printf("a move of a slider                 %7.2f ms\n", Median(moves));
    return 0;
}
