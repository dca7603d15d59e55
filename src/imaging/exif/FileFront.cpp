#include "imaging/exif/FileFront.h"

#include "common/file_look.h"
#include "imaging/exif/ExifPlaces.h"
#include "imaging/exif/FileKind.h"
#include "imaging/exif/JpegHead.h"
#include "imaging/exif/TiffBlock.h"

#include <algorithm>

namespace tarn {

namespace {

using namespace std::string_view_literals;

constexpr std::int64_t kUsualDirectory = 8; // where the first one mostly stands

// What the reader of camera data looks at by its own places.
bool StandsAsItIs(std::string_view front, const FileBytes& file) {
    if (front.starts_with("\xFF\xD8") || front.substr(0, 10).ends_with("Exif")) return true;
    return front.starts_with("MM") &&
           TiffBlock(file, WholeOf(file)).FirstDirectory() == kUsualDirectory;
}

bool IsPlainTiff(std::string_view start) {
    return start.starts_with("II*\0"sv) || start.starts_with("MM\0*"sv);
}

} // namespace

std::optional<std::string> ReadFileFront(int number) {
    const FileBytes file(number);
    auto front = file.Read(0, kFileFront);
    if (!front || StandsAsItIs(*front, file)) return front;
    const ExifPlaces places = FindExif(file, *front);
    if (places.first.length <= 0) return front;
    const TiffBlock first(file, places.first);
    const TiffBlock exif(file, places.exif);
    const auto noteBytes = std::min<std::int64_t>(places.maker.length, kMostMakerBytes);
    const std::string note = file.At(places.maker.place, std::size_t(noteBytes));
    std::string head = JpegHead(first, exif, note);
    if (!head.empty()) front = std::move(head);
    return front;
}

int OrientationOfContainer(const FileBytes& file) {
    const std::string start = file.At(0, kKindBytes);
    if (StandsAsItIs(start, file)) return 1;
    if (IsPlainTiff(start)) return OrientationOf(TiffBlock(file, WholeOf(file)));
    const ExifPlaces places = FindExif(file, start);
    return places.first.length > 0 ? OrientationOf(TiffBlock(file, places.first)) : 1;
}

} // namespace tarn
