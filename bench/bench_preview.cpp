// How long a picture of a camera takes from the file to the preview: this program's imaging layer
// beside the least program that does the same, one scaled decode and one smooth scaling. Both run
// in turns in one process, so that the machine's moods reach both; the ratio of medians counts.
#include "CameraPicture.h"
#include "Timing.h"

#include "imaging/ImgX.h"

#include <QImage>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr QSize kWhole(6000, 4000);
constexpr QSize kBox(1400, 900);
constexpr int kRounds = 31;

QSize Fitted() {
    return kWhole.scaled(kBox, Qt::KeepAspectRatio);
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

double Time(const std::function<QImage()>& work) {
    QImage picture;
    const double time = tarn::bench::Milliseconds([&] { picture = work(); });
    if (picture.size() == Fitted()) return time;
    std::fprintf(stderr, "no picture of the right size\n");
    std::exit(1);
}

} // namespace

int main() {
    const QTemporaryDir folder;
    const std::string path = folder.filePath("bench.jpg").toStdString();
    tarn::bench::WriteCameraPicture(path, kWhole);
    const auto bareOnce = [&] { return tarn::bench::BareDecodeAndScale(path, kBox); };
    std::vector<double> bare;
    std::vector<double> preview;
    for (int round = 0; round < kRounds; ++round) {
        const bool bareFirst = round % 2 == 0;
        if (bareFirst) bare.push_back(Time(bareOnce));
        preview.push_back(Time([&] { return Preview(path); }));
        if (!bareFirst) bare.push_back(Time(bareOnce));
    }
    const double ours = tarn::bench::Median(preview);
    const double least = tarn::bench::Median(bare);
    std::printf("bare decode and scaling  %7.2f ms\nimaging layer            %7.2f ms   ratio %.3f "
                "(goal: at most 1.15)\n",
                least, ours, ours / least);
    return 0;
}
