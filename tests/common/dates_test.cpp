#include "common/dates.h"

#include <gtest/gtest.h>

using namespace tarn;

TEST(Dates, TextHasNoonAndMidnightAsTwelve) {
    EXPECT_EQ(FormatDateText({2004, 6, 2, 20, 15, 30}), "06/02/2004 8:15:30 PM");
    EXPECT_EQ(FormatTimeText(0, 5, 9), "12:05:09 AM");
    EXPECT_EQ(FormatTimeText(12, 0, 0), "12:00:00 PM");
    EXPECT_EQ(FormatTimeText(11, 59, 59), "11:59:59 AM");
}

TEST(Dates, TimesOfDay) {
    EXPECT_EQ(ParseTimeOfDay("20:15:30"), (20 * 60 + 15) * 60 + 30);
    EXPECT_EQ(ParseTimeOfDay(" 8:05 "), (8 * 60 + 5) * 60);
    for (const char* no : {"", "  ", "24:00:00", "8:60", "8:00:60", "8", "8:5", "8:05:", "8:05:1",
                           "-8:05", "108:00", "8:05:30x", "8.05.30", ":05"}) {
        EXPECT_EQ(ParseTimeOfDay(no), std::nullopt) << no;
    }
}

TEST(Dates, Weekdays) {
    EXPECT_EQ(WeekdayName(2004, 6, 22), "Tuesday");
    EXPECT_EQ(WeekdayName(2000, 2, 29), "Tuesday");
    EXPECT_EQ(WeekdayName(1, 1, 1), "Monday");
    EXPECT_EQ(WeekdayName(1900, 2, 29), std::nullopt);
    EXPECT_EQ(WeekdayName(2004, 13, 1), std::nullopt);
    EXPECT_EQ(WeekdayName(0, 0, 0), std::nullopt);
    EXPECT_EQ(WeekdayName(2004, 6, 257), std::nullopt); // not 1 after narrowing
}

TEST(Dates, FileTimesGoBothWays) {
    const DateTime summer{2004, 7, 15, 20, 15, 30};
    const DateTime winter{1969, 12, 30, 0, 0, 1};
    for (const DateTime& when : {summer, winter}) {
        const auto time = ToFileTime(when);
        ASSERT_TRUE(time.has_value());
        EXPECT_EQ(FromFileTime(*time), when);
    }
    EXPECT_EQ(ToFileTime({2004, 2, 30, 0, 0, 0}), std::nullopt);
    EXPECT_EQ(ToFileTime({2004, 2, 3, 24, 0, 0}), std::nullopt);
}
