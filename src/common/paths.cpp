#include "common/paths.h"

#include "common/text.h"

namespace tarn {

std::string JoinPath(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.empty() && path.back() != kSeparator) path += kSeparator;
    path += name;
    return path;
}

std::vector<std::string> PathParts(std::string_view path) {
    return Split(path, kSeparator);
}

std::string LastPart(std::string_view path) {
    const auto at = path.rfind(kSeparator);
    return std::string(at == std::string_view::npos ? path : path.substr(at + 1));
}

std::string FolderOf(std::string_view path) {
    const auto at = path.rfind(kSeparator);
    if (at == std::string_view::npos) return {};
    return std::string(at == 0 ? kRoot : path.substr(0, at));
}

std::string WithoutTrailingSeparator(std::string_view path) {
    while (path.size() > kRoot.size() && path.back() == kSeparator) path.remove_suffix(1);
    return std::string(path);
}

bool IsListedType(std::string_view patterns, std::string_view fileType) {
    return Contains(ToUpper(patterns), RightChars(fileType, Length(fileType) - 1));
}

std::string FileTypeOf(std::string_view path) {
    return ToUpper(RightChars(path, 4));
}

bool IsPackedName(std::string_view fileName) {
    const std::string ending = ToUpper(RightChars(fileName, kPackedEnding));
    return ending == ".FZ" || ending == ".GZ";
}

std::string NoteNameOf(std::string_view fileName) {
    return std::string(LeftChars(fileName, Length(fileName) - 4)) + ".enf";
}

} // namespace tarn
