#include "imaging/exif/FileKind.h"

#include "imaging/exif/FileBytes.h"

#include <algorithm>
#include <cstdint>

namespace tarn {

namespace {

using namespace std::string_view_literals;

// Raw files of many cameras have the frame of a TIFF file, and a small picture first. What marks
// them: the version of the open raw format, or a reduced picture with the real one further down.
bool IsRawTiff(std::string_view bytes) {
    constexpr std::size_t kEntry = 12;
    constexpr std::uint32_t kKind = 0xFE;
    constexpr std::uint32_t kFurther = 0x14A;
    constexpr std::uint32_t kRawVersion = 0xC612;
    constexpr std::uint32_t kMeaning = 0x106; // of the pixels
    constexpr std::uint32_t kMosaic = 32803;  // filters of a sensor
    const bool highFirst = bytes[0] == 'M';
    const std::size_t list = NumberAt(bytes, 4, 4, highFirst);
    if (list + 2 > bytes.size()) return false;
    const std::size_t count = NumberAt(bytes, list, 2, highFirst);
    bool reduced = false;
    bool further = false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = list + 2 + i * kEntry;
        if (entry + kEntry > bytes.size()) break;
        const auto tag = NumberAt(bytes, entry, 2, highFirst);
        if (tag == kRawVersion) return true;
        if (tag == kMeaning && NumberAt(bytes, entry + 8, 2, highFirst) == kMosaic) return true;
        reduced = reduced || (tag == kKind && NumberAt(bytes, entry + 8, 4, highFirst) == 1);
        further = further || tag == kFurther;
    }
    return reduced && further;
}

} // namespace

bool IsRaw(std::string_view bytes) {
    for (const std::string_view start :
         {"IIRO"sv, "IIRS"sv, "MMOR"sv, "IIU\0"sv, "FUJIFILMCCD-RAW"sv, "\0MRM"sv, "FOVb"sv})
        if (bytes.starts_with(start)) return true;
    if (bytes.substr(0, 12).ends_with("ftypcrx "sv)) return true;
    if (bytes.substr(0, 14).ends_with("HEAPCCDR"sv)) return true;
    if (!bytes.starts_with("II*\0"sv) && !bytes.starts_with("MM\0*"sv)) return false;
    return bytes.substr(std::min<std::size_t>(8, bytes.size())).starts_with("CR\2"sv) ||
           IsRawTiff(bytes);
}

// The first box of HEIF and AVIF names the brands that the file is made for.
bool IsHeif(std::string_view bytes) {
    if (!bytes.substr(std::min<std::size_t>(4, bytes.size())).starts_with("ftyp"sv)) return false;
    const std::size_t end = std::min<std::size_t>(NumberAt(bytes, 0, 4, true), bytes.size());
    for (std::size_t brand = 8; brand + 4 <= end; brand += 4) // the second is its version
        for (const std::string_view known : {"heic"sv, "heix"sv, "heim"sv, "heis"sv, "mif1"sv,
                                             "msf1"sv, "avif"sv, "avis"sv, "hevc"sv})
            if (bytes.substr(brand, 4) == known) return true;
    return false;
}

bool IsJxl(std::string_view bytes) {
    return bytes.starts_with("\xFF\x0A"sv) || bytes.starts_with("\0\0\0\x0CJXL \r\n\x87\n"sv);
}

bool IsTiff(std::string_view bytes) {
    for (const std::string_view start : {"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv})
        if (bytes.starts_with(start)) return true;
    return false;
}

bool IsPng(std::string_view bytes) {
    return bytes.starts_with("\x89PNG\r\n\x1A\n"sv);
}

bool IsWebP(std::string_view bytes) {
    return bytes.starts_with("RIFF"sv) && bytes.substr(0, 12).ends_with("WEBP"sv);
}

} // namespace tarn
