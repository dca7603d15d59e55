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

TEST(Stepping, ViewsGoOnWithTheirFilesWhenRowsCome) {
    ViewHistory views;
    for (const int row : {0, 4, 2}) views.Record(row);
    views.RowCame(2);
    views.RowCame(0);
    EXPECT_EQ((std::vector<int>{views.At(0), views.At(1), views.At(2)}),
              (std::vector<int>{1, 6, 4}));
    EXPECT_EQ(views.Last(), 4);
    views.Record(4); // the same file: no new view
    EXPECT_EQ(views.Count(), 3);
}

} // namespace
} // namespace tarn
