#include "shell/logs/LogFile.h"

#include "common/codepage.h"
#include "common/patterns.h"
#include "common/text.h"
#include "common/utf8.h"

#include <algorithm>

namespace tarn {

namespace {

bool IsUtf8(std::string_view text) {
    for (std::size_t pos = 0; pos < text.size();) {
        const Utf8Char next = DecodeUtf8(text, pos);
        if (!next.valid) return false;
        pos += static_cast<std::size_t>(next.length);
    }
    return true;
}

// Programs write their logs in the one or the other.
std::string Decoded(std::string_view bytes) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (StartsWith(bytes, kMark)) bytes.remove_prefix(kMark.size());
    return IsUtf8(bytes) ? std::string(bytes) : FromCodePage(bytes);
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

bool LogFile::Read(const std::string& path) {
    if (path != m_path) m_most = kFirstPart;
    m_path = path;
    return ReadPart();
}

bool LogFile::ReadMore() {
    m_most *= 2;
    return ReadPart();
}

bool LogFile::ReadPart() {
    m_text.clear();
    m_error.clear();
    m_hasMore = false;
    auto bytes = m_files.Read(m_path, m_most + 1, &m_error);
    if (!bytes) return false;
    m_hasMore = bytes->size() > m_most;
    if (m_hasMore) {
        const auto lineEnd = bytes->rfind('\n', m_most - 1);
        bytes->resize(lineEnd == std::string::npos ? m_most : lineEnd + 1);
    }
    m_text = Decoded(*bytes);
    return true;
}

} // namespace tarn
