#include "Pages.h"

#include "web/Gallery.h"

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

int Count(const std::string& page, std::string_view part) {
    int count = 0;
    for (auto at = page.find(part); at != std::string::npos; at = page.find(part, at + 1)) ++count;
    return count;
}

GalleryRunFacts RunOf(int count, bool frames = false) {
    GalleryRunFacts run;
    run.frames = frames;
    run.count = count;
    run.thumbnailSize = 120;
    run.version = "v61.14";
    run.subFolder = "thumbnails";
    run.indexName = "index.html";
    run.now = "now";
    return run;
}

GalleryPicture Picture() {
    GalleryPicture picture;
    picture.name = "a.jpg";
    picture.thumbnail = "T120_a.jpg";
    picture.width = 3000;
    picture.height = 2000;
    picture.fileBytes = 1000000;
    picture.note = "One\r\nTwo\r\nThree\r\nTelescope: 80 mm\r\nFive";
    picture.panel = {"File name: a.jpg"};
    return picture;
}

std::string Page(const GallerySettings& s, int k = 1, int count = 3, bool frames = false) {
    return GalleryPicturePage(s, RunOf(count, frames), Picture(), k);
}

std::string Cells(const GallerySettings& s, int count, const GalleryPicture& picture,
                  bool frames = false) {
    const GalleryRunFacts run = RunOf(count, frames);
    GalleryCells cells(s, run);
    std::string all;
    for (int i = 0; i < count; ++i) all += cells.Next(picture);
    return all;
}

} // namespace

TEST(GalleryCells, StandInRowsAndBreakPages) {
    GallerySettings s;
    s.HtmlThumbSlider = 4;
    const std::string ten = Cells(s, 10, Picture());
    EXPECT_EQ(Count(ten, " <tr>\r\n"), 3);
    EXPECT_EQ(Count(ten, "</tr>\r\n"), 3);
    EXPECT_TRUE(ten.ends_with(Lines({"</td>", "", "</tr>"})));
    EXPECT_EQ(Count(Cells(s, 8, Picture()), "</tr>\r\n"), 2);
    s.HtmlThumbPagebreak = 1;
    s.ThumbImagePos = 1;
    const std::string_view table =
        "<table border=0 cellspacing=5 cellpadding=0 cols=4; align=center>";
    EXPECT_TRUE(Has(
        Cells(s, 10, Picture()),
        {"</tr>", "</table>", "", "<p style=\"page-break-before: always\">", table, "", " <tr>"}));
    EXPECT_EQ(Count(Cells(s, 10, Picture()), "page-break"), 2);
    EXPECT_EQ(Count(Cells(s, 8, Picture()), "page-break"), 1);
}

TEST(GalleryCells, ShowTheirNotesInThatOrder) {
    GallerySettings s;
    s.ThumbCheckTele = 1;
    s.HtmlThumbNotesT = 10; // no limit: the telescope comes twice
    EXPECT_TRUE(Has(Cells(s, 1, Picture()), {"<br>Five", "<br>Telescope: 80 mm", "</a>"}));
    s.HtmlThumbNotes = 0;
    s.SizeCheck = 0;
    s.NoLinkCheck = 1;
    EXPECT_TRUE(
        Has(Cells(s, 1, Picture()), {"  <td id=1 class=\"thumbs\">",
                                     "    <img class=\"thumbs\" SRC=\"thumbnails/T120_a.jpg\"><br>",
                                     "<br>Telescope: 80 mm", "</td>"}));
    s.NoLinkCheck = 0;
    EXPECT_TRUE(Has(Cells(s, 1, Picture(), true),
                    {"    <a class=\"thumbs\" href=\"javascript:SelectFrame('ImageT001.html')\"",
                     "       onclick=\"ChangeClass(1)\">"}));
    EXPECT_EQ(GalleryFileSize(999999), "1000K");
    EXPECT_EQ(GalleryFileSize(1000000), "1.0M");
    EXPECT_EQ(GalleryFileSize(1150000), "1.2M");
    EXPECT_EQ(GalleryFileSize(500), "1K");
    EXPECT_EQ(PicturePageName(1000), "ImageT1000.html");
}

