// The frames that a command line names, measured.
#pragma once

#include "console/NamedFrames.h"
#include "sky/stars/FrameMeasures.h"

#include <functional>
#include <string>
#include <vector>

namespace tarn {

// A row for each path, in their order.
using FrameMeasurer =
    std::function<std::vector<FrameMeasures>(const std::vector<std::string>& paths)>;

struct MeasuredFrames {
    std::vector<std::string> paths;
    std::vector<FrameMeasures> measures; // of each
};

// What is no file keeps its fault.
MeasuredFrames Measure(const std::vector<NamedFrame>& named, const FrameMeasurer& measure);

inline MeasuredFrames MeasureOperands(const std::vector<std::string>& operands,
                                      const FrameMeasurer& measure) {
    return Measure(FramesOf(operands), measure);
}

} // namespace tarn
