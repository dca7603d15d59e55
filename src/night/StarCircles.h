// Circles on the measured stars of the picture that is shown. No widgets.
#pragma once

#include "desk/commands/Commands.h"
#include "sky/night/LateStars.h"

namespace tarn {

// As large as three half-flux radii and green for the frame's sharp ones, red for those half as
// large again.
PictureRings RingsOf(const StarsOfFile& stars);

} // namespace tarn
