#include "thumbnails/ThumbNames.h"

#include "common/numbers.h"
#include "common/paths.h"

namespace tarn {

namespace {

std::string Start(int width) {
    return "T" + FormatPadded(width, 3) + "_";
}

} // namespace

std::string ThumbnailName(int width, std::string_view pictureName) {
    return Start(width).append(pictureName);
}

std::string ThumbnailNoteName(int width, std::string_view pictureName) {
    return Start(width).append(pictureName.substr(0, pictureName.find('.'))) + ".enf";
}

bool IsThumbnailName(std::string_view name) {
    if (name.empty() || name.front() != 'T' || FileTypeOf(name) == ".ENF") return false;
    const auto digitsEnd = name.find_first_not_of("0123456789", 1);
    return digitsEnd != std::string_view::npos && digitsEnd > 1 && name[digitsEnd] == '_' &&
           digitsEnd + 1 < name.size();
}

std::string ShownSubFolder(std::string_view subFolder) {
    return std::string("...\\").append(subFolder);
}

} // namespace tarn
