// Plain text helpers. All text inside the program is UTF-8 in std::string; a "character" here is a
// Unicode code point, and a byte that is no valid UTF-8 counts as one character of its own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// Between the lines of notes and behind those of pages.
inline constexpr std::string_view kLineEnd = "\r\n";

// These parts as one text; what memory the old one had stays in use.
template <typename... Parts> void Join(std::string& text, const Parts&... parts) {
    text.clear();
    (text.append(std::string_view(parts)), ...);
}

// Text, blanks, cut to n characters: how fixed columns are made in a fixed-pitch list.
std::string pad(std::string_view text, int n);
void PadTo(std::string& text, int n); // the text itself

// Number of characters.
int Length(std::string_view text);

// The first or last n characters; the whole text when it is shorter.
std::string_view LeftChars(std::string_view text, int n);
std::string_view RightChars(std::string_view text, int n);

// Up to n characters from the character with number `start`, counted from 1.
std::string_view MidChars(std::string_view text, int start, int n);

// Blanks (0x20 only) removed at both ends.
std::string_view Trim(std::string_view text);

// Parts between separators; an empty text gives one empty part.
std::vector<std::string> Split(std::string_view text, char separator);

// As the note box gives the same text back: every line end is CR LF.
std::string WithBoxLineEnds(std::string_view text);

// Upper case, and the form in which names are compared when case does not count (simple Unicode
// case mapping for Latin, Greek and Cyrillic; anything else stays as it is).
std::string ToUpper(std::string_view text);
std::string FoldCase(std::string_view text);

bool StartsWith(std::string_view text, std::string_view start);
bool EndsWith(std::string_view text, std::string_view end);
bool Contains(std::string_view text, std::string_view part);

} // namespace tarn
