// Key codes by which the program names keys (32 blank, 37 left, 65 A, 188 comma), and the one table
// that leads from the toolkit's key numbers to them.
#pragma once

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
inline constexpr int kPlus = 187;
inline constexpr int kComma = 188;
inline constexpr int kMinus = 189;
inline constexpr int kPeriod = 190;
// Digits and letters stand for themselves: '0' 48 to '9' 57, 'A' 65 to 'Z' 90.

// The key code of a toolkit key number (Qt::Key); kNone for a key that has none here.
int KeyCode(int toolkitKey);

} // namespace tarn::keys
