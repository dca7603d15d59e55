// Marks that no sidecar could take yet go where their pictures go. No widgets.
#pragma once

#include "desk/commands/Commands.h"
#include "history/Changes.h"

namespace tarn {

// A mark that could not be written yet, where a command has taken its picture.
struct MarkMove {
    std::string path;
    Mark before;                    // what is seen of the file of this path
    std::optional<MarkChange> kept; // what is to be kept for it from now on; none: nothing
};
std::vector<MarkMove> MarkMoves(MarkCommands& marks, const std::vector<Step>& done);

// After a command's changes and before the list is read again; a part of the command itself.
void TakeMarksAlong(MarkCommands& marks, Changes& changes);

} // namespace tarn
