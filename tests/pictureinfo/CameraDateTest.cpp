#include "pictureinfo/dates/CameraDateText.h"

#include "common/dates.h"

#include <gtest/gtest.h>

namespace tarn::testing {

TEST(CameraDate, BecomesAFileTimeByPosition) {
    const auto expected = ToFileTime({2004, 6, 22, 20, 15, 30});
    EXPECT_EQ(FileTimeOf("2004:06:22 20:15:30"), expected);
    // No separator is looked at, and characters are counted.
    EXPECT_EQ(FileTimeOf("2004-06·22T20.15.30"), expected);
    for (const char* none : {"", "2004:06:22", "2004:13:22 20:15:30", "2003:02:29 20:15:30",
                             "2004:06:22 25:15:30", "0000:00:00 00:00:00", "0001:01:01 00:00:00",
                             "1600:12:31 23:59:59", "xxxx:06:22 20:15:30"})
        EXPECT_FALSE(FileTimeOf(none)) << none;
}

TEST(CameraDate, MovesOverDaysAndSummerTimeAlike) {
    EXPECT_EQ(SecondsBetween("2024:03:31 01:30:00", "2024:03:31 03:30:00"), 7200);
    EXPECT_EQ(SecondsBetween("2024:01:01 00:00:00", "2023:12:31 23:59:58"), -2);
    EXPECT_FALSE(SecondsBetween("2024:02:30 00:00:00", "2024:03:01 00:00:00"));
    EXPECT_EQ(WithSeconds("2024:03:31 01:30:00", 3600), "2024:03:31 02:30:00");
    EXPECT_EQ(WithSeconds("2024:02:28 23:59:59", 1), "2024:02:29 00:00:00");
    EXPECT_EQ(WithSeconds("2024-03-01T00.00.00", -1), "2024-02-29T23.59.59");
    EXPECT_FALSE(WithSeconds("9999:12:31 23:59:59", 1));
    EXPECT_FALSE(WithSeconds("    :  :     :  :  ", 1));
}

TEST(CameraDate, HoursStopAtTheDaySecondsAtTheMinute) {
    EXPECT_EQ(WithHourMoved("2004:06:22 09:15:30", 1), "2004:06:22 10:15:30");
    EXPECT_EQ(WithHourMoved("2004:06:22 10:15:30", -1), "2004:06:22 09:15:30");
    EXPECT_FALSE(WithHourMoved("2004:06:22 00:15:30", -1));
    EXPECT_FALSE(WithHourMoved("2004:06:22 23:15:30", 1));
    EXPECT_EQ(WithHourMoved("2004:06:22 30:15:30", -1), "2004:06:22 29:15:30"); // down from no hour
    EXPECT_EQ(WithHourMoved("2004·06·22 09:15:30", 1), "2004·06·22 10:15:30");
    for (const char* stays : {"2004", "2004:06:22 09:15:30 Ω"}) // too short to hold one; no bytes
        EXPECT_EQ(WithHourMoved(stays, 1), stays);
    EXPECT_EQ(WithSecondAdded("2004:06:22 09:15:08"), "2004:06:22 09:15:09");
    EXPECT_EQ(WithSecondAdded("2004:06:22 09:15:59"), "2004:06:22 09:15:00");
    EXPECT_EQ(WithSecondAdded("2004:06:22 09:15:-3"), "2004:06:22 09:15:00");
}

TEST(CameraDate, OnlyTheTimeOfANewDateMustBeOne) {
    const auto shown = TextsOf("2004:06:22 20:15:30");
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->date, "06/22/2004 8:15:30 PM");
    EXPECT_EQ(shown->weekday, "Tuesday");
    EXPECT_EQ(TextsOf("2004·06·22 20:15:30")->date, shown->date);
    const auto thirteen = TextsOf("2004:13:22 20:15:30");
    ASSERT_TRUE(thirteen);
    EXPECT_EQ(thirteen->date, "13/22/2004 8:15:30 PM");
    EXPECT_EQ(thirteen->weekday, "");
    EXPECT_FALSE(TextsOf("2004:06:22 25:15:30"));
}

} // namespace tarn::testing
