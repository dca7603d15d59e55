// What the keys of the panes do, as one table. Key codes are those of common/keys.h.
#pragma once

#include "common/keys.h"
#include "desk/Context.h"

#include <vector>

namespace tarn {

enum class KeyPane {
    Picture = 1,
    Clip = 2,
    Text = 4,   // logs, texts and pages
    Lists = 8,  // of folders and camera data, whose other keys move their rows
    Files = 16, // the list of files, as those
};

// What the key does in this pane now; null when it does nothing there.
using PaneAction = void (*)(Context&);
PaneAction PaneActionOf(KeyPane pane, int keycode, bool pictureLoaded);

// The keys of a pane as they are read, a line for each thing that keys do.
std::vector<keys::KeyLine> PaneKeyLines(KeyPane pane);

} // namespace tarn
