#include "imaging/FormatOf.h"

#include "imaging/exif/FileBytes.h"
#include "imaging/exif/FileKind.h"
#include "imaging/fits/FitsHeader.h"
#include "imaging/fits/PackedFits.h"

#include <string_view>

namespace tarn {

using namespace std::string_view_literals;

namespace {

struct Kind {
    std::string_view start;
    const char* name;
};
constexpr Kind kKinds[] = {
    {"\x89PNG\r\n\x1A\n"sv, "png"}, {"GIF87a"sv, "gif"}, {"GIF89a"sv, "gif"}, {"BM"sv, "bmp"},
    {"\xFF\xD8\xFF"sv, "jpeg"},     {"/* XPM "sv, "xpm"}};

// "P1" to "P6" and a blank.
const char* PlainNameOf(std::string_view start) {
    constexpr const char* kNames[] = {"pbm", "pgm", "ppm"};
    constexpr char kBlanks[] = " \t\r\n";
    if (start.size() < 3 || start[0] != 'P' || start[1] < '1' || start[1] > '6') return nullptr;
    if (std::string_view(kBlanks).find(start[2]) == std::string_view::npos) return nullptr;
    // Remarks may stand between the numbers; whoever fills megabytes with them means no picture.
    int numbers = 0;
    for (std::size_t at = 2; at < start.size() && numbers < 2;) {
        at = start.find_first_not_of(kBlanks, at);
        if (at == std::string_view::npos) return nullptr;
        if (start[at] != '#') ++numbers;
        at = start[at] == '#' ? start.find('\n', at) : start.find_first_of(kBlanks, at);
    }
    if (numbers < 2) return nullptr;
    return kNames[(start[1] - '1') % 3];
}

// Of a pointer or an icon, with how many there are: other kinds begin with such numbers, too.
const char* IconNameOf(std::string_view start) {
    if (start.size() < 6 || NumberAt(start, 4, 2, false) == 0) return nullptr;
    if (start.starts_with("\0\0\1\0"sv)) return "ico";
    return start.starts_with("\0\0\2\0"sv) ? "cur" : nullptr;
}

} // namespace

const char* ToolkitNameOf(std::string_view start) {
    for (const Kind& kind : kKinds)
        if (start.starts_with(kind.start)) return kind.name;
    if (IsWebP(start)) return "webp";
    if (IsTiff(start)) return "tiff";
    const char* icon = IconNameOf(start);
    return icon ? icon : PlainNameOf(start);
}

const PictureFormat& FormatOf(std::FILE* file) {
    std::string bytes(kKindBytes, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    std::rewind(file);
    const std::string_view start = bytes;
    if (start.starts_with("\xFF\xD8\xFF"sv)) return kJpegFormat;
    if (start.starts_with(kFitsStart) || start.starts_with(kXisfStart) || IsPackedFits(start))
        return kFitsFormat;
    if (IsRaw(start)) return kRawFormat;
    if (IsHeif(start)) return kHeifFormat;
    if (IsJxl(start)) return kJxlFormat;
    if (IsTiff(start)) return kTiffFormat;
    return kToolkitFormat;
}

} // namespace tarn
