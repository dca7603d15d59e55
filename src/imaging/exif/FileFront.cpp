#include "imaging/exif/FileFront.h"

#include "imaging/exif/ExifPlaces.h"
#include "imaging/exif/FileKind.h"
#include "imaging/exif/JpegHead.h"
#include "imaging/exif/TiffBlock.h"

#include <algorithm>

namespace tarn {

namespace {

using namespace std::string_view_literals;

constexpr std::int64_t kUsualDirectory = 8; // where the first one mostly stands

bool IsJpeg(std::string_view front) {
    return front.starts_with("\xFF\xD8") || front.substr(0, 10).ends_with("Exif");
}

// Whether a directory, with all that the reader of camera data acts on, stands in the first bytes
// of the file.
bool LiesInFront(const TiffBlock& block, const std::vector<TiffEntry>& entries,
                 std::int64_t directory) {
    constexpr std::size_t kEntryBytes = 12;
    if (std::uint64_t(directory) + 2 + entries.size() * kEntryBytes > kFileFront) return false;
    return std::all_of(entries.begin(), entries.end(), [&](const TiffEntry& entry) {
        if (!IsShownTag(entry.tag) || entry.Bytes() <= 4) return true;
        const std::uint64_t bytes = entry.tag == kMakerNote ? 1 : entry.Bytes(); // it may be long
        return block.OffsetOf(entry) + bytes <= kFileFront;
    });
}

bool LiesInFront(const TiffBlock& block) {
    const std::vector<TiffEntry> entries = block.Directory(kUsualDirectory);
    for (const TiffEntry& entry : entries) {
        const std::uint32_t exif = block.OffsetOf(entry);
        if (entry.tag == kExifDirectory && !LiesInFront(block, block.Directory(exif), exif))
            return false;
    }
    return LiesInFront(block, entries, kUsualDirectory);
}

// What the reader of camera data looks at by its own places.
bool StandsAsItIs(std::string_view front, const FileBytes& file) {
    if (IsJpeg(front)) return true;
    if (!front.starts_with("MM")) return false;
    const TiffBlock block(file, WholeOf(file));
    return block.FirstDirectory() == kUsualDirectory && LiesInFront(block);
}

bool IsPlainTiff(std::string_view start) {
    return start.starts_with("II*\0"sv) || start.starts_with("MM\0*"sv);
}

// The bytes that stand for these; empty where these are the ones.
std::string FrontInstead(const FileBytes& file, std::string_view front) {
    if (StandsAsItIs(front, file)) return {};
    const ExifPlaces places = FindExif(file, front);
    if (places.first.length <= 0) return {};
    const TiffBlock first(file, places.first);
    const TiffBlock exif(file, places.exif);
    const auto noteBytes = std::min<std::int64_t>(places.maker.length, kMostMakerBytes);
    const std::string note = file.At(places.maker.place, std::size_t(noteBytes));
    return JpegHead(first, exif, note);
}

} // namespace

std::optional<std::string> ReadFileFront(int number) {
    const FileBytes file(number);
    auto front = file.Read(0, kFileFront);
    if (!front) return front;
    std::string instead = FrontInstead(file, *front);
    return instead.empty() ? front : std::move(instead);
}

std::optional<std::size_t> ReadFileFront(int number, std::span<std::uint8_t, kFileFront> front) {
    auto* const bytes = reinterpret_cast<char*>(front.data());
    const auto count = ReadAt(number, 0, {bytes, front.size()});
    if (!count || IsJpeg({bytes, *count})) return count;
    const std::string instead = FrontInstead(FileBytes(number), {bytes, *count});
    if (instead.empty()) return count;
    std::copy_n(instead.begin(), std::min(instead.size(), front.size()), bytes);
    return std::min(instead.size(), front.size());
}

int OrientationOfContainer(const FileBytes& file) {
    const std::string start = file.At(0, kKindBytes);
    if (IsJpeg(start)) return 1; // turned by whoever shows them
    if (IsPlainTiff(start)) return OrientationOf(TiffBlock(file, WholeOf(file)));
    const ExifPlaces places = FindExif(file, start);
    return places.first.length > 0 ? OrientationOf(TiffBlock(file, places.first)) : 1;
}

} // namespace tarn
