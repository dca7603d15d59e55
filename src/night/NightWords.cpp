#include "night/NightWords.h"

#include <map>

namespace tarn {

std::string CountedFrames(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

std::string SummaryOf(std::span<const NightFrame> frames) {
    if (frames.empty()) return {};
    std::size_t measured = 0;
    std::map<std::string, std::size_t> unread;
    std::map<std::string, std::size_t> leftOut;
    for (const NightFrame& frame : frames) {
        if (!frame.isMeasured) continue;
        const bool isRead = frame.measures.width > 0;
        measured += isRead ? 1 : 0;
        if (frame.group < 0 && !frame.Remark().empty())
            ++(isRead ? leftOut : unread)[frame.Remark()];
    }
    std::string text =
        std::to_string(measured) + " of " + std::to_string(frames.size()) + " measured";
    const auto add = [&](const char* what, const std::map<std::string, std::size_t>& reasons) {
        const char* between = what;
        for (const auto& [reason, count] : reasons) {
            text += between + std::to_string(count) + " \u00D7 " + reason;
            between = ", ";
        }
    };
    add("; not judged: ", leftOut);
    add("; could not be measured: ", unread);
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
