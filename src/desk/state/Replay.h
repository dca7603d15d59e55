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

// What the camera's orientation asks for; 1 and unknown ones turn nothing.
inline void TurnUpright(int orientation, ImgX& picture) {
    if (orientation == 6) picture.Rotate(90);
    if (orientation == 8) picture.Rotate(270);
    if (orientation == 3) picture.Rotate(180);
}

} // namespace tarn