TEST(GalleryIndexes, AreWhole) {
    GallerySettings s;
    s.HtmlThumbNotesT = 2;
    s.ThumbCheckTele = 1;
    s.HtmlThumbHomeLink = 1;
    s.HtmlThumbHomeUrl = "../home.html";
    s.HtmlThumbEmailaddress = "a@b.c";
    s.HtmlThumbCloseWindow = 1;
    const GalleryRunFacts run = RunOf(1);
    EXPECT_EQ(GalleryIndexHead(s, run) + Cells(s, 1, Picture()) + GalleryIndexFoot(s, run),
              Golden("index.html"));
}

TEST(GalleryIndexes, OfFramesHaveAListBesideThePages) {
    GallerySettings s;
    s.HtmlThumbHomeLink = s.HtmlThumbCloseWindow = 1;
    s.HtmlThumbHomeUrl = "../home.html";
    const std::string frames = GalleryIndexHead(s, RunOf(3, true));
    EXPECT_TRUE(frames.starts_with("<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01Frameset//EN\">"));
    EXPECT_TRUE(frames.ends_with(Lines(
        {"</head>", "", "<frameset rows=\"60px, *\" bordercolor=\"#FFFFFF\">",
         "  <frame src=\"index_top.html\" scrolling=no name=\"Top\">",
         " <frameset cols=\"215px, *\">", "   <frame src=\"index_thumbs.html\" name=\"Thumbs\">",
         "   <frame src=\"ImageT001.html\" name=\"Full\">", " </frameset>", " </frameset>", "",
         "</html>"})));
    EXPECT_TRUE(Has(GalleryFrameTop(s, RunOf(3, true)),
                    {" <a class=\"navt\" href=\"../home.html\" target=\"_top\">Home</a>"}));
    const std::string list = Golden("index_thumbs.html"); // from its title on
    ASSERT_FALSE(list.empty());
    EXPECT_TRUE(GalleryFrameThumbsHead(s, RunOf(3, true)).ends_with(list));
    EXPECT_FALSE(Has(GalleryIndexFoot(s, RunOf(3, true)), {"<div class=\"navt\">"}));
}

TEST(GalleryPages, AreWholeWithNotesBelow) {
    GallerySettings s;
    s.HtmlThumbNotesRight = false;
    s.HtmlThumbNotesBottom = true;
    s.HtmlThumbData = 1;
    EXPECT_EQ(Page(s, 2), Golden("ImageT002_below.html"));
}

TEST(GalleryPages, OfFramesAreWholeCentredAndLimited) {
    GallerySettings s;
    s.HtmlThumbNotesRight = false;
    s.HtmlThumbNotesTop = true;
    s.ThumbImagePos = 1;
    s.HtmlThumbCs = 1;
    s.HtmlThumbCsWidth = false;
    s.HtmlThumbCsHeight = true;
    const std::string whole = Golden("ImageT002.html"); // from its title on
    ASSERT_FALSE(whole.empty());
    EXPECT_TRUE(Page(s, 2, 3, true).ends_with(whole)) << Page(s, 2, 3, true);
    s.HtmlThumbCsWidth = true; // both: the width counts, and both styles stand
    EXPECT_TRUE(Has(Page(s), {"        style=\"width:600px\"", "        style=\"height:600px\""}));
    EXPECT_EQ(GalleryMapSize(s, 3000, 2000).height, 400);
}

