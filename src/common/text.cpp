#include "common/text.h"

#include "common/letter_case.h"
#include "common/utf8.h"

#include <algorithm>

namespace tarn {

namespace {

bool IsAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

// Byte position behind the first n characters, or the end of the text.
std::size_t PositionAfter(std::string_view text, int n) {
    std::size_t pos = 0;
    for (; n > 0 && pos < text.size(); --n)
        pos += IsAscii(text[pos]) ? 1 : static_cast<std::size_t>(DecodeUtf8(text, pos).length);
    return pos;
}

// Most names are plain letters: those go the short way.
template <typename Mapping> std::string MapLetters(std::string_view text, Mapping mapping) {
    std::string mapped;
    mapped.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        if (const char byte = text[pos]; IsAscii(byte)) {
            mapped += static_cast<char>(byte >= 'a' && byte <= 'z' ? byte - 'a' + 'A' : byte);
            ++pos;
            continue;
        }
        const Utf8Char next = DecodeUtf8(text, pos);
        if (next.valid) {
            AppendUtf8(mapped, mapping(next.code));
        } else {
            mapped += text[pos];
        }
        pos += static_cast<std::size_t>(next.length);
    }
    return mapped;
}

} // namespace

std::string pad(std::string_view text, int n) {
    std::string column(text);
    PadTo(column, n);
    return column;
}

void PadTo(std::string& text, int n) {
    text.resize(LeftChars(text, n).size());
    text.append(static_cast<std::size_t>(std::max(0, n - Length(text))), ' ');
}

int Length(std::string_view text) {
    int count = 0;
    for (std::size_t pos = 0; pos < text.size(); ++count)
        pos += IsAscii(text[pos]) ? 1 : static_cast<std::size_t>(DecodeUtf8(text, pos).length);
    return count;
}

std::string_view LeftChars(std::string_view text, int n) {
    return text.substr(0, PositionAfter(text, n));
}

std::string_view RightChars(std::string_view text, int n) {
    return text.substr(PositionAfter(text, Length(text) - std::max(n, 0)));
}

std::string_view MidChars(std::string_view text, int start, int n) {
    return LeftChars(text.substr(PositionAfter(text, start - 1)), n);
}

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (true) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

std::string ToUpper(std::string_view text) {
    return MapLetters(text, CapitalOf);
}

std::string FoldCase(std::string_view text) {
    constexpr char32_t kDotlessI = 0x131; // its capital is a plain I, but it is not an i
    return MapLetters(text, [](char32_t c) { return c == kDotlessI ? c : CapitalOf(c); });
}

bool StartsWith(std::string_view text, std::string_view start) {
    return text.starts_with(start);
}

bool EndsWith(std::string_view text, std::string_view end) {
    return text.ends_with(end);
}

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

std::string WithBoxLineEnds(std::string_view text) {
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i).starts_with(kLineEnd)) continue; // its second character ends the line
        if (text[i] == '\r' || text[i] == '\n')
            shown += kLineEnd;
        else
            shown += text[i];
    }
    return shown;
}

} // namespace tarn
