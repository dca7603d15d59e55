// The commands that need the date in a picture's camera data.
#pragma once

#include "desk/controls/MainControls.h"

namespace tarn {

inline void EnableDateEntries(const MainControls& c, bool enabled) {
    for (QAction* entry : {c.FixPictureDateButton, c.SetFileDatesButton, c.PopupSetFileDatesButton})
        SetEnabled(entry, enabled);
}

} // namespace tarn
