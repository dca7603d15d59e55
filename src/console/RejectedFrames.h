// Frames that the user's marks keep out of what is made of a series.
#pragma once

#include "console/MarkCommands.h"

#include <string>
#include <vector>

namespace tarn {

inline constexpr char kMarkedRejected[] = "marked as rejected";

// Of each path the reason, empty for those that take part.
inline std::vector<std::string> RejectedFrames(const std::vector<std::string>& paths,
                                               const MarkReader& read) {
    std::vector<std::string> reasons;
    for (const FileMark& file : read(paths))
        reasons.emplace_back(file.mark.decision == Decision::Reject ? kMarkedRejected : "");
    reasons.resize(paths.size());
    return reasons;
}

} // namespace tarn
