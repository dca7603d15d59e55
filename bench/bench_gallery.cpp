// A gallery of a folder of camera pictures whose thumbnails exist, beside the least program that
// opens each file, reads its header and its note, and writes as many bytes. In turns; the ratio of
// medians counts.
#include "CameraPicture.h"
#include "Timing.h"

#include "common/numbers.h"
#include "imaging/PictureLoader.h"
#include "platform/Files.h"
#include "web/FileEntries.h"

#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int kPictures = 1000;
constexpr int kRounds = 7;

std::string NoteOf(const std::string& folder, const std::string& name) {
    std::ifstream note(folder + "/notes/" + name.substr(0, name.size() - 4) + ".enf",
                       std::ios::binary);
    return {std::istreambuf_iterator<char>(note), {}};
}

struct Folder {
    QTemporaryDir dir;
    std::string path = dir.path().toStdString();
    tarn::GalleryPlan plan;

    Folder() {
        fs::create_directories(path + "/notes");
        tarn::bench::WriteCameraPicture(path + "/P0001.jpg", QSize(6000, 4000));
        plan.indexPath = path + "/index.html";
        plan.pictureFolder = path;
        plan.subFolder = "thumbnails";
        plan.thumbnailSize = 120;
        plan.version = "v";
        plan.now = "now";
        for (int i = 1; i <= kPictures; ++i) {
            const std::string name = "P" + tarn::FormatPadded(i, 4) + ".jpg";
            if (i > 1) fs::create_hard_link(path + "/P0001.jpg", path + "/" + name);
            std::ofstream(path + "/notes/" + name.substr(0, name.size() - 4) + ".enf")
                << "Clear sky\r\nTelescope: 80 mm\r\nSeeing 4/5";
            plan.items.push_back({name, "T120_" + name});
        }
    }
};

// Each round has a folder of its own: a disk is slow to make files where many were just deleted.
// What the round before left to be written is no one's account.
std::string Fresh(const Folder& folder, const char* kind) {
    static int round = 0;
    const std::string path = folder.path + "/" + kind + std::to_string(++round);
    fs::create_directories(path);
    ::sync();
    return path;
}

void Ours(const Folder& folder, tarn::Files& files, const std::string& to) {
    tarn::DiskFacts facts;
    tarn::GalleryPlan plan = folder.plan;
    plan.indexPath = to + "/index.html";
    tarn::GalleryRun run(files, std::move(plan),
                         tarn::SourcesOf(facts, [&](const std::string& path) {
                             return NoteOf(folder.path, path.substr(path.rfind('/') + 1));
                         }));
    while (run.Step()) {
    }
    if (!run.Finish()) std::exit(1);
}

// As many bytes as our pages had.
void Bare(const Folder& folder, std::size_t bytesAPage, const std::string& to) {
    const std::string page(bytesAPage, 'x');
    for (const tarn::GalleryItem& item : folder.plan.items) {
        tarn::PictureLoader::ReadSize(folder.path + "/" + item.picture);
        NoteOf(folder.path, item.picture);
        std::ofstream(to + "/" + item.picture + ".html", std::ios::binary) << page;
    }
}

} // namespace

int main() {
    const Folder folder;
    const auto files = tarn::MakeFiles();
    const std::string first = Fresh(folder, "first");
    Ours(folder, *files, first);
    std::size_t bytes = fs::file_size(first + "/index.html");
    for (int k = 1; k <= kPictures; ++k)
        bytes += fs::file_size(first + "/" + tarn::PicturePageName(k));
    std::vector<double> ours;
    std::vector<double> bare;
    for (int round = 0; round < kRounds; ++round) {
        const std::string bareTo = Fresh(folder, "bare");
        bare.push_back(tarn::bench::Milliseconds([&] { Bare(folder, bytes / kPictures, bareTo); }));
        const std::string oursTo = Fresh(folder, "ours");
        ours.push_back(tarn::bench::Milliseconds([&] { Ours(folder, *files, oursTo); }));
    }
    std::printf("gallery of %d pictures: %.0f ms, bare program %.0f ms, ratio %.2f (at most 1.5)\n",
                kPictures, tarn::bench::Median(ours), tarn::bench::Median(bare),
                tarn::bench::Median(ours) / tarn::bench::Median(bare));
    return 0;
}
