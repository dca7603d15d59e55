#include "night/NightWords.h"

#include <map>

namespace tarn {

std::string CountedFrames(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

std::string SummaryOf(std::span<const NightFrame> frames) {
    if (frames.empty()) return {};
    std::size_t measured = 0;
    std::map<std::string, std::size_t> reasons;
    for (const NightFrame& frame : frames) {
        if (!frame.isMeasured) continue;
        ++measured;
        if (frame.group < 0 && !frame.Remark().empty()) ++reasons[frame.Remark()];
    }
    std::string text =
        std::to_string(measured) + " of " + std::to_string(frames.size()) + " measured";
    const char* between = "; left out: ";
    for (const auto& [reason, count] : reasons) {
        text += between + std::to_string(count) + " " + reason;
        between = ", ";
    }
    return text;
}

std::string TipOf(const NightFrame& frame) {
    std::string text = frame.name;
    for (const NightColumn& column : NightColumns()) {
        const std::string cell = CellText(frame, column);
        if (column.name == "name" || cell.empty()) continue;
        text += "\n" + std::string(column.title) + ": " + cell;
    }
    return text;
}

} // namespace tarn
