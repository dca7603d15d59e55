// The frames of a night as its window shows them: a row each, the columns, their order. No toolkit.
#pragma once

#include "common/mark.h"
#include "sky/judging/FrameNumbers.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

struct NightFrame : JudgedFrame {
    std::string name;
    int order = 0; // in the list
    Mark mark;

    // Why it has no measures, or not all; empty when it has.
    std::string Remark() const;
};

// Filter and exposure as the series has them.
void TakeSeries(NightFrame& frame);

struct NightColumn {
    std::string_view name;  // in settings: "hfr"
    std::string_view title; // "HFR"
    std::string_view tip;
    bool isShown; // as designed
    // Of a number; null for a text.
    double (*value)(const NightFrame& frame);
    int digits;
    Better better;
    std::string (*text)(const NightFrame& frame); // of a text
};

std::span<const NightColumn> NightColumns();
std::size_t NightColumnNamed(std::string_view name); // the first where there is none

// Those that a graph can show.
std::vector<std::size_t> NightGraphColumns();

// What stands in the cell; empty where nothing is known.
std::string CellText(const NightFrame& frame, const NightColumn& column);

// The frames' indices in the order of a column; what has no value comes last either way. Equal ones
// stay in the order of the list.
std::vector<std::size_t> SortedBy(std::span<const NightFrame> frames, const NightColumn& column,
                                  bool descending);

} // namespace tarn
