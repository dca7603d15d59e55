#include "print/ThumbnailSheet.h"

#include "Orders.h"
#include "PictureFiles.h"
#include "common/pages.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

SheetCell Cell(const SheetLayout& layout, int number, const std::string& name, double w = 300,
               double h = 200) {
    SheetCell cell;
    cell.fileNumber = number;
    cell.name = name;
    cell.size = CellSize(layout, w, h);
    return cell;
}

std::string Size(const SheetLayout& layout, double w, double h) {
    const PaperSize size = CellSize(layout, w, h);
    return std::to_string(std::lround(size.width)) + "x" + std::to_string(std::lround(size.height));
}

TEST(ThumbnailSheet, PicturesAreFittedIntoTheirBox) {
    EXPECT_EQ(Size(kSheet3x4, 3000, 1000), "3000x1000");
    EXPECT_EQ(Size(kSheet3x4, 400, 300), "2660x1995"); // 2250 would be too high
    EXPECT_EQ(Size(kSheet3x4, 200, 300), "1330x1995");
    EXPECT_EQ(Size(kSheet3x4, 100, 100), "1995x1995");
    EXPECT_EQ(Size(kSheet4x6, 300, 200), "2000x1333");
    EXPECT_EQ(Size(kSheet5x8, 400, 300), "1331x998");
    EXPECT_EQ(Size(kSheet2x2, 300, 200), "9900x6600"); // over the next column
    EXPECT_EQ(Size(kSheet2x2, 200, 300), "4400x6600");
    EXPECT_EQ(Size(kSheet5x8, 1, 30000), "0x998");
    EXPECT_EQ(Size(kSheet5x8, 30000, 1), "1500x0");
    EXPECT_EQ(Size(kSheet5x8, 0, 0), "1500x998");
}

TEST(ThumbnailSheet, CellsStandInTheirGridAndPagesFillUp) {
    struct Expected {
        const SheetLayout& layout;
        std::string second, nextRow, last;
    };
    for (const Expected& each : {Expected{kSheet2x2, "6400 600", "600 7800", "6400 7800"},
                                 Expected{kSheet3x4, "4200 550", "500 4150", "7900 11350"},
                                 Expected{kSheet4x6, "3300 550", "500 2925", "8900 12425"},
                                 Expected{kSheet5x8, "2740 550", "500 2350", "9460 13150"}}) {
        Paper paper;
        const int n = each.layout.PerPage();
        ThumbnailSheet sheet(*paper.printer, each.layout, {}, "heading", 2);
        for (int i = 1; i <= n + 1; ++i) sheet.Add(Cell(each.layout, i, "a.jpg"));
        ASSERT_EQ(paper.printer->Pages().size(), 2U) << each.layout.name;
        const auto boxes = All<PaperBox>(paper.Page());
        ASSERT_EQ(boxes.size(), std::size_t(n));
        const auto at = [&](int i) { return Place(boxes[std::size_t(i)]); };
        EXPECT_EQ(at(1).find(each.second), 0U) << at(1);
        EXPECT_EQ(at(each.layout.columns).find(each.nextRow), 0U) << at(each.layout.columns);
        EXPECT_EQ(at(n - 1).find(each.last), 0U) << at(n - 1);
        EXPECT_EQ(PlaceOf(paper.Page(0), "Page 1 of 2"), "9906,200");
        EXPECT_EQ(PlaceOf(paper.Page(1), "Page 2 of 2"), "9906,200");
        EXPECT_EQ(PlaceOf(paper.Page(1), "heading"), "100,200");
        EXPECT_EQ(All<PaperBox>(paper.Page(1)).size(), 1U);
        const auto rules = All<PaperRule>(paper.Page());
        ASSERT_EQ(rules.size(), 1U);
        EXPECT_EQ(rules[0].x, 0);
        EXPECT_EQ(rules[0].toX, 11906);
        EXPECT_DOUBLE_EQ(rules[0].y, 200 + paper.Line(8) + 100);
    }
}

TEST(ThumbnailSheet, PagesAreCountedAsWholeOnes) {
    EXPECT_EQ(PlanSheets(24, 12, false, 0).pageCount, 2);
    EXPECT_EQ(PlanSheets(0, 12, false, 0).pageCount, 1);
    EXPECT_EQ(PageCount(0, 12), 0); // as the menu says it
    const SheetPlan last = PlanSheets(13, 12, true, 12);
    EXPECT_EQ(last.first, 13);
    EXPECT_EQ(last.last, 13);
    EXPECT_EQ(last.fileCount, 12);
    EXPECT_EQ(last.pageCount, 1);
    EXPECT_EQ(PlanSheets(50, 12, true, 3).last, 15);
}

