// All frames of a folder judged, each within its series.
#pragma once

#include "sky/stars/FrameMeasures.h"

#include <span>
#include <string>
#include <vector>

namespace tarn {

struct JudgedFrames {
    // Of each frame; kNotMeasured for one that is alone in its series or has no HFR.
    std::vector<double> transparency;
    std::vector<double> scores;
    std::vector<int> groups; // the number of its series, in the order of coming; -1: left out
    // What a frame without stars looks like beside those that have some; mostly empty.
    std::vector<std::string> looks;
};

JudgedFrames JudgeFrames(std::span<const FrameMeasures> frames);

} // namespace tarn
