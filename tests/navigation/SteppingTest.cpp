#include "navigation/Stepping.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarn {
namespace {

TEST(Stepping, RowsGoRoundAtBothEnds) {
    EXPECT_EQ(RowAfter(9, 10), 0);
    EXPECT_EQ(RowBefore(0, 10), 9);
    EXPECT_EQ(RowAfter(8 + 4, 10), 3); // a page from row 8
    EXPECT_EQ(RowAfter(5 + 4, 10), 0); // a page from row 5 lands on the first row
    EXPECT_EQ(RowBefore(3 - 4, 10), 8);
    EXPECT_EQ(RowBefore(1, 10), 0);  // Home
    EXPECT_EQ(RowBefore(57, 10), 6); // from a longer list
    EXPECT_EQ(RowBefore(0, 1), 0);   // End in a list of one
}

TEST(Stepping, PagesInShortListsStayInside) {
    for (int count = 1; count <= 4; ++count)
        for (int row = 0; row < count; ++row) {
            EXPECT_EQ(RowAfter(row + 4, count), (row + 5) % count);
            EXPECT_EQ(RowBefore(row - 4, count), (row - 5 + 5 * count) % count);
        }
}

TEST(Stepping, ViewsAreRecordedNotPaths) {
    SelectionState s;
    for (const int row : {3, 3, 5, 3}) RecordView(s, row);
    EXPECT_EQ(s.FileHistHigh, 3); // the same row again is no new view
    EXPECT_EQ(s.FileHistCur, 2);
    s.FileHistCur = 0; // back at the first
    RecordView(s, 7);  // appended, and what lay ahead stays
    EXPECT_EQ(std::vector<int>(s.FileHist.begin(), s.FileHist.begin() + 4),
              (std::vector<int>{3, 5, 3, 7}));
    EXPECT_EQ(s.FileHistCur, 3);
    EXPECT_TRUE(CanGoBack(s));
    EXPECT_FALSE(CanGoForward(s));
}

TEST(Stepping, TwoThousandViewsAreTheEnd) {
    SelectionState s;
    for (int row = 0; row < 2500; ++row) RecordView(s, row);
    EXPECT_EQ(s.FileHistHigh, 2000);
    EXPECT_EQ(s.FileHist[1999], 1999);
    EXPECT_EQ(s.FileHistLast, 2499);
    RestartViews(s, 4);
    EXPECT_EQ(s.FileHistHigh, 1);
    EXPECT_EQ(s.FileHist[0], 4);
    EXPECT_EQ(s.FileHistLast, -1);
}

} // namespace
} // namespace tarn
