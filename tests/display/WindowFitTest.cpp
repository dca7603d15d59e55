#include "display/WindowFit.h"
#include "display/Travel.h"

#include <gtest/gtest.h>

using namespace tarn;

namespace tarn {

void PrintTo(const PixelSize& size, std::ostream* out) {
    *out << size.width << "x" << size.height;
}

} // namespace tarn

TEST(SizeWindowFit, ReducesTheLongSideAndEnlargesNothing) {
    struct Case {
        PixelSize picture, window, fit;
        std::string what;
    };
    for (const Case& c : {
             Case{{640, 480}, {1000, 800}, {640, 480}, "small"},
             Case{{1000, 800}, {1000, 800}, {1000, 800}, "just as large"},
             Case{{4000, 3000}, {400, 1200}, {400, 300}, "landscape, tall narrow window"},
             Case{{3000, 4000}, {2000, 900}, {675, 900}, "portrait, wide window"},
             Case{{4000, 3000}, {3000, 600}, {800, 600}, "landscape, very wide window"},
             Case{{3000, 2000}, {1400, 600}, {900, 600}, "600 / 0.6666667"},
             Case{{2000, 2000}, {900, 500}, {500, 500}, "square"},
             Case{{2000, 3000}, {800, 1400}, {533, 800}, "portrait limited by the width"},
             Case{{6000, 2}, {600, 600}, {600, 1}, "a line stays one"},
             Case{{0, 0}, {600, 600}, {0, 0}, "no picture"},
             Case{{4000, 3000}, {0, 0}, {4000, 3000}, "no window yet"},
         })
        EXPECT_EQ(FitSizeWindow(c.picture, c.window), c.fit) << c.what;
}

TEST(SizeWindowFit, ZoomShowsAPartRoundItsPointWithinTheEdges) {
    const PixelSize picture{4000, 3000};
    const PixelSize fit{800, 600};
    const PixelSize window{800, 700};
    const ZoomedPart middle = ZoomPart(picture, fit, window, 2, 0.5, 0.5);
    EXPECT_EQ(middle.drawn, (PixelSize{800, 700}));
    EXPECT_EQ(middle.part, (PixelRect{1000, 625, 2000, 1750}));
    EXPECT_EQ(ZoomPart(picture, fit, window, 2, 0, 1).part, (PixelRect{0, 1250, 2000, 1750}));
    // As long as it fits in one direction all of that is seen.
    const ZoomedPart little = ZoomPart(picture, fit, window, 1.1, 0.9, 0.1);
    EXPECT_EQ(little.drawn, (PixelSize{800, 660}));
    EXPECT_EQ(little.part, (PixelRect{364, 0, 3636, 3000}));
    const ZoomedPart most = ZoomPart({3, 2}, {3, 2}, window, 1000, 1, 1);
    EXPECT_EQ(most.part, (PixelRect{2, 1, 1, 1}));
}

TEST(OneToOneFit, TheNavigatorTakesTheLongSideOfTheOtherDirection) {
    const PixelSize box{200, 150};
    EXPECT_EQ(FitNavigator({6000, 4000}, box), (PixelSize{150, 100}));
    EXPECT_EQ(FitNavigator({4000, 6000}, box), (PixelSize{133, 200}));
    EXPECT_EQ(FitNavigator({3000, 3000}, box), (PixelSize{150, 150}));
    EXPECT_EQ(FitNavigator({199, 149}, box), (PixelSize{199, 149}));
    EXPECT_EQ(FitNavigator({200, 40}, box), (PixelSize{150, 30}));
    EXPECT_EQ(FitNavigator({140, 160}, box), (PixelSize{140, 160})) << "never enlarged";
}

TEST(OneToOneFit, TheCutLiesRoundThePointAndStopsAtTheEdges) {
    const PixelSize picture{6000, 4000};
    const PixelSize copy{150, 100};
    const PixelSize view{800, 600};
    using Place = std::optional<ViewPlace>;
    EXPECT_EQ(PlaceOfView(150, 0, picture, copy, view), (Place{{5200, 0}}));
    EXPECT_EQ(PlaceOfView(11, 50, picture, copy, {801, 601}), (Place{{40, 1700}}))
        << "39.5 and 1699.5, halves to even";
    EXPECT_EQ(PlaceOfView(75, 50, view, copy, view), (Place{{0, 0}}));
    EXPECT_EQ(PlaceOfView(75, 50, {799, 4000}, copy, view), std::nullopt);
    EXPECT_EQ(PlaceOfView(75, 50, {6000, 599}, copy, view), std::nullopt);
    EXPECT_EQ(PlaceOfView(0, 0, {0, 0}, {0, 0}, view), std::nullopt);

    EXPECT_EQ(WithinReach({0, 100}, picture, copy, view), (NavPoint{10, 92.5F}));
    EXPECT_EQ(WithinReach({70, 50}, picture, copy, view), (NavPoint{70, 50}));
    EXPECT_EQ(WithinReach({70, 50}, {300, 200}, copy, view), (NavPoint{70, 50}));
}

TEST(Travel, TwoAheadAndOneBehindInTheDirectionOfTheLastStep) {
    const auto every = [](int) { return true; };
    using Rows = std::vector<int>;
    Travel travel;
    EXPECT_EQ(travel.Next(every), Rows{});
    travel.GoTo(4, 10);
    EXPECT_EQ(travel.Next(every), (Rows{5, 6, 3}));
    travel.GoTo(3, 10);
    EXPECT_EQ(travel.Next(every), (Rows{2, 1, 4}));
    travel.GoTo(3, 10); // shown again
    EXPECT_EQ(travel.Next(every), (Rows{2, 1, 4}));
    travel.GoTo(4, 10);
    EXPECT_EQ(travel.Next(every), (Rows{5, 6, 3}));
    travel.GoTo(7, 30);
    travel.GoTo(0, 30); // a jump goes on
    EXPECT_EQ(travel.Next(every), (Rows{1, 2, 29}));
    travel.GoTo(28, 30); // back over the begin, and over a row that is no picture
    EXPECT_EQ(travel.Next(every), (Rows{27, 26, 29}));
    travel.GoTo(0, 10);
    travel.GoTo(9, 10);
    EXPECT_EQ(travel.Next(every), (Rows{8, 7, 0}));
    travel.GoTo(0, 10); // and on over the end
    EXPECT_EQ(travel.Next(every), (Rows{1, 2, 9}));

    EXPECT_EQ(travel.Next([](int row) { return row % 3 == 0; }), (Rows{3, 6, 9}));
    EXPECT_EQ(travel.Next([](int row) { return row == 0; }), Rows{});
    travel.GoTo(0, 2);
    EXPECT_EQ(travel.Next(every), Rows{1});
    travel.GoTo(1, 2);
    EXPECT_EQ(travel.Next(every), Rows{0});
    travel.GoTo(0, 1);
    EXPECT_EQ(travel.Next(every), Rows{});
    travel.GoTo(0, 0); // the list has emptied under the picture
    travel.GoTo(-1, 0);
    EXPECT_EQ(travel.Next(every), Rows{});
    travel.GoTo(500, 1000);
    travel.GoTo(499, 1000);
    EXPECT_EQ(travel.Next([](int row) { return row == 502 || row == 300; }), Rows{502})
        << "not too far";
}
