// The turns of the preview, done again on a copy of the picture.
#pragma once

namespace tarn {

class ImgX;
struct DisplayState;

// By the flags, in their fixed order; each counts once, however often the preview was turned.
void ReplayTurns(const DisplayState& state, ImgX& picture);

// What the camera's orientation asks for, before the preview itself is turned by it.
void TurnUpright(int orientation, ImgX& picture);

} // namespace tarn
