// The frames that a command line names, measured.
#pragma once

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

// Files and the pictures of folders, which come by name; a folder that cannot be read has a row
// with the reason. A file that folders are looked through without may be named.
MeasuredFrames MeasureOperands(const std::vector<std::string>& operands,
                               const FrameMeasurer& measure, const std::string& without = {});

} // namespace tarn
