#include "night/NightFrames.h"

#include "common/graph_scale.h"
#include "common/mark_text.h"
#include "common/numbers.h"
#include "common/text.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tarn {

namespace {

// Kept ones first, then by stars, rejected ones last.
double MarkRank(const NightFrame& frame) {
    const int decision = frame.mark.decision == Decision::Keep     ? 0
                         : frame.mark.decision == Decision::Reject ? 2
                                                                   : 1;
    return decision * 10.0 - frame.mark.stars;
}

template <std::size_t number> constexpr NightColumn Column(bool isShown) {
    constexpr const FrameNumber& row = kFrameNumbers[number];
    return {row.name,
            row.title,
            row.tip,
            isShown,
            [](const NightFrame& frame) { return kFrameNumbers[number].value(frame); },
            row.digits,
            row.better,
            nullptr};
}

// clang-format off
constexpr NightColumn kColumns[] = {
    {"name", "Name", "Name of the file", true, nullptr, 0, Better::Neither,
     [](const NightFrame& f) { return f.name; }},
    {"time", "Time", "When it was taken, by the camera's clock", true,
     [](const NightFrame& f) { return f.taken ? double(*f.taken) : kNotMeasured; }, 0, Better::Neither,
     [](const NightFrame& f) { return f.taken ? ClockText(*f.taken).substr(5) : std::string(); }},
    {"filter", "Filter", "Filter, as the header has it", true, nullptr, 0, Better::Neither,
     [](const NightFrame& f) { return f.filter; }},
    {"exposure", "Exposure", "Exposure in seconds", true,
     [](const NightFrame& f) { return ParseNumber(f.exposure).value_or(kNotMeasured); }, 0, Better::Neither,
     [](const NightFrame& f) { return f.exposure.empty() ? std::string() : f.exposure + " s"; }},
    Column<FrameNumberNamed("stars")>(true),
    Column<FrameNumberNamed("hfr")>(true),
    Column<FrameNumberNamed("fwhm")>(true),
    Column<FrameNumberNamed("eccentricity")>(true),
    Column<FrameNumberNamed("background")>(true),
    Column<FrameNumberNamed("noise")>(false),
    Column<FrameNumberNamed("saturated")>(false),
    Column<FrameNumberNamed("transparency")>(true),
    Column<FrameNumberNamed("sharpness")>(false),
    Column<FrameNumberNamed("score")>(true),
    {"mark", "Mark", "Kept, rejected, stars", true, MarkRank, 0, Better::Neither,
     [](const NightFrame& f) { return MarkText(f.mark); }},
    {"remark", "Remark", "Why it was not measured, or left out", true, nullptr, 0, Better::Neither,
     [](const NightFrame& f) { return f.Remark(); }},
};
// clang-format on

} // namespace

std::string NightFrame::Remark() const {
    if (!isMeasured) return {};
    return look.empty() ? measures.fault : measures.fault + ", " + look;
}

void TakeSeries(NightFrame& frame) {
    const std::vector<std::string> parts = Split(frame.measures.series, '\n');
    frame.filter = parts[0];
    if (parts.size() > 1) {
        const auto seconds = ParseNumber(parts[1]);
        frame.exposure = seconds ? ShortestSingle(float(*seconds)) : parts[1];
    }
}

std::span<const NightColumn> NightColumns() {
    return kColumns;
}

std::size_t NightColumnNamed(std::string_view name) {
    for (std::size_t i = 0; i < std::size(kColumns); ++i)
        if (kColumns[i].name == name) return i;
    return 0;
}

std::vector<std::size_t> NightGraphColumns() {
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < std::size(kColumns); ++i)
        if (kColumns[i].better != Better::Neither) columns.push_back(i);
    return columns;
}

std::string CellText(const NightFrame& frame, const NightColumn& column) {
    if (column.text) return column.text(frame);
    const double value = column.value(frame);
    return std::isfinite(value) ? FormatFixed(value, column.digits) : std::string();
}

std::vector<std::size_t> SortedBy(std::span<const NightFrame> frames, const NightColumn& column,
                                  bool descending) {
    std::vector<std::size_t> order(frames.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    const auto sort = [&](const auto& hasValue, const auto& isLess) {
        std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
            const bool known = hasValue(one);
            if (known != hasValue(other)) return known;
            return known && (descending ? isLess(other, one) : isLess(one, other));
        });
    };
    if (column.value) {
        std::vector<double> values;
        for (const NightFrame& frame : frames) values.push_back(column.value(frame));
        sort([&](std::size_t i) { return std::isfinite(values[i]); },
             [&](std::size_t one, std::size_t other) { return values[one] < values[other]; });
        return order;
    }
    std::vector<std::string> texts;
    for (const NightFrame& frame : frames) texts.push_back(FoldCase(column.text(frame)));
    sort([&](std::size_t i) { return !texts[i].empty(); },
         [&](std::size_t one, std::size_t other) { return texts[one] < texts[other]; });
    return order;
}

} // namespace tarn
