#include "print/DataSheet.h"

#include "Orders.h"
#include "PictureFiles.h"

#include <gtest/gtest.h>

#include <chrono>

namespace tarn::testing {
namespace {

std::string Size(double w, double h, bool fixed) {
    const PaperSize size = DataPictureSize(w, h, fixed);
    return std::to_string(std::lround(size.width)) + "x" + std::to_string(std::lround(size.height));
}

TEST(DataSheet, PicturesAreEnlargedAlongTheirLongerSide) {
    EXPECT_EQ(Size(3000, 1500, false), "5000x2500");
    EXPECT_EQ(Size(1500, 3000, false), "2500x5000");
    EXPECT_EQ(Size(3000, 1500, true), "7985x3993");
    EXPECT_EQ(Size(1500, 3000, true), "2995x5990");
    EXPECT_EQ(Size(6000, 4000, false), "7985x5323"); // too large for the box: as if fixed
    EXPECT_EQ(Size(3000, 5000, false), "3594x5990"); // too high is enough
    EXPECT_EQ(Size(5985, 3990, false), "7985x5323");
    EXPECT_EQ(Size(1, 30000, true), "0x5990");
}

TEST(DataSheet, EverythingStandsAtItsPlace) {
    for (const bool landscape : {false, true}) {
        Paper paper({}, "A4", landscape);
        const double width = landscape ? 16838 : 11906;
        const double height = landscape ? 11906 : 16838;
        DataSheet sheet{"v61.14",           "/p/a.jpg",   {5000, 2500},   TellTale(60, 30),
                        {"row 1", "row 2"}, "one\r\ntwo", "date and time"};
        PrintDataSheet(*paper.printer, sheet, {});
        const PaperPage& page = paper.Page();
        const auto at = [](double x, double y) {
            return std::to_string(std::lround(x)) + "," + std::to_string(std::lround(y));
        };
        EXPECT_EQ(PlaceOf(page, "Tarn_View v61.14"), "100,200");
        EXPECT_DOUBLE_EQ(All<PaperRule>(page).at(0).y, 200 + paper.Line(8) + 100);
        EXPECT_EQ(All<PaperRule>(page).at(0).toX, width);
        const PaperFont small{"Arial", 8};
        const double path = paper.printer->TextWidth(small, "/p/a.jpg");
        EXPECT_EQ(PlaceOf(page, "/p/a.jpg"), at((width - path) / 2, 700));
        const PaperBox frame = All<PaperBox>(page).at(0);
        EXPECT_EQ(Place(frame), Place({width / 2 - 2500, 1200, 5000, 2500}));
        EXPECT_EQ(Place(All<PaperPicture>(page).at(0).place), Place(frame));
        const double row = paper.printer->LineHeight({"Courier New", 9, true});
        EXPECT_EQ(PlaceOf(page, "row 1"), "2100,8000");
        EXPECT_EQ(PlaceOf(page, "row 2"), at(2100, 8000 + row));
        const double notes = 8000 + 2 * row + 400;
        EXPECT_EQ(PlaceOf(page, "Notes:"), at(2100, notes));
        const double line = paper.Line(9);
        EXPECT_EQ(PlaceOf(page, "one"), at(1600, notes + line + 50));
        EXPECT_EQ(PlaceOf(page, "two"), at(1600, notes + 2 * line + 50));
        const double date = paper.printer->TextWidth(small, "date and time");
        EXPECT_EQ(PlaceOf(page, "date and time"), at(width - 1000 - date, height - 1500));
        for (const PaperText& text : All<PaperText>(page)) {
            EXPECT_EQ(text.font.bold, text.text.find("row") == 0) << text.text;
            EXPECT_EQ(text.font.underline && text.font.italic, text.text == "Notes:");
        }
    }
}

TEST(DataSheet, ALongNoteRunsOffQuickly) {
    std::string note;
    for (int i = 0; i < 10000; ++i) note += "line\r\n";
    Paper paper;
    const auto start = std::chrono::steady_clock::now();
    PrintDataSheet(*paper.printer, {"v", "/p", {}, {}, {}, note, "now"}, {});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    ASSERT_EQ(paper.printer->Pages().size(), 1U);
    const auto texts = All<PaperText>(paper.Page());
    EXPECT_GT(texts.at(texts.size() - 2).y, 16838 - 300); // down to the foot
    EXPECT_NE(PlaceOf(paper.Page(), "now"), "none");
}

} // namespace
} // namespace tarn::testing
