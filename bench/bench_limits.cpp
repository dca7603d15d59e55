// One file read as the window reads it, for limits.sh: small as for the list, or with --whole all
// of its pixels. Prints what came of it.
#include "clips/ClipFrame.h"
#include "imaging/PictureLoader.h"
#include "thumbnails/ScalePicture.h"

#include <QGuiApplication>

#include <cstdio>
#include <string>

namespace {

constexpr int kSide = 256; // pixels

bool IsClip(const std::string& path) {
    for (const char* type : {".avi", ".ser", ".mp4", ".mov"})
        if (path.ends_with(type)) return true;
    return false;
}

QImage Small(const std::string& path, std::string& error) {
    if (IsClip(path)) return tarn::FirstFrame(path, kSide);
    tarn::SmallPicture small = tarn::ScalePicture(path, [](QSize picture) {
        return picture.scaled(kSide, kSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    });
    error = small.error;
    return small.pixels;
}

QImage Whole(const std::string& path, std::string& error) {
    const auto source = tarn::PictureLoader::Open(path, error);
    return source ? source->Decode({}, error) : QImage();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const std::string path = argv[argc - 1];
    std::string error;
    const QImage picture =
        std::string(argv[1]) == "--whole" ? Whole(path, error) : Small(path, error);
    std::printf("%d x %d %s\n", picture.width(), picture.height(), error.c_str());
    return picture.isNull() ? 1 : 0;
}
