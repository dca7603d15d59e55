// What several of a gallery's emitters need.
#pragma once

#include "shell/state/GallerySettings.h"

#include <string>

namespace tarn {

enum ImagePosition { ImageLeft, ImageCenter, ImageAuto };

inline std::string AlignOf(const GallerySettings& settings) {
    return settings.ThumbImagePos == ImageCenter ? "center" : "left";
}

inline std::string NumberText(long long value) {
    return std::to_string(value);
}

} // namespace tarn
