#include "common/graph_scale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tarn {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

std::vector<std::string> LabelsOf(const std::vector<GraphTick>& ticks) {
    std::vector<std::string> labels;
    for (const GraphTick& tick : ticks) labels.push_back(tick.label);
    return labels;
}

using Labels = std::vector<std::string>;

TEST(GraphScale, AFewWildValuesAreLeftOutside) {
    std::vector<double> values{kNone};
    for (int i = 0; i < 60; ++i) values.push_back(2 + 0.01 * i);
    const GraphRange tame = RobustRange(values);
    EXPECT_NEAR(tame.low, 1.97, 0.001);
    EXPECT_NEAR(tame.high, 2.62, 0.001);
    values.insert(values.end(), {40, -3});
    EXPECT_EQ(RobustRange(values), tame);
    EXPECT_GT(RobustRange(values).PartOf(40), 1);
    // A V of a focus run is no outlier.
    std::vector<double> focus;
    for (int i = -10; i <= 10; ++i) focus.push_back(1.5 + std::abs(i));
    EXPECT_GT(RobustRange(focus).high, 11.5);
}

TEST(GraphScale, OneValueAndNoneHaveARange) {
    EXPECT_EQ(RobustRange({}), GraphRange());
    for (const double value : {0.0, 5.0, 1e12}) {
        const std::vector<double> alike{value, value, value};
        EXPECT_LT(RobustRange(alike).low, value);
        EXPECT_GT(RobustRange(alike).high, value);
        EXPECT_GT(WholeRange(alike).high, value);
    }
    // One wild value among equal ones: nothing says which is the bulk's width.
    EXPECT_GE(RobustRange(std::vector<double>{1, 1, 1, 1, 7}).high, 7);
}

TEST(GraphScale, TicksStandAtRoundValues) {
    EXPECT_EQ(LabelsOf(RoundTicks({1.38, 2.24}, 5)), (Labels{"1.4", "1.6", "1.8", "2.0", "2.2"}));
    EXPECT_EQ(LabelsOf(RoundTicks({-0.06, 0.05}, 4)), (Labels{"-0.05", "0.00", "0.05"}));
    EXPECT_EQ(LabelsOf(RoundTicks({980, 31000}, 4)), (Labels{"10000", "20000", "30000"}));
    EXPECT_EQ(LabelsOf(RoundTicks({1, 1}, 4)), Labels());
    EXPECT_EQ(LabelsOf(RoundTicks({0, kNone}, 4)), Labels());
}

TEST(GraphScale, TimesStandAtRoundTimesOfDay) {
    constexpr double kEvening = 1730836800; // 2024-11-05 20:00
    constexpr double kHour = 3600;
    EXPECT_EQ(LabelsOf(TimeTicks({kEvening - 100, kEvening + 8 * kHour}, 6)),
              (Labels{"20:00", "22:00", "11-06", "02:00", "04:00"}));
    EXPECT_EQ(LabelsOf(TimeTicks({kEvening, kEvening + 20}, 5)),
              (Labels{"20:00:00", "20:00:05", "20:00:10", "20:00:15", "20:00:20"}));
    EXPECT_EQ(LabelsOf(TimeTicks({kEvening, kEvening + 96 * kHour}, 3)),
              (Labels{"11-07", "11-09"}));
    EXPECT_EQ(ClockText(std::int64_t(kEvening) + 61), "2024-11-05 20:01:01");
    EXPECT_EQ(ClockText(-1), "1969-12-31 23:59:59");
}

} // namespace
} // namespace tarn
