// The least programs that do what is compared: nothing but the libraries' own calls. Whole
// processes, so that they stand beside other programs.
//   bare pictures FOLDER COUNT WIDTH HEIGHT   camera pictures, six of them under COUNT names
//   bare thumbnails TO FILE...                at an eighth, scaled once, encoded; two threads
//   bare screen TO WIDTH HEIGHT FILE          scaled decode, scaled, encoded
//   bare heads FILE...                        20041 bytes of each
//   bare times FILE...                        the same, and its times set
//   bare gallery TO FILE...                   thumbnails and a page for each
//   bare show FILE | bare show4 FILE          a window; a key shows the folder's next picture
#include "../CameraPicture.h"
#include "BareShow.h"
#include "support/ExifBuilder.h"

#include <QImage>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Names = std::span<char*>;

// Named by their patches; the script that watches the screen has the same list.
constexpr std::array<tarn::bench::Light, 6> kPatches{
    {{200, 40, 40}, {40, 200, 40}, {40, 40, 200}, {200, 200, 40}, {200, 40, 200}, {40, 200, 200}}};

std::string Bytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// With the camera data of a whole camera file behind its start.
void AddCameraData(const fs::path& path) {
    const std::string camera = tarn::testing::CanonPicture();
    const auto byte = [&](std::size_t at) {
        return std::size_t(static_cast<unsigned char>(camera[at]));
    };
    const std::size_t segment = 2 + byte(4) * 256 + byte(5);
    const std::string picture = Bytes(path);
    std::ofstream(path, std::ios::binary) << camera.substr(0, 2 + segment) << picture.substr(2);
}

int MakePictures(const fs::path& folder, int count, QSize size) {
    fs::create_directories(folder);
    for (int i = 0; i < count; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "p%06d.jpg", i);
        const fs::path path = folder / name;
        if (i < 6) {
            tarn::bench::WriteCameraPicture(path.string(), size, 92, kPatches[std::size_t(i)]);
            AddCameraData(path);
        } else {
            std::snprintf(name, sizeof name, "p%06d.jpg", i % 6);
            fs::create_hard_link(folder / name, path);
        }
    }
    return 0;
}

bool Shrink(const std::string& from, const std::string& to, QSize box) {
    return tarn::bench::BareDecodeAndScale(from, box).save(QString::fromStdString(to), "JPG", 85);
}

int Thumbnails(const fs::path& to, Names files) {
    fs::create_directories(to);
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < files.size(); i = next++)
            Shrink(files[i], (to / fs::path(files[i]).filename()).string(), QSize(120, 120));
    };
    std::thread other(work);
    work();
    other.join();
    return 0;
}

int Heads(Names files, bool setTimes) {
    char head[20041];
    long bytes = 0;
    for (const char* name : files) {
        const int file = ::open(name, O_RDONLY);
        bytes += ::read(file, head, sizeof head);
        const timespec times[2]{{1000000000, 0}, {1000000000, 0}};
        if (setTimes) ::futimens(file, times);
        ::close(file);
    }
    return bytes > 0 ? 0 : 1;
}

int Gallery(const fs::path& to, Names files) {
    Thumbnails(to / "thumbnails", files);
    const std::string page(3000, 'x');
    std::ofstream index(to / "index.html", std::ios::binary);
    for (const char* name : files) {
        index << std::string(300, 'x');
        std::ofstream(to / (fs::path(name).filename().string() + ".html"), std::ios::binary)
            << page;
    }
    return index ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::string work = argc > 2 ? argv[1] : "";
    const Names rest(argv + 3, std::size_t(argc > 3 ? argc - 3 : 0));
    if (work == "pictures" && argc == 6)
        return MakePictures(argv[2], std::atoi(argv[3]), {std::atoi(argv[4]), std::atoi(argv[5])});
    if (work == "thumbnails") return Thumbnails(argv[2], rest);
    if (work == "screen" && argc == 6)
        return Shrink(argv[5], argv[2], {std::atoi(argv[3]), std::atoi(argv[4])}) ? 0 : 1;
    if (work == "heads" || work == "times")
        return Heads(Names(argv + 2, std::size_t(argc - 2)), work == "times");
    if (work == "gallery") return Gallery(argv[2], rest);
    if (work == "show" || work == "show4")
        return BareShow(argc, argv, work == "show4" ? 4 : 1, argv[2]);
    std::fputs("see the head of bare.cpp\n", stderr);
    return 2;
}
