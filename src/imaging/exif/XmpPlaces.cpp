#include "imaging/exif/XmpPlaces.h"

#include "imaging/exif/Chunks.h"
#include "imaging/exif/FileKind.h"
#include "imaging/exif/TiffBlock.h"

namespace tarn {

namespace {

using namespace std::string_view_literals;

constexpr std::int64_t kMostXmp = 4 << 20; // bytes

Span XmpOfJpeg(const FileBytes& file, std::int64_t place) {
    return FindJpegSegment(file, place, '\xE1', "http://ns.adobe.com/xap/1.0/\0"sv);
}

std::string XmpOfTiff(const FileBytes& file) {
    constexpr unsigned kXmp = 700; // its tag
    const TiffBlock block(file, WholeOf(file));
    for (const TiffEntry& entry : block.Directory(block.FirstDirectory()))
        if (entry.tag == kXmp) return block.Data(entry, kMostXmp);
    return {};
}

// The text behind four names, the first of which says what it is.
Span XmpOfPng(const FileBytes& file) {
    constexpr std::string_view kName = "XML:com.adobe.xmp\0\0"sv; // and that it is not packed
    for (PngChunks chunks(file, 8); chunks.Next();) {
        if (chunks.name != "iTXt") continue;
        const std::string head = file.At(chunks.data.place, 256);
        if (!head.starts_with(kName)) continue;
        const auto language = head.find('\0', kName.size() + 1); // behind the way of packing
        const auto name = language == std::string::npos ? language : head.find('\0', language + 1);
        if (name == std::string::npos || std::int64_t(name) >= chunks.data.length) return {};
        const auto before = std::int64_t(name) + 1;
        return {chunks.data.place + before, chunks.data.length - before};
    }
    return {};
}

// One maker's raw files have it in a box of its own, another's in the JPEG file within.
Span XmpOfRaw(const FileBytes& file, std::string_view start) {
    constexpr std::string_view kXmpBox =
        "\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC";
    if (start.substr(4).starts_with("ftyp")) {
        const Span box = FindBox(file, WholeOf(file), "uuid");
        const auto named = std::int64_t(kXmpBox.size());
        if (box.length <= named || file.At(box.place, kXmpBox.size()) != kXmpBox) return {};
        return {box.place + named, box.length - named};
    }
    constexpr std::size_t kPlace = 84; // of the JPEG file
    if (start.starts_with("FUJIFILM") && start.size() >= kPlace + 4)
        return XmpOfJpeg(file, std::int64_t(NumberAt(start, kPlace, 4, true)) + 2);
    return {};
}

Span FindXmp(const FileBytes& file, std::string_view start) {
    if (start.starts_with("\xFF\xD8")) return XmpOfJpeg(file, 2);
    if (IsPng(start)) return XmpOfPng(file);
    if (IsWebP(start)) return FindWebPChunk(file, "XMP ");
    if (IsHeif(start)) return XmpOfHeif(file);
    if (IsJxl(start)) return FindBox(file, WholeOf(file), "xml ");
    return IsRaw(start) ? XmpOfRaw(file, start) : Span();
}

} // namespace

std::string ReadXmp(const FileBytes& file) {
    const std::string start = file.At(0, kKindBytes);
    if (start.starts_with("II") || start.starts_with("MM")) return XmpOfTiff(file);
    const Span found = FindXmp(file, start);
    if (found.length <= 0 || found.length > kMostXmp) return {};
    return file.At(found.place, std::size_t(found.length));
}

} // namespace tarn
