// Reads and writes the settings: all of them between the store and the program state. The windows
// put their values into the state before.
#pragma once

#include "desk/state/ProgramState.h"

#include <string>

namespace tarn {

class SettingsStore;

// Every key of the table and the folder history, in the table's order. A value that is not of its
// type leaves the field as it was; values past the limits of their menus are put back in range.
void LoadSettings(ProgramState& state, const SettingsStore& store);

// The path shown when the last run ended; `fallback` when there was none.
int LoadTheme(const SettingsStore& store);
std::string LoadStartPath(const SettingsStore& store, const std::string& fallback);

// Everything, in its fixed order, unless the program is left without saving. False when the store
// cannot be written.
bool SaveSettings(ProgramState& state, SettingsStore& store);

} // namespace tarn
