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

// The same as a value, and behind it what the camera's orientation asks for (1 for nothing).
inline Turn TurnOf(const PreviewTurns& turns, int orientation) {
    Turn turn;
    if (turns.ImageTurnedHalf) turn.Rotate(2);
    if (turns.ImageRotatedRight) turn.Rotate(1);
    if (turns.ImageRotatedLeft) turn.Rotate(3);
    if (turns.ImageMirrored) turn.Mirror(0);
    if (turns.ImageFliped) turn.Mirror(1);
    if (orientation == 6) turn.Rotate(1);
    if (orientation == 8) turn.Rotate(3);
    if (orientation == 3) turn.Rotate(2);
    return turn;
}

} // namespace tarn
