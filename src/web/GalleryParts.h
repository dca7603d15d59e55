// What several of a gallery's emitters need.
#pragma once

#include "desk/state/GallerySettings.h"

#include <string>

namespace tarn {

enum ImagePosition { ImageLeft, ImageCenter, ImageAuto };

inline std::string AlignOf(const GallerySettings& settings) {
    return settings.ThumbImagePos == ImageCenter ? "center" : "left";
}

} // namespace tarn
