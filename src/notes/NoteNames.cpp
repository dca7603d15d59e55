#include "notes/NoteNames.h"

#include "common/paths.h"
#include "common/text.h"

namespace tarn {

namespace {

constexpr int kLongest = 64; // characters
constexpr std::size_t kFewestParts = 5;

} // namespace

std::string NotePath(std::string_view folder, std::string_view fileName) {
    const std::string name = NoteNameOf(fileName);
    return folder.empty() ? kSeparator + name : JoinPath(folder, name);
}

std::string DisplayPath(const std::string& path) {
    const auto parts = PathParts(path);
    if (Length(path) <= kLongest || parts.size() < kFewestParts) return path;
    const std::string between(1, kSeparator);
    return parts[0] + between + parts[1] + between + "..." + between + parts[parts.size() - 2] +
           between + parts.back();
}

} // namespace tarn
