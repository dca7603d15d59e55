// In which order frames are blinked, and what is said of them.
#include "blink/BlinkOrder.h"
#include "blink/BlinkWords.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

using Numbers = std::vector<std::size_t>;

// Three of a night that came in no order, the second one rejected.
std::vector<BlinkFrame> Three() {
    return {{"/c", "c", 300, 2.0, 50, {}, false},
            {"/a", "a", 100, 2.5, 20, {Decision::Reject, 0}, false},
            {"/b", "b", 200, 1.5, 90, {}, false}};
}

Numbers Played(BlinkOrder& order, int steps, const Numbers& missing = {}, bool waits = false) {
    Numbers played;
    for (int i = 0; i < steps; ++i) {
        order.Advance(
            [&](std::size_t frame) {
                return std::find(missing.begin(), missing.end(), frame) == missing.end();
            },
            waits);
        played.push_back(order.Current());
    }
    return played;
}

TEST(BlinkOrder, IsByTimeOrScoreAndPassesOverWhatIsRejectedOrUnread) {
    BlinkOrder order;
    std::vector<BlinkFrame> frames = Three();
    order.Arrange(frames, false, false);
    EXPECT_EQ(order.Frames(), (Numbers{1, 2, 0}));
    order.Arrange(frames, true, false);
    EXPECT_EQ(order.Frames(), (Numbers{2, 0, 1}));
    EXPECT_EQ(order.Current(), 1U); // the frame shown stays
    order.Arrange(frames, false, true);
    EXPECT_EQ(order.Frames(), (Numbers{2, 0}));
    EXPECT_EQ(order.Current(), 2U); // what comes next in its place
    frames[2].isUnread = true;
    order.Arrange(frames, false, true);
    EXPECT_EQ(order.Frames(), Numbers{0});
    frames[0].mark.decision = Decision::Reject;
    order.Arrange(frames, false, true); // rather all of them than none
    EXPECT_EQ(order.Frames(), (Numbers{1, 0}));
}

TEST(BlinkOrder, PlaysForwardBackAndToAndFro) {
    BlinkOrder order;
    order.Arrange(Three(), false, false);
    EXPECT_EQ(Played(order, 4), (Numbers{2, 0, 1, 2}));
    order.SetWay(BlinkWay::Back);
    EXPECT_EQ(order.Ahead(), (Numbers{2, 1, 0}));
    EXPECT_EQ(Played(order, 4), (Numbers{1, 0, 2, 1}));
    order.SetWay(BlinkWay::ToAndFro);
    EXPECT_EQ(Played(order, 6), (Numbers{2, 0, 2, 1, 2, 0}));
    order.Step(1);
    EXPECT_EQ(order.Current(), 1U);
    order.Step(-1);
    EXPECT_EQ(order.Current(), 0U);
}

TEST(BlinkOrder, PassesOverWhatIsNotMadeOrWaitsForIt) {
    BlinkOrder order;
    order.Arrange(Three(), false, false);
    EXPECT_EQ(Played(order, 3, {2}), (Numbers{0, 1, 0}));
    EXPECT_EQ(Played(order, 2, {0, 1, 2}), (Numbers{0, 0}));
    EXPECT_EQ(Played(order, 3, {2}, true), (Numbers{1, 1, 1}));
    order.SetWay(BlinkWay::ToAndFro);
    EXPECT_EQ(Played(order, 3, {2}), (Numbers{0, 1, 0}));
}

TEST(BlinkOrder, OneFrameStandsStill) {
    BlinkOrder order;
    order.Arrange({Three()[0]}, false, false);
    for (const BlinkWay way : {BlinkWay::Forward, BlinkWay::Back, BlinkWay::ToAndFro}) {
        order.SetWay(way);
        EXPECT_EQ(Played(order, 2), (Numbers{0, 0}));
        EXPECT_EQ(order.Ahead(), Numbers{0});
    }
}

TEST(BlinkWords, TellFrameAndWhatIsLeftOut) {
    EXPECT_EQ(CornerText({"/a/L1.fits", "L1.fits", 1730836980, 2.134, 50, {}, false}),
              "L1.fits   20:03:00   HFR 2.13");
    EXPECT_EQ(CornerText({"/a/L1.fits", "L1.fits", {}, kNotMeasured, 50, {}, false}), "L1.fits");
    EXPECT_EQ(LeftOutText({}), "");
    EXPECT_EQ(LeftOutText({"no stars", "another size: 4 x 4", "no stars"}),
              "3 left out: 1 \u00D7 another size: 4 x 4, 2 \u00D7 no stars");
}

} // namespace
} // namespace tarn::testing
