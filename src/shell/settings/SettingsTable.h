// All keys of the settings store in the order in which they are read: key, type, default, and the
// field of the program state that holds the value.
#pragma once

#include "shell/state/ProgramState.h"

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

using FieldRef = std::variant<std::string*, int*, bool*, float*>;

struct SettingRow {
    const char* key;
    SettingType type;
    const char* fallback; // default text, or one of the names below
    FieldRef (*field)(ProgramState&);
};

// Defaults that are worked out when the program starts.
inline constexpr char kFromPaneWidth[] = "@pane width";
inline constexpr char kFromPaneHeight[] = "@pane height";
inline constexpr char kFromMainTop[] = "@main window top";
inline constexpr char kFromMainLeft[] = "@main window left + 300";

const std::vector<SettingRow>& SettingRows();
const SettingRow& SettingOf(const std::string& key); // the key must be in the table

// The default of a row as text, given the state as read so far.
std::string DefaultOf(const SettingRow& row, const ProgramState& state);

// Text into field; false, and the field as it was, when the text is not of the row's type.
bool SetField(const SettingRow& row, ProgramState& state, const std::string& text);
std::string TextOf(const SettingRow& row, ProgramState& state);

} // namespace tarn
