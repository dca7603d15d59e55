// Which frames are chosen and shown, and what is said of them.
#include "video/BestChoice.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tarn::testing {
namespace {

RatedFrame Rated(double sharpness, bool cut = false) {
    RatedFrame frame;
    frame.sharpness = sharpness;
    frame.x = frame.y = 32;
    frame.size = 30;
    frame.brightness = 0.4;
    frame.cut = cut;
    return frame;
}

RatedFrame Unrated() {
    RatedFrame frame;
    frame.fault = "no light stands out of the sky";
    return frame;
}

} // namespace

TEST(BestChoice, CountsSharesUpAndAtLeastOne) {
    EXPECT_EQ(WantedCount(1000, 10, true), 100U);
    EXPECT_EQ(WantedCount(1001, 10, true), 101U);
    EXPECT_EQ(WantedCount(3, 1, true), 1U);
    EXPECT_EQ(WantedCount(50, 200, true), 50U);
    EXPECT_EQ(WantedCount(50, 200, false), 200U);
    EXPECT_EQ(WantedCount(50, 0, false), 1U);
}

TEST(BestChoice, ALineChoosesWhatIsAsSharpAndCanBeTrusted) {
    const std::vector<RatedFrame> frames{Rated(3), Rated(5, true), Unrated(), Rated(1), Rated(4)};
    EXPECT_EQ(AsSharpAs(frames, 3), (FrameNumbers{4, 0}));
    EXPECT_EQ(AsSharpAs(frames, 0), (FrameNumbers{4, 0, 3}));
    EXPECT_EQ(AsSharpAs(frames, 9), FrameNumbers());
    EXPECT_EQ(InTime({4, 0, 3}), (FrameNumbers{0, 3, 4}));
}

TEST(BestChoice, LongClipsAreShownByWhatStandsOut) {
    std::vector<RatedFrame> frames(1000, Rated(2));
    frames[100] = Unrated();
    frames[617] = Rated(9);
    frames[618] = Rated(0.5);
    const FrameNumbers all = ShownFrames(frames, false, 1000);
    EXPECT_EQ(all.size(), 999U);
    const FrameNumbers thinned = ShownFrames(frames, false, 50);
    EXPECT_LE(thinned.size(), 52U);
    EXPECT_TRUE(std::is_sorted(thinned.begin(), thinned.end()));
    EXPECT_EQ(std::count(thinned.begin(), thinned.end(), 617U), 1);
    EXPECT_EQ(std::count(thinned.begin(), thinned.end(), 618U), 1);
    const FrameNumbers sorted = ShownFrames(frames, true, 50);
    EXPECT_EQ(sorted.front(), 617U);
    EXPECT_EQ(sorted.back(), 618U);
    // Places count those that are not shown, too.
    const FrameNumbers places = PlacesBySharpness(frames);
    EXPECT_EQ(places[617], 1U);
    EXPECT_EQ(places[0], 2U);
    EXPECT_EQ(places[100], 0U);
    EXPECT_EQ(places[618], 999U);
}

TEST(BestChoice, SaysWhatIsKnown) {
    const std::vector<RatedFrame> frames{Rated(0.03), Rated(0.05, true), Unrated(), Rated(0.01)};
    const std::vector<std::string> utc{"2015-03-07T21:12:03.250000Z"};
    EXPECT_EQ(TipOfFrame(0, frames, utc), "Frame 0, 21:12:03.250 UTC\nSharpness 0.03\n"
                                          "Brightness 40 %\nLight 30 pixels wide, at 32, 32");
    EXPECT_EQ(TipOfFrame(2, frames, utc), "Frame 2\nno light stands out of the sky");
    EXPECT_EQ(SummaryOfFrames(frames),
              "3 frames rated; 1 not: no light stands out of the sky; 1 cut off at the border");
    EXPECT_EQ(SummaryOfFrames({}), "");
    EXPECT_EQ(ChoiceSaid({0, 3}, frames),
              "2 of 4 frames chosen, from sharpness 0.03 (frame 0) to 0.01");
    EXPECT_EQ(ChoiceSaid({}, frames), "No frame can be trusted to be among the best");
}

} // namespace tarn::testing
