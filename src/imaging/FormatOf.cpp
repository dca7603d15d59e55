#include "imaging/FormatOf.h"

#include "imaging/exif/FileKind.h"
#include "imaging/fits/FitsHeader.h"
#include "imaging/fits/PackedFits.h"

#include <string_view>

namespace tarn {

using namespace std::string_view_literals;

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