TEST(GalleryPages, AtTheirEdges) {
    GallerySettings s;
    s.HtmlThumbHomeLink = s.ThumbFileLink = s.HtmlThumbCloseWindow = 1;
    s.HtmlThumbHomeUrl = "home.html";
    s.ThumbFileLinkURL = "file.html";
    s.ThumbFileLinkButtonText = "File";
    GalleryPicture narrow = Picture();
    narrow.width = 101;
    narrow.note = "one line alone";
    const std::string page = GalleryPicturePage(s, RunOf(1), narrow, 1);
    EXPECT_TRUE(Has(page, {"  <a class=\"nav\" href=\"home.html\">Home</a>",
                           "  <a class=\"nav\" href=\"index.html\">Index</a>",
                           "  <a class=\"nav\" href=\"file.html\">File</a>"}));
    EXPECT_TRUE(Has(
        page, {"  <a class=\"nav\" href=\"javascript:top.close();\">Close window</a>", "</div>"}));
    EXPECT_TRUE(Has(page, {"      coords = \"0, 0, -25, 2000\" > "}));
    EXPECT_EQ(page.find("one line alone"), std::string::npos);
    s.HtmlThumbCs = 1;
    for (const auto& [value, hides] :
         {std::pair{"-5", true}, {"", true}, {"0", true}, {"1", false}}) {
        s.HtmlThumbCsValue = value;
        EXPECT_EQ(LimitHidesPictures(s), hides) << value;
    }
    s.HtmlThumbCsValue = "-5"; // half of it, rounded down
    EXPECT_TRUE(Has(Page(s), {"      coords = \"0, 0, -78, -3\" > "}));
}

TEST(GalleryPages, StepAndWrap) {
    GallerySettings s;
    EXPECT_TRUE(Has(Page(s, 1, 1), {"  <span class=\"inactive\">Previous</span>",
                                    "  <span class=\"inactive\">Next</span>"}));
    EXPECT_TRUE(
        Has(Page(s, 1, 1), {"   <area href=\"\" alt=\"Next\" target=\"_self\" shape=\"rect\" "}));
    EXPECT_TRUE(
        Has(Page(s, 3, 3),
            {"   <area href=\"ImageT003.html\" alt=\"Next\" target=\"_self\" shape=\"rect\" "}));
    s.HtmlThumbWrap = 1;
    EXPECT_TRUE(Has(Page(s, 1, 1), {"  <a class=\"nav\" href=\"ImageT001.html\">Previous</a>",
                                    "  <a class=\"nav\" href=\"ImageT001.html\">Next</a>"}));
    EXPECT_TRUE(Has(
        Page(s, 3, 3, true),
        {"  <a class=\"nav\" href=\"ImageT002.html\" onclick=\"ChangeClassT(2,3)\">Previous</a>",
         "  <a class=\"nav\" href=\"ImageT001.html\" onclick=\"ChangeClassT(4,3)\">Next</a>"}));
    EXPECT_EQ(Page(s, 1, 3, true).find("Index"), std::string::npos);
}

TEST(GalleryPages, LimitPicturesAndZoom) {
    GallerySettings s;
    s.HtmlThumbCs = 1;
    const auto size = GalleryMapSize(s, 3000, 2000);
    EXPECT_EQ(size.width, 600);
    EXPECT_EQ(size.height, 400);
    const std::string limited = Page(s);
    EXPECT_TRUE(Has(limited, {"  <a href=\"a.jpg\" target=\"_self\">",
                              "  <img class=\"exif_slide\"title=\"Click for full size picture "
                              "(3000x2000)\" src = \"a.jpg\"; border = 0; \"",
                              "        style=\"width:600px\"", "  usemap=\"#map_picture\">",
                              "  </a>", "</div>", "  </td>", "  <td class=\"notes\">",
                              "   <li class=\"plain\"><div class=\"line1\">One</div></li>",
                              "   <li class=\"plain\">Two</li>"}));
    s.HtmlThumbCsWidth = false;
    s.HtmlThumbCsHeight = true;
    EXPECT_EQ(GalleryMapSize(s, 3000, 2000).width, 900);
    s.ThumbNoLinkPic = 1;
    const std::string zoom = Page(s);
    EXPECT_TRUE(Has(zoom, {"</head>", "", "<body onload=\"zoomload();\">"}));
    EXPECT_TRUE(Has(zoom, {"  </td>",
                           "  <td class=\"wheel\">Use mouse wheel to zoom, left click and hold to "
                           "pan</td>",
                           " </tr>"}));
    EXPECT_TRUE(Has(
        zoom, {"  <td align=left>", "  <img class=\"exif_slide\" src = \"a.jpg\"; border = 0; \"",
               "        style=\"height:600px\"", "  usemap=\"#map_picture\">", "</div>"}));
    EXPECT_EQ(zoom.find("<map"), std::string::npos);
    s.ThumbImagePos = 2; // no limit in force
    EXPECT_EQ(GalleryMapSize(s, 3000, 2000).width, 3000);
    EXPECT_NE(Page(s).find("class=\"bg_full2\""), std::string::npos);
    s.HtmlThumbCs = 0;
    EXPECT_NE(Page(s).find("class=\"bg_full3\""), std::string::npos);
    EXPECT_EQ(GalleryMapSize(s, 0, 0).height, 0);
}

