// How a file is to be shown when it becomes the current one.
#pragma once

#include "common/file_look.h"
#include "desk/state/DisplayState.h"

#include <optional>

namespace tarn {

struct PictureRequest {
    bool focus = true;      // the keyboard goes to the pane
    bool neighbours = true; // pictures that will probably come next are decoded ahead
    bool records = true;    // it is a view, to which the way back leads
    bool awaits = false;    // the window goes on while a slow picture is read
    std::optional<PreviewTurns> turns = {}; // the picture comes back as it was turned before
    std::optional<FileLook> look = {};      // at its file, where that was just taken
};

// By a step of the user's, which asks nothing of the picture.
inline PictureRequest Stepping() {
    return {.awaits = true};
}

// The same by a window that keeps the keyboard.
inline PictureRequest KeepingKeyboard() {
    return {.focus = false, .awaits = true};
}

// In a show or a batch, which decodes ahead for itself.
inline PictureRequest InPassing() {
    return {.focus = false, .neighbours = false, .records = false};
}

} // namespace tarn
