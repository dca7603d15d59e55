// The menu entries that print thumbnail sheets, with the pictures on a page of each.
#pragma once

#include "desk/controls/MainControls.h"

#include <array>

namespace tarn {

struct SheetEntry {
    QAction* entry;
    int perPage;
};

inline std::array<SheetEntry, 4> SheetEntries(const MainControls& c) {
    return {
        {{c.Printc4Button, 4}, {c.PrintCButton, 12}, {c.PrintCMButton, 24}, {c.PrintCSButton, 40}}};
}

} // namespace tarn
