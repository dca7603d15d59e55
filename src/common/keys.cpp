#include "common/keys.h"

#include <array>

namespace tarn::keys {

namespace {

struct KeyRow {
    int toolkitKey; // numbers of Qt::Key, written out since no toolkit is known here
    int code;
};

constexpr std::array kKeys{
    KeyRow{0x01000000, kEscape},   KeyRow{0x01000001, kTab},
    KeyRow{0x01000003, kBack},     KeyRow{0x01000004, kReturn},
    KeyRow{0x01000005, kReturn},   KeyRow{0x01000006, kInsert},
    KeyRow{0x01000007, kDelete},   KeyRow{0x01000009, kPrintScreen},
    KeyRow{0x01020002, kPrint},    KeyRow{0x01000010, kHome},
    KeyRow{0x01000011, kEnd},      KeyRow{0x01000012, kLeft},
    KeyRow{0x01000013, kUp},       KeyRow{0x01000014, kRight},
    KeyRow{0x01000015, kDown},     KeyRow{0x01000016, kPageUp},
    KeyRow{0x01000017, kPageDown}, KeyRow{0x20, kSpace},
    KeyRow{0x2c, kComma},          KeyRow{0x2e, kPeriod},
    KeyRow{0x2b, kPlus},           KeyRow{0x3d, kPlus}, // one key of many keyboards
    KeyRow{0x2d, kMinus},
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

} // namespace tarn::keys
