// One character of a UTF-8 text at a time, for the other files of this folder.
#pragma once

#include <string>
#include <string_view>

namespace tarn {

struct Utf8Char {
    char32_t code = 0; // the byte itself when it is no valid UTF-8
    int length = 1;    // in bytes, 1 to 4
    bool valid = true;
};

// The character that begins at `pos`, which must lie inside the text.
Utf8Char DecodeUtf8(std::string_view text, std::size_t pos);

bool IsUtf8(std::string_view text);

// `code` must be a valid code point.
void AppendUtf8(std::string& text, char32_t code);

} // namespace tarn
