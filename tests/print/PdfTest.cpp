// What stands in the file itself, read back by a tool of others.
#include "Orders.h"
#include "PictureFiles.h"
#include "print/DataSheet.h"
#include "print/ThumbnailSheet.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>

namespace tarn::testing {
namespace {

struct Word {
    double x, y, toX; // twips
};

std::map<std::string, Word> WordsOf(const std::string& pdf) {
    std::string out;
    std::FILE* pipe = ::popen(("pdftotext -bbox '" + pdf + "' -").c_str(), "r"); // NOLINT
    for (int c = 0; pipe && (c = std::fgetc(pipe)) != EOF;) out += static_cast<char>(c);
    if (pipe) ::pclose(pipe);
    const std::regex word("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\""
                          " yMax=\"[0-9.]+\">([^<]+)<");
    std::map<std::string, Word> words;
    for (std::sregex_iterator at(out.begin(), out.end(), word), end; at != end; ++at)
        words[(*at)[4]] = {std::stod((*at)[1]) * 20, std::stod((*at)[2]) * 20,
                           std::stod((*at)[3]) * 20};
    return words;
}

TEST(Pdf, TextsStandWhereTheyWereOrdered) {
    const TestFolder folder;
    const std::string path = folder.Path() + "/a.pdf";
    Paper paper(path);
    DataSheet data{"v1", "/p/middle.jpg", {7985, 5323}, TellTale(600, 400), {"row"}, "note", "now"};
    PrintDataSheet(*paper.printer, data, {});
    ThumbnailSheet sheet(*paper.printer, kSheet5x8, {}, "heading", 1);
    paper.printer->NewPage();
    for (int i = 1; i <= 40; ++i)
        sheet.Add({i, "n" + std::to_string(i), CellSize(kSheet5x8, 3, 2), {}, {}, {}, {}, {}, {}});
    EXPECT_FALSE(paper.files->Exists(path)); // nothing before the end
    std::string error;
    ASSERT_TRUE(paper.printer->End(&error)) << error;
    auto words = WordsOf(path);
    const auto check = [&](const std::string& text, double x, double y) {
        ASSERT_EQ(words.count(text), 1U) << text;
        EXPECT_NEAR(words[text].x, x, 3) << text;
        EXPECT_NEAR(words[text].y, y, 12) << text; // the reader takes another ascent
    };
    check("Tarn_View", 100, 200);
    EXPECT_NEAR(words["now"].toX, 11906 - 1000, 8);
    EXPECT_NEAR(words["now"].y, 16838 - 1500, 12);
    check("Page", 11906 - 2000, 200);
    check("1.", 500, 550 + 998 + 50);
    check("40.", 500 + 4 * 2240, 550 + 7 * 1800 + 998 + 50);
}

TEST(Pdf, AnotherPaperAndADroppedDocument) {
    EXPECT_EQ(Paper({}, "Letter").printer->PageSize().width, 12240);
    EXPECT_EQ(Paper({}, "Letter", true).printer->PageSize().height, 12240);
    EXPECT_EQ(Paper({}, "no such").printer->PageSize().height, 16838);
    const TestFolder folder;
    Paper paper(folder.Path() + "/none/a.pdf");
    paper.printer->Text(0, 0, {}, "x");
    paper.printer->NewPage();
    std::string error;
    EXPECT_FALSE(paper.printer->End(&error));
    EXPECT_FALSE(error.empty());
    paper.printer->Kill();
    ASSERT_EQ(paper.printer->Pages().size(), 1U);
    EXPECT_TRUE(paper.Page().empty());
}

TEST(Pdf, PicturesKeepTheirColoursAndNoMorePixelsThanTheirPlaceIsWorth) {
    Paper paper;
    EXPECT_EQ(paper.printer->PixelsFor(1440, 720), QSize(300, 150));
    paper.printer->Picture({0, 0, 1440, 960}, TellTale(300, 200));
    const auto pictures = All<PaperPicture>(paper.Page());
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_EQ(Quarters(QImage::fromData(QByteArray::fromStdString(pictures[0].jpeg))), "rgby");
}

} // namespace
} // namespace tarn::testing
