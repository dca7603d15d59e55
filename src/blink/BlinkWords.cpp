#include "blink/BlinkWords.h"

#include "common/graph_scale.h"
#include "common/numbers.h"

#include <cmath>
#include <map>

namespace tarn {

std::string FramesText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

std::string CornerText(const BlinkFrame& frame) {
    constexpr std::size_t kDate = 11; // signs ahead of the time of day
    std::string text = frame.name;
    if (frame.taken) text += "   " + ClockText(*frame.taken).substr(kDate);
    if (std::isfinite(frame.hfr)) text += "   HFR " + FormatFixed(frame.hfr, 2);
    return text;
}

std::string LeftOutText(const std::vector<std::string>& reasons) {
    if (reasons.empty()) return {};
    std::map<std::string, std::size_t> counts;
    for (const std::string& reason : reasons) ++counts[reason];
    std::string text = std::to_string(reasons.size()) + " left out: ";
    const char* between = "";
    for (const auto& [reason, count] : counts) {
        text += between + std::to_string(count) + " \u00D7 " + reason;
        between = ", ";
    }
    return text;
}

} // namespace tarn
