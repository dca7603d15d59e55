#include "common/patterns.h"

#include "common/text.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

bool IsContinuation(char byte) {
    return (byte & 0xC0) == 0x80;
}

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
        } else if (p < pattern.size() && pattern[p] == '?') {
            for (++n; n < name.size() && IsContinuation(name[n]);) ++n;
            ++p;
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++n;
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

NamePatterns::NamePatterns(std::string_view patterns) {
    for (const std::string& part : Split(patterns, ';')) {
        const std::string pattern = FoldCase(Trim(part));
        if (!pattern.empty()) m_folded.push_back(pattern == "*.*" ? "*" : pattern);
    }
}

bool NamePatterns::Matches(std::string_view name) const {
    if (m_folded.empty()) return true;
    const std::string folded = FoldCase(name);
    for (const std::string& pattern : m_folded)
        if (MatchesOne(folded, pattern)) return true;
    return false;
}

std::vector<std::string> InListOrder(std::vector<std::string> names) {
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) keyed.emplace_back(FoldCase(name), std::move(name));
    std::sort(keyed.begin(), keyed.end());
    names.clear();
    for (auto& entry : keyed) names.push_back(std::move(entry.second));
    return names;
}

void InsertInListOrder(std::vector<std::string>& names, const std::string& name) {
    const std::pair<std::string, std::string> key(FoldCase(name), name);
    const auto place =
        std::partition_point(names.begin(), names.end(), [&](const std::string& each) {
            return std::pair(FoldCase(each), each) < key;
        });
    names.insert(place, name);
}

} // namespace tarn
