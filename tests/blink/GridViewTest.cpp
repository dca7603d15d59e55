// Which places of the grid stand on the screen, at any zoom and either way up.
#include "blink/GridView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarn::testing {
namespace {

using Place = std::pair<double, double>;

struct Seen {
    GridSize grid;
    ZoomView zoom;
    ZoomPane pane{{}, {300, 200}, 1};

    explicit Seen(const GridSize& of) : grid(of) {
        pane.picture = grid.Pixels();
        pane.unzoomed = std::min({1.0, 300.0 / pane.picture.width, 200.0 / pane.picture.height});
    }
    GridView View() const { return ViewOf(grid, zoom, pane); }
    Place At(double u, double v) const { return View().ToGrid()(u, v); }
};

void ExpectNear(const Place& place, double x, double y) {
    EXPECT_NEAR(place.first, x, 1e-9);
    EXPECT_NEAR(place.second, y, 1e-9);
}

TEST(GridView, WholeGridFillsThePaneToItsBorders) {
    const Seen seen({600, 300, 1, false});
    EXPECT_EQ(seen.View().width, 300);
    EXPECT_EQ(seen.View().height, 150);
    ExpectNear(seen.At(-0.5, -0.5), -0.5, -0.5);
    ExpectNear(seen.At(299.5, 149.5), 599.5, 299.5);
    const Seen small({40, 30, 1, false}); // never larger than it is
    EXPECT_EQ(small.View().width, 40);
    ExpectNear(small.At(7, 9), 7, 9);
}

TEST(GridView, FirstRowMayStandAtTheBottom) {
    const Seen seen({600, 300, 1, true});
    ExpectNear(seen.At(-0.5, -0.5), -0.5, 299.5);
    ExpectNear(seen.At(299.5, 149.5), 599.5, -0.5);
}

TEST(GridView, SamplesMayBeCellsOfPixels) {
    const Seen seen({300, 150, 2, false}); // of 600 x 300 pixels
    ExpectNear(seen.At(-0.5, -0.5), -0.5, -0.5);
    ExpectNear(seen.At(299.5, 149.5), 299.5, 149.5);
}

TEST(GridView, ZoomedPartsAreWholePixels) {
    for (const bool bottomUp : {false, true}) {
        Seen seen({600, 300, 1, bottomUp});
        ASSERT_TRUE(seen.zoom.Zoom(1, {}, seen.pane));
        EXPECT_EQ(seen.View().step, 1);
        const Place one = seen.At(0, 0);
        ExpectNear(one, std::round(one.first), std::round(one.second));
        ASSERT_TRUE(seen.zoom.Zoom(1, {}, seen.pane));
        EXPECT_EQ(seen.View().step, 0.5);
        // Two pixels of the screen for one of the grid, around its middle.
        const Place left = seen.At(0, 0);
        const Place right = seen.At(1, 1);
        EXPECT_NEAR(right.first - left.first, 0.5, 1e-9);
        EXPECT_NEAR(right.second - left.second, bottomUp ? -0.5 : 0.5, 1e-9);
        EXPECT_NEAR((right.first + left.first) / 2, std::round(left.first), 1e-9);
    }
}

TEST(GridView, IsEmptyWithoutPictureOrPane) {
    EXPECT_TRUE(ViewOf({}, {}, {{0, 0}, {300, 200}, 1}).IsEmpty());
    EXPECT_TRUE(ViewOf({60, 30, 1, false}, {}, {{60, 30}, {0, 0}, 1}).IsEmpty());
}

} // namespace
} // namespace tarn::testing
