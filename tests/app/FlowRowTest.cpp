#include "app/window/FlowRow.h"

#include <QPushButton>

#include <gtest/gtest.h>

namespace tarn {
namespace {

struct Rows {
    QWidget whole;
    FlowRow* row = new FlowRow(&whole, 3, 12);
    std::vector<QPushButton*> buttons;

    Rows() {
        for (int i = 0; i < 6; ++i) {
            buttons.push_back(new QPushButton(QStringLiteral("Button %1").arg(i)));
            row->Add(buttons.back(), i / 3);
        }
    }
    void LayOut(int width) { row->setGeometry(QRect(0, 0, width, row->heightForWidth(width))); }
    int Line(int i) const { return buttons[std::size_t(i)]->y(); }
};

TEST(FlowRow, WrapsWhereALineEndsAndCutsNothing) {
    Rows r;
    const int line = r.row->LineWidth();
    r.LayOut(line);
    EXPECT_EQ(r.Line(0), r.Line(5));
    EXPECT_EQ(r.buttons[5]->geometry().right() + 1, line);
    EXPECT_GE(r.buttons[3]->x(), r.buttons[2]->geometry().right() + 12);
    for (const int width : {line - 1, line / 2, line / 3, r.row->minimumSize().width()}) {
        r.LayOut(width);
        EXPECT_GT(r.Line(5), r.Line(0)) << width;
        for (std::size_t i = 0; i < r.buttons.size(); ++i) {
            const QRect place = r.buttons[i]->geometry();
            EXPECT_LE(place.right(), width) << width;
            EXPECT_LT(place.bottom(), r.row->heightForWidth(width));
            for (std::size_t k = 0; k < i; ++k)
                EXPECT_FALSE(place.intersects(r.buttons[k]->geometry())) << i << " on " << k;
        }
    }
}

TEST(FlowRow, KeepsRoomForWhatIsReservedAlone) {
    Rows r;
    const int line = r.row->LineWidth();
    r.buttons[5]->hide();
    EXPECT_LT(r.row->LineWidth(), line);
    EXPECT_EQ(r.row->heightForWidth(line - 1), r.row->heightForWidth(line));
    r.row->Reserve(r.buttons[5], 500);
    EXPECT_GT(r.row->LineWidth(), line);
    EXPECT_GT(r.row->heightForWidth(line), r.row->heightForWidth(line + 500));
}

TEST(FlowRow, AGroupBeginsALineWhereThatKeepsItTogether) {
    Rows r;
    const int group = r.buttons[2]->sizeHint().width() * 3;
    const int twoLines = r.row->WidthFor(2);
    EXPECT_LT(twoLines, group + 30);
    for (const int width : {twoLines, r.row->LineWidth() - 1}) {
        r.LayOut(width);
        EXPECT_EQ(r.Line(2), r.Line(0)) << width;
        EXPECT_GT(r.Line(3), r.Line(0)) << width;
        EXPECT_EQ(r.Line(5), r.Line(3)) << width;
    }
    r.LayOut(twoLines - 1);
    EXPECT_GT(r.Line(5), r.Line(3));
}

} // namespace
} // namespace tarn
