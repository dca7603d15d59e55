#include "display/Replay.h"

#include "shell/state/DisplayState.h"

namespace tarn {

void ReplayTurns(const DisplayState& state, ImgX& picture) {
    if (state.ImageTurnedHalf) picture.Rotate(180);
    if (state.ImageRotatedRight) picture.Rotate(90);
    if (state.ImageRotatedLeft) picture.Rotate(270);
    if (state.ImageMirrored) picture.Mirror(0);
    if (state.ImageFliped) picture.Mirror(1);
}

void TurnUpright(int orientation, ImgX& picture) {
    if (orientation == 6) picture.Rotate(90);
    if (orientation == 8) picture.Rotate(270);
    if (orientation == 3) picture.Rotate(180);
}

} // namespace tarn
