// Turns done again on a copy of the picture.
#pragma once

#include "desk/state/DisplayState.h"

namespace tarn {

inline void ReplayTurns(const PreviewTurns& turns, ImgX& picture) {
    if (turns.ImageTurnedHalf) picture.Rotate(180);
    if (turns.ImageRotatedRight) picture.Rotate(90);
    if (turns.ImageRotatedLeft) picture.Rotate(270);
    if (turns.ImageMirrored) picture.Mirror(0);
    if (turns.ImageFliped) picture.Mirror(1);
}

} // namespace tarn
