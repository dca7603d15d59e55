// Marks and sorting: how the commands on them behave. The marks themselves are asked of the room.
#pragma once

#include <string>

namespace tarn {

struct MarkState {
    bool MarkAdvance = true;   // the next file is shown after a mark
    bool SheetsOfKept = false; // printed sheets leave the others out; for this run
    std::string SortOfFolders; // how their lists are sorted, packed; see navigation/ListOrders.h
};

} // namespace tarn
