// The menu entries that print thumbnail sheets, with the pictures on a page of each.
#pragma once

#include "common/pages.h"
#include "desk/controls/MainControls.h"

#include <QAction>
#include <QVariant>

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

// In their captions, of so many pictures.
inline void ShowPageCounts(const MainControls& c, int pictures) {
    for (const SheetEntry& sheet : SheetEntries(c))
        sheet.entry->setText(
            sheet.entry->property("baseCaption").toString() +
            QStringLiteral("  (%1 pages)").arg(PageCount(pictures, sheet.perPage)));
}

} // namespace tarn
