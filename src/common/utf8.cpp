#include "common/utf8.h"

namespace tarn {

namespace {

// Number of bytes that a first byte announces, 0 when none begins with it.
int AnnouncedLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 0;
}

bool IsShortest(char32_t code, int length) {
    if (length == 3) return code >= 0x800 && (code < 0xD800 || code > 0xDFFF);
    if (length == 4) return code >= 0x10000 && code <= 0x10FFFF;
    return true;
}

} // namespace

Utf8Char DecodeUtf8(std::string_view text, std::size_t pos) {
    const auto first = static_cast<unsigned char>(text[pos]);
    const Utf8Char single{first, 1, false};
    const int length = AnnouncedLength(first);
    if (length == 1) return {first, 1, true};
    if (length == 0 || pos + static_cast<std::size_t>(length) > text.size()) return single;
    char32_t code = first & (0xFFU >> (length + 1));
    for (int i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[pos + static_cast<std::size_t>(i)]);
        if ((next & 0xC0U) != 0x80) return single;
        code = (code << 6U) | (next & 0x3FU);
    }
    if (!IsShortest(code, length)) return single;
    return {code, length, true};
}

bool IsUtf8(std::string_view text) {
    for (std::size_t pos = 0; pos < text.size();) {
        const Utf8Char next = DecodeUtf8(text, pos);
        if (!next.valid) return false;
        pos += static_cast<std::size_t>(next.length);
    }
    return true;
}

void AppendUtf8(std::string& text, char32_t code) {
    const auto tail = [&](unsigned shift) {
        text += static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
    };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0U | (code >> 6U));
        tail(0);
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0U | (code >> 12U));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | (code >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

} // namespace tarn
