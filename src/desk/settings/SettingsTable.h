// All keys of the settings store in the order in which they are written: key, type, and the field
// of the program state that holds the value. A setting's default is what its field begins with.
#pragma once

#include "desk/state/ProgramState.h"

#include <string>
#include <variant>
#include <vector>

namespace tarn {

enum class SettingType {
    String,
    Integer, // signed 16 bit
    Long,    // signed 32 bit
    Single,
    Boolean, // "True" or "False"
    Check,   // "0" or "1"
};

enum class Keeping {
    Always,      // at the end of the program, and when the user saves
    WhileNormal, // the same, unless the main window is minimised or maximised
    ByItsWindow, // by the window that it belongs to
};

using FieldRef = std::variant<std::string*, int*, bool*, float*>;

struct SettingRow {
    const char* key;
    SettingType type;
    FieldRef (*field)(ProgramState&);
    Keeping keeping = Keeping::Always;
    // The default where it depends on what was read before it; null: the field's own.
    std::string (*atStart)(const ProgramState&) = nullptr;
};

const std::vector<SettingRow>& SettingRows();
const SettingRow& SettingOf(const std::string& key); // the key must be in the table

// The default of a row as text, given the state as read so far.
std::string DefaultOf(const SettingRow& row, const ProgramState& state);

// Text into field; false, and the field as it was, when the text is not of the row's type.
bool SetField(const SettingRow& row, ProgramState& state, const std::string& text);
std::string TextOf(const SettingRow& row, ProgramState& state);

} // namespace tarn
