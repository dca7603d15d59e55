// Key codes by which the program names keys (32 blank, 37 left, 65 A, 188 comma), and the one table
// that leads from the toolkit's key numbers to them.
#pragma once

#include <string>
#include <vector>

namespace tarn::keys {

inline constexpr int kNone = 0;
inline constexpr int kBack = 8;
inline constexpr int kTab = 9;
inline constexpr int kReturn = 13;
inline constexpr int kEscape = 27;
inline constexpr int kSpace = 32;
inline constexpr int kPageUp = 33;
inline constexpr int kPageDown = 34;
inline constexpr int kEnd = 35;
inline constexpr int kHome = 36;
inline constexpr int kLeft = 37;
inline constexpr int kUp = 38;
inline constexpr int kRight = 39;
inline constexpr int kDown = 40;
inline constexpr int kPrint = 42;
inline constexpr int kPrintScreen = 44;
inline constexpr int kInsert = 45;
inline constexpr int kDelete = 46;
inline constexpr int kF1 = 112;
inline constexpr int kF2 = 113;
inline constexpr int kF3 = 114;
inline constexpr int kF4 = 115;
inline constexpr int kF5 = 116;
inline constexpr int kF6 = 117;
inline constexpr int kF7 = 118;
inline constexpr int kF10 = 121;
inline constexpr int kF11 = 122;
inline constexpr int kPlus = 187;
inline constexpr int kComma = 188;
inline constexpr int kMinus = 189;
inline constexpr int kPeriod = 190;
inline constexpr int kShift = 0x200; // with a key's code: held down beside it
inline constexpr int kControl = 0x400;
// Digits and letters stand for themselves: '0' 48 to '9' 57, 'A' 65 to 'Z' 90.

// The key code of a toolkit key number (Qt::Key); kNone for a key that has none here.
int KeyCode(int toolkitKey);

// As keyboards have it: "N", "Page Down", "F5".
std::string NameOf(int code);

// Keys that do one thing, and what that is, for the page of all keys.
struct KeyLine {
    std::string keys; // "N, Space, Down"
    std::string action;
    bool operator==(const KeyLine&) const = default;
};

// One more key of a table; rows that do the same become one line.
void AddLine(std::vector<KeyLine>& lines, const std::string& key, const std::string& action);

} // namespace tarn::keys