TEST(ThumbnailSheet, LongNamesGoOnInASecondLineByCharacters) {
    struct Expected {
        const SheetLayout& layout;
        int first, second;
    };
    for (const Expected& each : {Expected{kSheet2x2, 50, 40}, Expected{kSheet3x4, 35, 40},
                                 Expected{kSheet4x6, 24, 27}, Expected{kSheet5x8, 24, 29}}) {
        const SheetLayout& layout = each.layout;
        Paper paper;
        ThumbnailSheet sheet(*paper.printer, layout, {}, "", 1);
        // Characters of two bytes, no two the same.
        const auto part = [](int from, int count) {
            std::string text;
            for (int i = from; i < from + count; ++i)
                text += {char(0xC4 + i / 64), char(0x80 + i % 64)};
            return text;
        };
        const std::string first = part(0, each.first);
        sheet.Add(Cell(layout, 1, first));
        sheet.Add(Cell(layout, 2, part(0, each.first + each.second + 1)));
        const double y = layout.firstY + CellSize(layout, 300, 200).height + 50;
        const auto at = [&](int column, double below) {
            return std::to_string(std::lround(layout.firstX + column * layout.columnStep)) + "," +
                   std::to_string(std::lround(y + below));
        };
        const PaperPage& page = paper.Page();
        EXPECT_EQ(PlaceOf(page, "1.  " + first), at(0, 0)) << layout.name;
        EXPECT_EQ(PlaceOf(page, "2.  " + first), at(1, 0)) << layout.name;
        EXPECT_EQ(PlaceOf(page, part(each.first, each.second)),
                  at(1, paper.Line(layout.points, true)))
            << layout.name;
        EXPECT_EQ(All<PaperText>(page).size(), 4U) << layout.name; // with the page's number
    }
}

TEST(ThumbnailSheet, DatesAndNotesFollowUnderTheName) {
    Paper paper;
    const auto add = [&](const SheetLayout& layout, const std::string& note) {
        ThumbnailSheet sheet(*paper.printer, layout, {}, "", 1);
        SheetCell cell = Cell(layout, 1, "a.jpg");
        cell.date = "date";
        cell.time = "1/60s";
        cell.sizeLine = "6.3 Mp";
        cell.note = note;
        paper.printer->NewPage();
        sheet.Add(cell);
        return paper.printer->Pages().back();
    };
    const std::string note = std::string(65, 'a') + "rest\r\nb\r\nc\nd\r\ne";
    PaperPage page = add(kSheet3x4, note);
    const auto at = [](double x, double y) {
        return std::to_string(std::lround(x)) + "," + std::to_string(std::lround(y));
    };
    double y = 550 + 1995 + 50 + 2 * paper.Line(8, true);
    EXPECT_EQ(PlaceOf(page, "date, 1/60s"), at(500, y));
    EXPECT_EQ(PlaceOf(page, "6.3 Mp"), at(500, y + paper.Line(8)));
    y += 2 * paper.Line(8) + 40;
    EXPECT_EQ(PlaceOf(page, std::string(65, 'a')), at(500, y));
    EXPECT_EQ(PlaceOf(page, "d"), at(500, y + 3 * paper.Line(6)));
    EXPECT_EQ(PlaceOf(page, "e"), "none");
    EXPECT_EQ(PlaceOf(page, "rest"), "none");
    EXPECT_EQ(All<PaperText>(page).back().font.points, 6);

    page = add(kSheet4x6, std::string(40, 'a') + std::string(36, 'b') + "\r\n" +
                              std::string(40, 's') + "over\r\nthird");
    y = 550 + 1333 + 50 + 2 * paper.Line(7, true) + 40;
    EXPECT_EQ(PlaceOf(page, std::string(35, 'b')), at(540, y + paper.Line(7)));
    EXPECT_EQ(PlaceOf(page, std::string(40, 's')), at(500, y + 2 * paper.Line(7)));
    EXPECT_EQ(PlaceOf(page, "over"), "none"); // the first line alone goes on
    EXPECT_EQ(PlaceOf(page, "third"), "none");
    EXPECT_EQ(PlaceOf(page, "date, 1/60s"), "none");

    page = add(kSheet5x8, std::string(40, 'a') + "rest\r\nsecond");
    y = 550 + 998 + 50 + 2 * paper.Line(6, true) + 40;
    EXPECT_EQ(PlaceOf(page, "rest"), at(520, y + paper.Line(6)));
    EXPECT_EQ(PlaceOf(page, "second"), "none");
    EXPECT_EQ(PlaceOf(add(kSheet2x2, "never"), "never"), "none");
}

TEST(ThumbnailSheet, HeadingTakesTheDayAlone) {
    EXPECT_EQ(SheetHeading("v61.14", "06/22/2004 8:15:30 PM", "/p"),
              "Tarn_View v61.14 06/22/2004 - /p");
}

} // namespace
} // namespace tarn::testing
