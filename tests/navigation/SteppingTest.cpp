#include "navigation/Stepping.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarn {
namespace {

TEST(Stepping, PagesInShortListsStayInside) {
    for (int count = 1; count <= 4; ++count)
        for (int row = 0; row < count; ++row) {
            EXPECT_EQ(RowFrom(row, 5, count), (row + 5) % count);
            EXPECT_EQ(RowFrom(row, -5, count), (row - 5 + 5 * count) % count);
        }
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
