#include "common/codepage.h"

#include "common/utf8.h"

#include <algorithm>
#include <array>

namespace tarn {

namespace {

// The characters of bytes 0x80 to 0x9F; every other byte is the character of its own number.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::optional<char> ByteOf(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(code);
    const auto* const found = std::find(kUpperControls.begin(), kUpperControls.end(), code);
    if (found == kUpperControls.end()) return std::nullopt;
    return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

bool IsAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

} // namespace

std::string FromCodePage(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    const auto* const firstHigh = std::find_if_not(bytes.begin(), bytes.end(), IsAscii);
    text.append(bytes.begin(), firstHigh);
    for (const char* next = firstHigh; next != bytes.end(); ++next) {
        const auto byte = static_cast<unsigned char>(*next);
        const bool control = byte >= 0x80 && byte < 0xA0;
        AppendUtf8(text, control ? kUpperControls[byte - 0x80U] : byte);
    }
    return text;
}

std::optional<std::string> ToCodePage(std::string_view text, std::string* misfit) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const Utf8Char next = DecodeUtf8(text, pos);
        const auto length = static_cast<std::size_t>(next.length);
        const std::optional<char> byte = next.valid ? ByteOf(next.code) : std::nullopt;
        if (!byte) {
            if (misfit != nullptr) *misfit = text.substr(pos, length);
            return std::nullopt;
        }
        bytes += *byte;
        pos += length;
    }
    return bytes;
}

} // namespace tarn
