#include "imaging/exif/ExifPlaces.h"

#include "imaging/exif/Chunks.h"
#include "imaging/exif/FileKind.h"

#include <algorithm>

namespace tarn {

namespace {

using namespace std::string_view_literals;

// Some writers put the words in front that such a block has in a JPEG file.
Span WithoutWords(const FileBytes& file, Span block) {
    constexpr std::int64_t kWords = 6;
    if (block.length > kWords && file.At(block.place, kWords) == "Exif\0\0"sv)
        return {block.place + kWords, block.length - kWords};
    return block;
}

// Whether what stands there are chunks up to the file's end.
bool EndsAsPng(const FileBytes& file, std::int64_t place) {
    PngChunks chunks(file, place);
    while (chunks.Next())
        if (chunks.name == "IEND") return true;
    return false;
}

// In front of the pixels or behind them; these are thousands of chunks, and not walked.
Span ExifOfPng(const FileBytes& file) {
    PngChunks front(file, 8);
    while (front.Next() && front.name != "IDAT")
        if (front.name == "eXIf") return front.data;
    constexpr std::int64_t kTail = 1 << 17;
    const std::int64_t from = std::max<std::int64_t>(front.data.place, file.Size() - kTail);
    const std::string tail = file.At(from, kTail);
    for (std::size_t at = tail.find("eXIf"); at != std::string::npos;
         at = tail.find("eXIf", at + 1)) {
        if (at < 4) continue;
        const std::int64_t place = from + std::int64_t(at) - 4;
        const auto length = std::int64_t(NumberAt(tail, at - 4, 4, true));
        if (EndsAsPng(file, place)) return {place + 8, length};
    }
    return {};
}

Span ExifOfWebP(const FileBytes& file) {
    return FindWebPChunk(file, "EXIF");
}

// One maker's raw files have four blocks in a box of its own.
ExifPlaces ExifOfMakersBoxes(const FileBytes& file) {
    constexpr std::int64_t kName = 16; // bytes in front of the boxes
    const Span movie = FindBox(file, WholeOf(file), "moov");
    const Span own = FindBox(file, movie, "uuid");
    if (own.length < kName) return {};
    const Span boxes{own.place + kName, own.length - kName};
    return {FindBox(file, boxes, "CMT1"), FindBox(file, boxes, "CMT2"),
            FindBox(file, boxes, "CMT3"), FindBox(file, boxes, "CMT4")};
}

// Another maker's begin with the places of their parts, a JPEG file first.
Span ExifOfJpegInside(const FileBytes& file, std::string_view start) {
    constexpr std::size_t kPlace = 84;
    constexpr std::int64_t kHead = 12; // of the JPEG file, in front of its camera data
    if (start.size() < kPlace + 4) return {};
    const auto place = std::int64_t(NumberAt(start, kPlace, 4, true));
    const std::string head = file.At(place, kHead);
    if (!head.starts_with("\xFF\xD8\xFF\xE1") || !head.ends_with("Exif\0\0"sv)) return {};
    return {place + kHead, std::int64_t(NumberAt(head, 4, 2, true)) - 8};
}

} // namespace

ExifPlaces FindExif(const FileBytes& file, std::string_view start) {
    start = start.substr(0, kKindBytes);
    if (IsPng(start)) return {WithoutWords(file, ExifOfPng(file)), {}, {}};
    if (IsWebP(start)) return {WithoutWords(file, ExifOfWebP(file)), {}, {}};
    if (IsHeif(start)) return {WithoutWords(file, ExifOfHeif(file)), {}, {}};
    if (IsJxl(start)) return {BehindOffset(file, FindBox(file, WholeOf(file), "Exif")), {}, {}};
    if (!IsRaw(start)) return {};
    if (start.starts_with("FUJIFILM")) return {ExifOfJpegInside(file, start), {}, {}};
    if (start.substr(4).starts_with("ftyp")) return ExifOfMakersBoxes(file);
    if (start.starts_with("II") || start.starts_with("MM")) return {WholeOf(file), {}, {}};
    return {};
}

} // namespace tarn
