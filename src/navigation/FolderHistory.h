// The folders entered, each with the row last shown in it. No widgets.
#pragma once

#include "desk/state/SelectionState.h"

#include <string>

namespace tarn {

// A folder was entered: it is put in behind the present entry, and entries ahead of it are kept.
// False when the history is full: the cursor moves on, nothing is stored.
bool RecordFolder(SelectionState& state, const std::string& path);

bool HasFolderBefore(const SelectionState& state);
// Where Back leads, when there is a folder before. Past the limit the cursor has run ahead of the
// entries.
int FolderBefore(const SelectionState& state);
bool HasFolderAfter(const SelectionState& state);

} // namespace tarn
