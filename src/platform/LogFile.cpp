#include "platform/LogFile.h"

#include "common/codepage.h"
#include "common/patterns.h"
#include "common/text.h"
#include "common/utf8.h"

#include <algorithm>

namespace tarn {

namespace {

// A line without end would hold the window up.
std::string Broken(std::string text) {
    std::size_t line = 0; // where it begins
    while (text.size() - line > kLongestLine) {
        const std::size_t end = text.find('\n', line);
        if (end != std::string::npos && end - line <= kLongestLine) {
            line = end + 1;
            continue;
        }
        std::size_t cut = line + kLongestLine;
        while ((static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut; // inside a character
        text.insert(cut, 1, '\n');
        line = cut + 1;
    }
    return text;
}

// Programs write their logs in the one or the other.
std::string Decoded(std::string_view bytes) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (StartsWith(bytes, kMark)) bytes.remove_prefix(kMark.size());
    return Broken(IsUtf8(bytes) ? std::string(bytes) : FromCodePage(bytes));
}

} // namespace

std::vector<std::string> LogNames(const Files& files, const std::string& folder) {
    auto names = files.FileNames(folder).value_or(std::vector<std::string>());
    const NamePatterns patterns("*.log;*.txt");
    std::erase_if(names, [&](const std::string& name) { return !patterns.Matches(name); });
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return std::pair(FoldCase(a), a) < std::pair(FoldCase(b), b);
    });
    return names;
}

bool LogFile::ReadFirst(const std::string& path) {
    m_path.clear();
    return Read(path);
}

bool LogFile::Read(const std::string& path) {
    const std::size_t before = path == m_path ? m_read : 0;
    m_path = path;
    m_read = 0;
    return ReadPart(0, std::max(before, m_partBytes));
}

bool LogFile::ReadMore() {
    return ReadPart(m_read, m_partBytes);
}

bool LogFile::ReadPart(std::size_t from, std::size_t most) {
    m_text.clear();
    m_error.clear();
    m_hasMore = false;
    auto bytes = m_files.Read(m_path, most + 1, &m_error, from);
    if (!bytes) return false;
    m_hasMore = bytes->size() > most;
    bool endless = false; // a line longer than a part
    if (m_hasMore) {
        const auto lineEnd = bytes->rfind('\n', most - 1);
        endless = lineEnd == std::string::npos || lineEnd < most / 2;
        std::size_t end = endless ? most : lineEnd + 1;
        // Not within a character of a line that is longer than a part.
        for (int i = 0; i < 3 && (static_cast<unsigned char>((*bytes)[end]) & 0xC0) == 0x80; ++i)
            --end;
        bytes->resize(end);
    }
    m_read = from + bytes->size();
    m_text = Decoded(*bytes);
    if (endless) m_text += '\n';
    return true;
}

} // namespace tarn
