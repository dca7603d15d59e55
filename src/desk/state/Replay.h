// Turns done again on a copy of the picture.
#pragma once

#include "desk/state/DisplayState.h"

namespace tarn {

// Those of the preview, by the flags in their fixed order; each counts once, however often the
// preview was turned.
inline void ReplayTurns(const DisplayState& state, ImgX& picture) {
    if (state.ImageTurnedHalf) picture.Rotate(180);
    if (state.ImageRotatedRight) picture.Rotate(90);
    if (state.ImageRotatedLeft) picture.Rotate(270);
    if (state.ImageMirrored) picture.Mirror(0);
    if (state.ImageFliped) picture.Mirror(1);
}

// What the camera's orientation asks for; 1 and unknown ones turn nothing.
inline void TurnUpright(int orientation, ImgX& picture) {
    if (orientation == 6) picture.Rotate(90);
    if (orientation == 8) picture.Rotate(270);
    if (orientation == 3) picture.Rotate(180);
}

} // namespace tarn
