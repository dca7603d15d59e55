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
    ViewHistory views;
    for (int row = 0; row < 2500; ++row) views.Record(row);
    EXPECT_EQ(views.Count(), 2000);
    EXPECT_EQ(views.At(1999), 1999);
    EXPECT_EQ(views.Last(), 2499);
    views.Restart(4);
    EXPECT_EQ(views.Count(), 1);
    EXPECT_EQ(views.At(0), 4);
    EXPECT_EQ(views.Last(), -1);
}

} // namespace
} // namespace tarn