TEST(GalleryPages, ChooseNoteLines) {
    GallerySettings s;
    s.HtmlThumbNotesTop = true;
    s.HtmlThumbNotesRight = false;
    s.HtmlThumbNotesTopLine = 1;
    s.HtmlThumbBeginSliderTop = 4;
    s.HtmlThumbSliderTop = 5;
    s.NotesLineBottomCheck = "01010";
    s.LongNotesLine = 1;
    s.ThumbNavTop = false;
    s.ThumbImagePos = 2;
    const std::string page = Page(s);
    EXPECT_TRUE(Has(page, {"<tr style=\"position: relative; top: 3px; left: 10px;\">"}));
    EXPECT_TRUE(Has(page, {"  <a class=\"nav\" herf=\"#\" title=\"One\" style=\"cursor: default\"",
                           "  onclick=\"document.getElementById('table_notes').style.display='"
                           "block';",
                           "     return false;\">Show</a>"}));
    EXPECT_TRUE(Has(page, {"  <td class=\"desc1\">Telescope: 80 mm</td>",
                           "  <td class=\"desc2\">Five</td>", " </tr>"}));
    EXPECT_TRUE(
        Has(page, {" <tr style=\"position: fixed; bottom: 40px; left: 10px;\">",
                   "  <td align=left>", "  <div class=\"notes2\">", "Two", "  </div>",
                   "  <div class=\"notes2\">", "Telescope: 80 mm --", "  </div>", "  </td>"}));
    s.NotesLineBottomCheck = "10000";
    EXPECT_TRUE(Has(Page(s), {"  <div class=\"line1\">", "One", "  </div>", "  </td>"}));
}

TEST(GalleryStyles, FollowTheirOptions) {
    GallerySettings s;
    s.HtmlThumbTextColor = "11AA11";
    s.HtmlThumbBorderColor = "22BB22";
    s.HtmlThumbPageBgColor = "33CC33";
    s.HtmlThumbThumbBgColor = "44DD44";
    EXPECT_EQ(GalleryStyle(s), Golden("slides.css"));
    s = {};
    s.ThumbTitleBorder = s.ThumbTnailBorder = s.ThumbImageBorder = 0;
    s.ThumbBorderStyle = 1;
    s.ThumbNoLinkPic = 1;
    s.ThumbFileLink = 1;
    const std::string bare = GalleryStyle(s);
    EXPECT_EQ(Count(bare, "\r\n"), 73);
    EXPECT_TRUE(
        Has(bare, {"div.exif_title { border: 0px; ", "                 background-color: #000000;",
                   "                 padding: 5px; margin: 5px;}"}));
    EXPECT_TRUE(Has(bare, {"td.thumbs {font-size: smaller; border: 0px solid; padding: 5px;"}));
    EXPECT_TRUE(Has(bare, {"td.title {text-align: center; font-weight: bold; font-size: larger; "
                           "padding: 0 75px 0 0;}"}));
}
