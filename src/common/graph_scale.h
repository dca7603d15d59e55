// Scales of graphs: which part of the values is shown, where the ticks stand and how they are
// labelled. For windows and for reports.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarn {

struct GraphRange {
    double low = 0;
    double high = 1;
    bool operator==(const GraphRange&) const = default;

    // 0 at the low end, 1 at the high one; beyond them what lies outside.
    double PartOf(double value) const { return (value - low) / (high - low); }
    double ValueAt(double part) const { return low + part * (high - low); }
};

struct GraphTick {
    double value = 0;
    std::string label;
    bool operator==(const GraphTick&) const = default;
};

// The range that shows the bulk of the values with some air around it: all of them, unless a few
// lie so far off that they would flatten the rest; those are then outside. 0 to 1 without values;
// NaN is none.
GraphRange RobustRange(std::span<const double> values);

// From the first to the last value, with some air around them.
GraphRange WholeRange(std::span<const double> values);

// At round values within the range, `most` of them at most (2 or more), with no more digits than
// tell them apart.
std::vector<GraphTick> RoundTicks(const GraphRange& range, int most);

// The same for seconds since 1970 as the camera's clock had them: at round times of day, with the
// day where it begins. Labels as "22:30", "05-02".
std::vector<GraphTick> TimeTicks(const GraphRange& range, int most);

// "2024-05-01 22:10:03", of such seconds.
std::string ClockText(std::int64_t seconds);

} // namespace tarn
