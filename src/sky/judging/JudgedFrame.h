// One frame of a folder: what was measured of it, and how it stands in its series.
#pragma once

#include "sky/stars/FrameMeasures.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarn {

struct JudgedFrame {
    std::string path;
    bool isMeasured = false;
    std::optional<std::int64_t> taken; // seconds since 1970 by the camera's clock
    std::string filter;
    std::string exposure; // seconds, as written
    FrameMeasures measures;
    double transparency = kNotMeasured;
    double score = kNotMeasured;
    int group = -1;   // its series; -1: left out
    std::string look; // what it seems to be where it has no stars
};

} // namespace tarn
