#include "common/keys.h"

#include <array>

namespace tarn::keys {

namespace {

struct KeyRow {
    int toolkitKey; // numbers of Qt::Key, written out since no toolkit is known here
    int code;
    const char* name;
};

constexpr std::array kKeys{
    KeyRow{0x01000000, kEscape, "Esc"},
    KeyRow{0x01000001, kTab, "Tab"},
    KeyRow{0x01000003, kBack, "Backspace"},
    KeyRow{0x01000004, kReturn, "Return"},
    KeyRow{0x01000005, kReturn, "Return"},
    KeyRow{0x01000006, kInsert, "Insert"},
    KeyRow{0x01000007, kDelete, "Delete"},
    KeyRow{0x01000009, kPrintScreen, "Print"},
    KeyRow{0x01020002, kPrint, "Print"},
    KeyRow{0x01000010, kHome, "Home"},
    KeyRow{0x01000011, kEnd, "End"},
    KeyRow{0x01000012, kLeft, "Left"},
    KeyRow{0x01000013, kUp, "Up"},
    KeyRow{0x01000014, kRight, "Right"},
    KeyRow{0x01000015, kDown, "Down"},
    KeyRow{0x01000016, kPageUp, "Page Up"},
    KeyRow{0x01000017, kPageDown, "Page Down"},
    KeyRow{0x20, kSpace, "Space"},
    KeyRow{0x2c, kComma, "comma"},
    KeyRow{0x2e, kPeriod, "full stop"},
    KeyRow{0x2b, kPlus, "+"},
    KeyRow{0x3d, kPlus, "+"}, // one key of many keyboards
    KeyRow{0x2d, kMinus, "-"},
};

constexpr int kToolkitF1 = 0x01000030;

} // namespace

int KeyCode(int toolkitKey) {
    if (toolkitKey >= '0' && toolkitKey <= '9') return toolkitKey;
    if (toolkitKey >= 'A' && toolkitKey <= 'Z') return toolkitKey;
    if (toolkitKey >= kToolkitF1 && toolkitKey < kToolkitF1 + 12)
        return kF1 + toolkitKey - kToolkitF1;
    for (const KeyRow& row : kKeys)
        if (row.toolkitKey == toolkitKey) return row.code;
    return kNone;
}

std::string NameOf(int code) {
    if (code & kControl) return "Ctrl+" + NameOf(code & ~kControl);
    if (code & kShift) return "Shift+" + NameOf(code & ~kShift);
    if (code >= kF1 && code < kF1 + 12) return "F" + std::to_string(code - kF1 + 1);
    for (const KeyRow& row : kKeys)
        if (row.code == code) return row.name;
    return std::string(1, static_cast<char>(code));
}

void AddLine(std::vector<KeyLine>& lines, const std::string& key, const std::string& action) {
    for (KeyLine& line : lines)
        if (line.action == action) {
            line.keys += ", " + key;
            return;
        }
    lines.push_back({key, action});
}

} // namespace tarn::keys
