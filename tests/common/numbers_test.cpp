#include "common/numbers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace tarn;

TEST(Numbers, HalvesGoAwayFromZeroAsTheyStandInBinary) {
    EXPECT_EQ(FormatFixed(0.25, 1), "0.3");
    EXPECT_EQ(FormatFixed(-0.25, 1), "-0.3");
    EXPECT_EQ(FormatFixed(2.5, 0), "3");
    EXPECT_EQ(FormatFixed(9.5, 0), "10");
    EXPECT_EQ(FormatFixed(-9.5, 0), "-10");
    EXPECT_EQ(FormatFixed(99.75, 1), "99.8");
    EXPECT_EQ(FormatFixed(0.15, 1), "0.1"); // a little below the half
    EXPECT_EQ(FormatFixed(0.35F, 1), "0.3");
    EXPECT_EQ(FormatFixed(-0.04, 1), "-0.0");
    EXPECT_EQ(FormatFixed(1e300, 1).size(), 303U);
}

TEST(Numbers, SignsAndLeadingZeros) {
    EXPECT_EQ(FormatSigned(0.66, 1), "+0.7");
    EXPECT_EQ(FormatSigned(0, 1), "0.0");
    EXPECT_EQ(FormatSigned(-0.33, 1), "-0.3");
    EXPECT_EQ(FormatNoLeadingZero(0.5, 1), ".5");
    EXPECT_EQ(FormatNoLeadingZero(-0.5, 1), "-.5");
    EXPECT_EQ(FormatNoLeadingZero(0, 1), ".0");
    EXPECT_EQ(FormatNoLeadingZero(10.5, 1), "10.5");
}

TEST(Numbers, NotFinite) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(FormatFixed(infinity, 1), "Infinity");
    EXPECT_EQ(FormatNoLeadingZero(-infinity, 1), "-Infinity");
    EXPECT_EQ(FormatSigned(std::nan(""), 1), "NaN");
    EXPECT_EQ(ShortestSingle(-std::numeric_limits<float>::infinity()), "-Infinity");
}

TEST(Numbers, PaddedAndGrouped) {
    EXPECT_EQ(FormatPadded(5, 2), "05");
    EXPECT_EQ(FormatPadded(-5, 2), "-05");
    EXPECT_EQ(FormatPadded(123, 2), "123");
    EXPECT_EQ(FormatGrouped(0), "0");
    EXPECT_EQ(FormatGrouped(999), "999");
    EXPECT_EQ(FormatGrouped(1234567), "1,234,567");
    EXPECT_EQ(FormatGrouped(-1234), "-1,234");
    EXPECT_EQ(FormatGrouped(-123), "-123");
}

TEST(Numbers, ShortestTextOfSingles) {
    EXPECT_EQ(ShortestSingle(50), "50");
    EXPECT_EQ(ShortestSingle(3.5F), "3.5");
    EXPECT_EQ(ShortestSingle(1.0F / 3), "0.3333333");
    EXPECT_EQ(ShortestSingle(100.0F / 3), "33.33333");
    EXPECT_EQ(ShortestSingle(-0.0001F), "-0.0001");
    EXPECT_EQ(ShortestSingle(1234566.5F), "1234567");
    EXPECT_EQ(ShortestSingle(9999999), "9999999");
    EXPECT_EQ(ShortestSingle(1e7F), "1E+07");
    EXPECT_EQ(ShortestSingle(1.5e-5F), "0.000015");
    EXPECT_EQ(ShortestSingle(0), "0");
}

TEST(Numbers, ReadsSettings) {
    EXPECT_EQ(ParseInt16(" 75 "), 75);
    EXPECT_EQ(ParseInt16("2.5"), 2);
    EXPECT_EQ(ParseInt16("3.5"), 4);
    EXPECT_EQ(ParseInt16("-32768"), -32768);
    EXPECT_EQ(ParseInt16("32768"), std::nullopt);
    EXPECT_EQ(ParseInt32("+2147483647"), 2147483647);
    EXPECT_EQ(ParseInt32("2147483648"), std::nullopt);
    EXPECT_EQ(ParseInt32("1E3"), 1000);
    EXPECT_EQ(ParseSingle("0.5"), 0.5F);
    EXPECT_EQ(ParseSingle("1e39"), std::nullopt);
    for (const char* no :
         {"", " ", "x", "1x", "1 2", "--1", "+-1", "inf", "nan", "0x10", "1e999"}) {
        EXPECT_EQ(ParseInt32(no), std::nullopt) << no;
        EXPECT_EQ(ParseSingle(no), std::nullopt) << no;
    }
}

TEST(Numbers, ReadsFlags) {
    EXPECT_EQ(ParseBoolean("True"), true);
    EXPECT_EQ(ParseBoolean(" fALSE"), false);
    EXPECT_EQ(ParseBoolean("-1"), true);
    EXPECT_EQ(ParseBoolean("0"), false);
    EXPECT_EQ(ParseBoolean("yes"), std::nullopt);
}
