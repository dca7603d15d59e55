#include "imaging/FormatOf.h"

#include "imaging/fits/FitsHeader.h"
#include "imaging/fits/PackedFits.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace tarn {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kLooked = 4096; // bytes

std::uint32_t Number(std::string_view bytes, std::size_t place, int size, bool highFirst) {
    std::uint32_t number = 0;
    for (int i = 0; i < size; ++i) {
        const std::size_t at = place + std::size_t(highFirst ? i : size - 1 - i);
        number = number << 8 | std::uint8_t(at < bytes.size() ? bytes[at] : 0);
    }
    return number;
}

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
    const std::size_t list = Number(bytes, 4, 4, highFirst);
    if (list + 2 > bytes.size()) return false;
    const std::size_t count = Number(bytes, list, 2, highFirst);
    bool reduced = false;
    bool further = false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = list + 2 + i * kEntry;
        if (entry + kEntry > bytes.size()) break;
        const std::uint32_t tag = Number(bytes, entry, 2, highFirst);
        if (tag == kRawVersion) return true;
        if (tag == kMeaning && Number(bytes, entry + 8, 2, highFirst) == kMosaic) return true;
        reduced = reduced || (tag == kKind && Number(bytes, entry + 8, 4, highFirst) == 1);
        further = further || tag == kFurther;
    }
    return reduced && further;
}

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
    const std::size_t end = std::min<std::size_t>(Number(bytes, 0, 4, true), bytes.size());
    for (std::size_t brand = 8; brand + 4 <= end; brand += 4) // the second is its version
        for (const std::string_view known : {"heic"sv, "heix"sv, "heim"sv, "heis"sv, "mif1"sv,
                                             "msf1"sv, "avif"sv, "avis"sv, "hevc"sv})
            if (bytes.substr(brand, 4) == known) return true;
    return false;
}

} // namespace

const PictureFormat& FormatOf(std::FILE* file) {
    std::string bytes(kLooked, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    std::rewind(file);
    const std::string_view start = bytes;
    if (start.starts_with("\xFF\xD8\xFF"sv)) return kJpegFormat;
    if (start.starts_with(kFitsStart) || start.starts_with(kXisfStart) || IsPackedFits(start))
        return kFitsFormat;
    if (IsRaw(start)) return kRawFormat;
    if (IsHeif(start)) return kHeifFormat;
    if (start.starts_with("\xFF\x0A"sv) || start.starts_with("\0\0\0\x0CJXL \r\n\x87\n"sv))
        return kJxlFormat;
    return kToolkitFormat;
}

} // namespace tarn
