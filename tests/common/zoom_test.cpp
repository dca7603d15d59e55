#include "common/zoom.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace tarn {

void PrintTo(const SeenPart& part, std::ostream* out) {
    *out << part.left << "," << part.top << " " << part.width << "x" << part.height;
}

namespace {

// A picture of 24 megapixels, a fifth of it in the pane.
const ZoomPane kLarge{{6000, 4000}, {1200, 800}, 0.2};

ZoomPane Picture(int width, int height) {
    return {{width, height}, kLarge.pane, 1};
}

std::vector<int> Ladder(ZoomView& view, int steps, const ZoomPane& in) {
    std::vector<int> times;
    while (view.Zoom(steps, {}, in)) times.push_back(view.Times());
    return times;
}

TEST(ZoomView, GoesThroughTheSizesAboveTheFitAndBack) {
    using Times = std::vector<int>;
    ZoomView view;
    EXPECT_EQ(Ladder(view, -1, kLarge), Times());
    EXPECT_EQ(Ladder(view, 1, kLarge), (Times{1, 2, 4, 8}));
    EXPECT_EQ(Ladder(view, -1, kLarge), (Times{4, 2, 1, 0}));
    EXPECT_EQ(Ladder(view, 3, kLarge), (Times{4, 8}));
    EXPECT_EQ(Ladder(view, -9, kLarge), Times{0});

    const ZoomPane small = Picture(300, 200); // as large as it fits
    EXPECT_EQ(Ladder(view, 1, small), (Times{2, 4, 8}));
    EXPECT_EQ(Ladder(view, -1, small), (Times{4, 2, 0}));
    view.Zoom(1, {}, kLarge);
    EXPECT_EQ(Ladder(view, -1, small), Times{0}) << "what came zoomed goes back at once";

    const ZoomPane doubled{{6000, 4000}, {1200, 800}, 2};
    EXPECT_EQ(Ladder(view, 1, doubled), (Times{4, 8}));
    EXPECT_EQ(Ladder(view, -1, doubled), (Times{4, 0}));
}

TEST(ZoomView, WhatIsUnderThePointerStaysThere) {
    ZoomView view;
    const ZoomPoint at{300, -200}; // on the pixel 4500, 1000
    view.Zoom(1, at, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{4500 - 900, 1000 - 200, 1200, 800}));
    view.Zoom(1, at, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{2 * 4500 - 900, 2 * 1000 - 200, 1200, 800}));
    view.Zoom(2, at, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{8 * 4500 - 900, 8 * 1000 - 200, 1200, 800}));
    view.Zoom(-3, at, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{3600, 800, 1200, 800}));
    view.Zoom(-1, at, kLarge);
    view.Zoom(1, {-600, 400}, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{0, 3200, 1200, 800})) << "at the corner its corner";
    view.Unzoom();
    view.Zoom(1, {5000, 0}, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{4800, 1600, 1200, 800})) << "beside the picture";
}

TEST(ZoomView, AllOfASideIsSeenThatIsNoLongerThanThePane) {
    ZoomView view;
    const ZoomPane strip{{3000, 100}, {1200, 800}, 0.4};
    view.Zoom(2, {0, 300}, strip);
    EXPECT_EQ(view.Part(strip), (SeenPart{2400, 0, 1200, 200}));
    EXPECT_TRUE(view.Exceeds(strip));
    const ZoomPane small = Picture(300, 200);
    EXPECT_EQ(view.Part(small), (SeenPart{0, 0, 600, 400}));
    EXPECT_FALSE(view.Exceeds(small));
    EXPECT_EQ(view.Part(Picture(0, 0)), (SeenPart{0, 0, 0, 0}));
}

TEST(ZoomView, ThePictureFollowsThePointerToItsEdgesAndNoWayIsLost) {
    ZoomView view;
    view.Pan({100, 100}, kLarge);
    view.Zoom(1, {}, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{2400, 1600, 1200, 800})) << "unzoomed nothing moves";
    view.Pan({100, -50}, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{2300, 1650, 1200, 800}));
    for (int i = 0; i < 12; ++i) view.Pan({0.25, 0}, kLarge);
    EXPECT_EQ(view.Part(kLarge).left, 2297) << "parts of pixels add up";
    view.Pan({9000, 9000}, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{0, 0, 1200, 800}));
    view.Pan({-10, -20}, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{10, 20, 1200, 800}));
}

TEST(ZoomView, ScaleAndPlaceStayFromPictureToPicture) {
    ZoomView view;
    view.Zoom(1, {}, kLarge);
    view.Pan({-1500, 1000}, kLarge); // three quarters of the way right, a quarter down
    EXPECT_EQ(view.Part(kLarge), (SeenPart{3900, 600, 1200, 800}));
    for (const ZoomPane& next : {Picture(8000, 6000), Picture(300, 200), Picture(4000, 6000)}) {
        view.NextPicture();
        EXPECT_EQ(view.Scale(next), 1);
    }
    EXPECT_EQ(view.Part(Picture(8000, 6000)), (SeenPart{5400, 1100, 1200, 800}));
    EXPECT_EQ(view.Part(Picture(300, 200)), (SeenPart{0, 0, 300, 200}));
    EXPECT_EQ(view.Part(Picture(4000, 6000)), (SeenPart{2400, 1100, 1200, 800}));
    EXPECT_EQ(view.Part(kLarge), (SeenPart{3900, 600, 1200, 800}));
}

TEST(ZoomView, ThePlaceGoesAlongWithTurnsOfThePictureThatStands) {
    ZoomView view;
    view.Zoom(1, {}, kLarge);
    view.Pan({-1500, 1000}, kLarge); // the pixel 4500, 1000 in the middle
    const ZoomPane upright = Picture(4000, 6000);
    view.Rotate(1); // it is 3000, 4500 then
    EXPECT_EQ(view.Part(upright), (SeenPart{2400, 4100, 1200, 800}));
    view.Mirror(0);
    EXPECT_EQ(view.Part(upright), (SeenPart{400, 4100, 1200, 800}));
    view.Mirror(1);
    EXPECT_EQ(view.Part(upright), (SeenPart{400, 1100, 1200, 800}));
    view.Rotate(-1); // and 1500, 3000: half a turn from where it came
    EXPECT_EQ(view.Part(kLarge), (SeenPart{900, 2600, 1200, 800}));
    view.Pan({-100, 0}, kLarge);
    EXPECT_EQ(view.Part(kLarge), (SeenPart{1000, 2600, 1200, 800})) << "as it is seen";
    view.NextPicture();
    EXPECT_EQ(view.Part(kLarge), (SeenPart{3800, 600, 1200, 800})) << "the next is not turned";
}

} // namespace
} // namespace tarn
