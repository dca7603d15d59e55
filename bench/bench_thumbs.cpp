// Thumbnails of a folder of camera pictures, beside the least program that makes them: read at an
// eighth, scaled once, encoded, written, on two threads; and beside the installed vipsthumbnail on
// the same files. All three in turns; the ratios of medians count.
#include "CameraPicture.h"
#include "Timing.h"

#include "imaging/JpegWriter.h"
#include "platform/Files.h"
#include "thumbnails/ThumbRun.h"

#include <QTemporaryDir>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;

constexpr int kPictures = 24;
constexpr QSize kPictureSize(6000, 4000);
constexpr int kWidth = 200;
constexpr int kQuality = 75;
constexpr int kRounds = 7;
constexpr int kThreads = 2;

struct Folder {
    QTemporaryDir made;
    std::string path = made.path().toStdString();
    std::vector<std::string> names;

    Folder() {
        for (int i = 0; i < kPictures; ++i) {
            names.push_back("p" + std::to_string(100 + i) + ".jpg");
            if (i == 0)
                tarn::bench::WriteCameraPicture(path + "/" + names.back(), kPictureSize);
            else // a file of its own, so that all are read alike
                std::filesystem::copy_file(path + "/" + names.front(), path + "/" + names.back());
        }
        for (const char* sub : {"ours", "bare", "peer"})
            std::filesystem::create_directory(path + "/" + sub);
    }
    std::size_t Made(const char* sub) const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(path + "/" + sub))
            count += entry.file_size() > 0;
        return count;
    }
};

void Ours(const Folder& folder, tarn::Files& files) {
    tarn::ThumbRequest request;
    request.pictures = folder.path;
    request.subFolder = "ours";
    request.width = kWidth;
    request.quality = kQuality;
    tarn::ThumbRun run(PlanThumbnails(folder.names, {}, request, false, files), request, files);
    while (!run.Done()) run.Step();
}

void Bare(const Folder& folder) {
    std::atomic<std::size_t> next = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (std::size_t mine = next++; mine < folder.names.size(); mine = next++) {
                const std::string& name = folder.names[mine];
                const QImage small = tarn::bench::BareDecodeAndScale(
                    folder.path + "/" + name, QSize(kWidth, kWidth * kWidth));
                std::string error;
                std::ofstream(folder.path + "/bare/" + name, std::ios::binary)
                    << tarn::EncodeJpeg(small, kQuality, &error);
            }
        });
    for (std::thread& thread : threads) thread.join();
}

void Peer(const Folder& folder) {
    const std::string command =
        "cd '" + folder.path + "' && vipsthumbnail --size 200x -o peer/%s.jpg *.jpg";
    if (std::system(command.c_str()) != 0) std::exit(1);
}

} // namespace

int main() {
    const Folder folder;
    const auto files = tarn::MakeFiles();
    const bool hasPeer = std::system("command -v vipsthumbnail >/dev/null") == 0;
    std::vector<double> ours;
    std::vector<double> bare;
    std::vector<double> peer;
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(Milliseconds([&] { Bare(folder); }));
        ours.push_back(Milliseconds([&] { Ours(folder, *files); }));
        if (hasPeer) peer.push_back(Milliseconds([&] { Peer(folder); }));
    }
    if (folder.Made("ours") != kPictures || folder.Made("bare") != kPictures ||
        (hasPeer && folder.Made("peer") != kPictures)) {
        std::fprintf(stderr, "not all thumbnails were made\n");
        return 1;
    }
    std::printf("%d pictures of 24 megapixels to %d pixels: %.0f ms, bare program %.0f ms, ratio "
                "%.3f (at most 1.15)\n",
                kPictures, kWidth, Median(ours), Median(bare), Median(ours) / Median(bare));
    if (hasPeer)
        std::printf("vipsthumbnail %.0f ms, ratio %.3f (at most 0.55)\n", Median(peer),
                    Median(ours) / Median(peer));
    else
        std::printf("vipsthumbnail is not installed\n");
    return 0;
}
