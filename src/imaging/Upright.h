// Pictures turned upright by what the camera says of how it was held.
#pragma once

#include "imaging/ImgX.h"

namespace tarn {

// What the camera's orientation asks for; 1 and unknown ones turn nothing.
inline void TurnUpright(int orientation, ImgX& picture) {
    if (orientation == 6) picture.Rotate(90);
    if (orientation == 8) picture.Rotate(270);
    if (orientation == 3) picture.Rotate(180);
}

// Whether the sides of such a picture are exchanged where it is upright, as on pages.
inline bool LiesOnItsSide(int orientation) {
    return orientation >= 5 && orientation <= 8;
}

} // namespace tarn
