// The folder history as the two texts that are stored. No toolkit.
#pragma once

#include "desk/state/SelectionState.h"

#include <string>

namespace tarn {

// Entries 0 to `high`, each followed by "+"; empty when `high` is below 1.
std::string PackFolders(const SelectionState& state);
std::string PackRows(const SelectionState& state);
// Whole pairs of what was packed.
void UnpackHistory(SelectionState& state, const std::string& folders, const std::string& rows);

} // namespace tarn
