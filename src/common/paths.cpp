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

std::string FileTypeOf(std::string_view path) {
    return ToUpper(RightChars(path, 4));
}

namespace {

// Greedy match with one point to go back to: linear for the patterns that people write.
bool MatchesOne(std::string_view name, std::string_view pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;
    std::size_t mark = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            mark = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            // "?" stands for a whole character, whatever bytes it has.
            const bool whole = pattern[p] == '?';
            ++n;
            while (whole && n < name.size() && (name[n] & 0xC0) == 0x80) ++n;
            ++p;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++mark;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

} // namespace

bool MatchesPatterns(std::string_view name, std::string_view patterns) {
    const std::string folded = FoldCase(name);
    for (const std::string& part : Split(patterns, ';')) {
        const std::string pattern = FoldCase(Trim(part));
        if (pattern.empty()) continue;
        if (pattern == "*.*" || MatchesOne(folded, pattern)) return true;
    }
    return false;
}

} // namespace tarn
