// Marks that no sidecar could take yet go where their pictures go. No widgets.
#pragma once

#include "desk/commands/Commands.h"
#include "fileops/UndoLog.h"

#include <vector>

namespace tarn {

// After a command and before the list is read again. What its undo has to set again.
std::vector<MarkBefore> TakeMarksAlong(MarkCommands& marks, const std::vector<Done>& done);

} // namespace tarn
