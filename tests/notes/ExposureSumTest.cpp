#include "notes/ExposureSum.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

using Rows = std::array<ExposureInput, kExposureRows>;

TEST(ExposureSum, AddsGroupsAndFillsTheEntry) {
    const ExposureSum sum(Rows{{{"60", "30"}, {"120", "10"}, {}, {}}});
    EXPECT_EQ(sum.RowText(0), "1,800 seconds, h:m:s (0:30:00)");
    EXPECT_EQ(sum.RowText(1), "1,200 seconds, h:m:s (0:20:00)");
    EXPECT_EQ(sum.RowText(2), "0 seconds, h:m:s (0:00:00)");
    EXPECT_EQ(sum.TotalText(), "3,000 seconds, h:m:s (0:50:00) Total");
    EXPECT_EQ(sum.FillText(), "0h 50m 0s  (30 at 60sec.), (10 at 120sec.)");
    EXPECT_EQ(ExposureSum(Rows{{{"3600", "1"}, {}, {}, {}}}).TotalText(),
              "3,600 seconds, h:m:s (1:00:00) Total");
}

TEST(ExposureSum, TheOpeningFormBelongsToTheFirstRow) {
    EXPECT_EQ(ExposureSum(Rows{{{}, {"120", "10"}, {"1", "1"}, {}}}).FillText(),
              "0h 20m 1s , (10 at 120sec.), (1 at 1sec.)");
    EXPECT_EQ(ExposureSum(Rows{{{"60", "1"}, {}, {}, {"30", "4"}}}).FillText(),
              "0h 3m 0s  (1 at 60sec.), (4 at 30sec.)");
    EXPECT_EQ(ExposureSum(Rows{}).FillText(), "0h 0m 0s ");
}

TEST(ExposureSum, BoxesWithoutANumberLeaveTheRowAtZero) {
    const ExposureSum sum(Rows{{{"abc", "30"}, {"60", ""}, {" +2.5 ", "4"}, {"1e999", "nan"}}});
    EXPECT_EQ(sum.RowText(0), "0 seconds, h:m:s (0:00:00)");
    EXPECT_EQ(sum.RowText(1), "0 seconds, h:m:s (0:00:00)");
    EXPECT_EQ(sum.RowText(2), "10 seconds, h:m:s (0:00:10)");
    EXPECT_EQ(sum.RowText(3), "0 seconds, h:m:s (0:00:00)");
    EXPECT_EQ(sum.FillText(), "0h 0m 10s , (4 at 3sec.)");
}

TEST(ExposureSum, FractionsWorkInRowsOneToThreeOnly) {
    const ExposureSum sum(Rows{{{"1.5", "10"}, {"0.5", "1"}, {}, {"1.5", "10"}}});
    EXPECT_EQ(sum.RowText(0), "15 seconds, h:m:s (0:00:15)");
    EXPECT_EQ(sum.RowText(3), "20 seconds, h:m:s (0:00:20)");        // 1.5 is held as 2
    EXPECT_EQ(sum.TotalText(), "36 seconds, h:m:s (0:00:36) Total"); // 35.5, to even
}

TEST(ExposureSum, WhatDoesNotFitIsOutOfRangeAndFillsNothing) {
    EXPECT_EQ(ExposureSum(Rows{{{}, {}, {}, {"32767", "1"}}}).TotalText(),
              "32,767 seconds, h:m:s (9:06:07) Total");
    const ExposureSum row4(Rows{{{"60", "1"}, {}, {}, {"32767", "2"}}});
    EXPECT_EQ(row4.RowText(0), "60 seconds, h:m:s (0:01:00)");
    EXPECT_EQ(row4.RowText(3), "out of range");
    EXPECT_EQ(row4.TotalText(), "out of range");
    EXPECT_EQ(row4.FillText(), std::nullopt);
    const ExposureSum total(Rows{{{"32767", "1"}, {"1", "1"}, {}, {}}});
    EXPECT_EQ(total.RowText(0), "32,767 seconds, h:m:s (9:06:07)");
    EXPECT_EQ(total.TotalText(), "out of range");
    EXPECT_EQ(ExposureSum(Rows{{{"1e300", "1e300"}, {}, {}, {}}}).RowText(0), "out of range");
    EXPECT_EQ(ExposureSum(Rows{{{}, {}, {}, {"40000", "1"}}}).RowText(3), "out of range");
}

} // namespace
} // namespace tarn::testing
