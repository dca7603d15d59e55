#include "app/window/MainLayout.h"
#include "widgets/WindowPlaces.h"

#include <QList>

#include <gtest/gtest.h>

#include <climits>

namespace tarn {
namespace {

TEST(MainLayout, TheSplitterStopsAtWholeRows) {
    EXPECT_EQ(SnapSplitter(224), 224);
    EXPECT_EQ(SnapSplitter(335), 224);
    EXPECT_EQ(SnapSplitter(337), 448);
    EXPECT_EQ(SnapSplitter(336), 448);         // one and a half: to the even row
    EXPECT_EQ(SnapSplitter(560), 448);         // two and a half: to the even row
    EXPECT_EQ(SnapSplitter(INT_MAX) % 224, 0); // a hand-edited value
}

TEST(MainLayout, HandlesLieBetweenWhatTheyPart) {
    LayoutMeasures m;
    m.treeWidth = 300;
    m.folderBarHeight = 28;
    m.toolsHeight = 30;
    m.notesWidth = 400;
    m.panelHeight = 200;
    m.messageHeight = 24;
    const MainLayout l = LayOut(QSize(1400, 900), m);
    EXPECT_GT(l.treeHandle.left(), l.splitter.right());
    EXPECT_LT(l.treeHandle.right(), l.picture.left());
    EXPECT_GT(l.stripHandle.top(), l.picture.bottom());
    EXPECT_LT(l.stripHandle.bottom(), l.exif.top() + 3); // in the frames' margin
    EXPECT_EQ(l.notesHandle.left() + l.notesHandle.width() / 2, l.notes.left());
}

TEST(WindowPlaces, APlaceOffEveryScreenIsBroughtBack) {
    const QList<QRect> screens{QRect(0, 0, 1600, 1000), QRect(1600, 0, 800, 600)};
    const QRect seen(100, 100, 900, 700);
    EXPECT_EQ(BroughtBack(seen, screens, Seen::Part), seen);
    const QRect second(1700, 50, 600, 400);
    EXPECT_EQ(BroughtBack(second, screens, Seen::Part), second);
    const QRect overTheEdge(66, 600, 900, 500);
    EXPECT_EQ(BroughtBack(overTheEdge, screens, Seen::Part), overTheEdge);
    EXPECT_EQ(BroughtBack(overTheEdge, screens, Seen::Whole), QRect(66, 470, 900, 500));
    const QRect both(1400, 50, 900, 400);
    EXPECT_EQ(BroughtBack(both, screens, Seen::Whole), both);
    const QRect maximised(66, 51, 1600, 981); // its size, and the place from before
    EXPECT_EQ(BroughtBack(maximised, {screens[0]}, Seen::Whole), QRect(0, 0, 1600, 981));
    for (const QRect& lost : {QRect(5000, 100, 900, 700), QRect(-2000, -900, 900, 700),
                              QRect(100, -40, 900, 700), QRect(100, 3000, 2000, 1500)}) {
        const QRect back = BroughtBack(lost, screens, Seen::Part);
        EXPECT_TRUE(screens[0].contains(back) || screens[1].contains(back));
    }
}

} // namespace
} // namespace tarn
