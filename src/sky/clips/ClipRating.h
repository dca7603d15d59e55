// All frames of a clip rated, one after the other. Any thread; where that one is to stop it ends.
#pragma once

#include "sky/frames/RatedClip.h"

#include <functional>
#include <string>

namespace tarn {

// Gets each frame in its turn; false ends the rating.
using RatingWatch = std::function<bool(const RatedFrame& frame)>;

RatedClip RateClip(const std::string& path, const RatingWatch& watch = {});

} // namespace tarn
