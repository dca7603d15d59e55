#include "Pages.h"

#include "web/PageBuild.h"
#include "web/PageEntry.h"
#include "web/PageFile.h"
#include "web/PageHead.h"
#include "web/SavedValues.h"

#include "support/ForwardingFiles.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

using namespace tarn;
using namespace tarn::testing;

namespace {

EntryFacts Picture() {
    EntryFacts facts;
    facts.name = "m31.jpg";
    facts.type = ".JPG";
    facts.width = 3000;
    facts.height = 2000;
    facts.previewWidth = 800;
    facts.previewHeight = 533;
    facts.sizeText = "3000 x 2000";
    facts.note = "Clear sky\r\nSeeing 4/5";
    facts.panel = {"File name: m31.jpg", "Date"};
    return facts;
}

EntryFacts Video() {
    EntryFacts facts = Picture();
    facts.name = "clip.mp4";
    facts.type = ".MP4";
    facts.fileSizeText = "123 KB";
    return facts;
}

std::string Entry(const HtmlSettings& s, const EntryFacts& facts, bool exif = true) {
    PageRun run;
    run.Begin();
    run.linkTarget = "target.jpg";
    run.prefix = "../";
    return PageEntry(s, exif, facts, run);
}

} // namespace

TEST(Pages, AreWhole) {
    HtmlSettings s;
    s.HtmlWidth = 800;
    s.HtmlHeight = 533;
    s.HtmlHomePage = "../index.html";
    s.HtmlHomeText.clear();
    s.HtmlEmail = "a@b.c";
    EXPECT_EQ(PageHead(s, "v61.14", "11/25/2026 1:02:03 PM") + PageTitleTable(s, "now") +
                  Entry(s, Picture()) + PageClose(),
              Golden("page.html"));
    s.HtmlHomePage.clear();
    s.HtmlEmail.clear();
    EXPECT_TRUE(Has(PageTitleTable(s, ""), {"  <div class=\"buttons\">", "  </div>"}));
    s.HtmlPictureType = 4;
    EXPECT_TRUE(Has(PageHead(s, "", ""), {"          padding:0px; margin: 20px 10px 15px 10px;"}));
    s.HtmlZoomPan = 1;
    EXPECT_TRUE(PageHead(s, "", "").ends_with(
        Lines({"<body bgcolor=\"#FFFFFF\" link=\"#000000\" alink=\"#000000\" "
               "vlink=\"#000000\"; onload = \"; zoomload(); \" > ",
               "", "<body onload=\"zoomload();\">", "<script src=\"wheelzoom.js\"></script>",
               "<script>", "function zoomload() {", "  var zoomIn  = -100;", "  var zoomOut = 100;",
               "  images = wheelzoom(document.querySelectorAll('img'), {zoom: 0.1, maxZoom: 10});",
               "}", "</script>"})));
}

TEST(PageLinks, BreakAtSomeNames) {
    for (const char* name : {"M 31.jpg", "Mönch & Eiger (2).jpg", "12:30.jpg", "a'b.jpg", ""})
        EXPECT_FALSE(BreaksItsLink(name)) << name;
    for (const char* name : {"a#1.jpg", "a?.jpg", "50%20.jpg", "5\".jpg", "a\\b.jpg", "ab:c.jpg",
                             " a.jpg", "a.jpg ", "\xE6\x98\x9F.jpg"})
        EXPECT_TRUE(BreaksItsLink(name)) << name;
}

TEST(PageLinks, ComparePathDepthsOnly) {
    EXPECT_EQ(RelativePrefix("/a/b/page.html", "/c/d"), "");
    EXPECT_EQ(RelativePrefix("/a/b/page.html", "/c/d/"), "");
    EXPECT_EQ(RelativePrefix("/a/page.html", "/a/b"), "../");
    EXPECT_EQ(RelativePrefix("/page.html", "/"), "");
    std::string link;
    EXPECT_TRUE(HomeLink("/a/b/page.html", "/x/home.html", link));
    EXPECT_EQ(link, "../home.html");
    EXPECT_FALSE(HomeLink("/a/page.html", "/x/y/home.html", link));
    EXPECT_EQ(link, "");
}

TEST(PageEntries, OfTheOtherFormatsDifferInTheirFrames) {
    HtmlSettings s;
    EntryFacts facts = Picture();
    facts.note.clear();
    s.HtmlPictureType = 2;
    s.HtmlLayout1 = false;
    s.HtmlLayout2 = true;
    std::string entries;
    entries += Entry(s, facts);
    s.HtmlPnotesBottom = false;
    entries += Entry(s, facts);
    s.HtmlPictureType = 3;
    entries += Entry(s, facts);
    s.HtmlPictureType = 4;
    s.HtmlSizeO = false;
    s.HtmlSizeW = true;
    s.HtmlWidth = 4000; // no enlarging
    s.HtmlPicLeft = true;
    facts.note = "One";
    entries += Entry(s, facts);
    EXPECT_EQ(entries, Golden("entries.html"));
}

TEST(PageEntries, OfTextFilesHoldTheirLines) {
    HtmlSettings s;
    EntryFacts facts;
    facts.name = "log.txt";
    facts.type = ".TXT";
    facts.lines = {"a <b>", ""};
    EXPECT_TRUE(Has(Entry(s, facts), {"  <td class=\"ct\">", "  <p class=\"tx\">", "a <b><br>",
                                      "<br>", "  </p>", "  </td>", "  <td class=\"lt\">"}));
    s.HtmlPictureType = 2;
    facts.type = ".LOG";
    EXPECT_TRUE(Has(Entry(s, facts), {"  </p>", "<p class=\"line\"></p>", "  </td>", " </tr>"}));
}

TEST(PageEntries, LinkByTheirMode) {
    HtmlSettings s;
    s.HtmlSizeF = true; // two modes on: two image lines
    EXPECT_TRUE(Has(Entry(s, Picture()),
                    {"<a id=\"link1\" href=\"m31.jpg\" > <img SRC=\"../m31.jpg\" height=533 "
                     "width=800",
                     "<a id=\"link1\" href=\"m31.jpg\" > <img SRC=\"../m31.jpg\" height=2000 "
                     "width=3000",
                     " name=\"flip1\"", " title=\"Click to view\""}));
    s.HtmlSizeF = s.HtmlLayout1 = false;
    s.HtmlLayout3 = true;
    EXPECT_TRUE(Has(Entry(s, Picture()), {" title=\"Click to view linked image\""}));
    EXPECT_NE(Entry(s, Picture()).find("<a id=\"link1\" href=\"target.jpg\"> <img"),
              std::string::npos);
    s.HtmlLayout2 = true;
    s.HtmlZoomPan = 1;
    const std::string zoom = Entry(s, Picture());
    EXPECT_TRUE(Has(zoom, {" name=\"flip1\"",
                           " title=\"Use mouse wheel to zoom, left click and hold to pan\"",
                           " ALT=\"m31.jpg\">"}));
    EXPECT_TRUE(
        Has(zoom, {"<b>Clear sky</b></font>",
                   "  <span style=\"margin: 0 0 0 50px; font-style: italic; font-weight: normal;",
                   "  text-decoration: underline; text-decoration-color: #000000;\">",
                   "  <a title=\"Click to view full size 3000 x 2000\"",
                   "  href=\"m31.jpg\"> View Image</a>", "  </span>", "  <font color=#000000>",
                   "  <small>&nbsp;(3000 x 2000)</small>", "  <br>", "<font color=#000000>"}));
    const std::string video = Entry(s, Video());
    EXPECT_TRUE(Has(video, {"<a id=\"link1\" href=\"clip.mp4\" > <img SRC=\"../MP4.jpg\" "
                            "height=533 width=800",
                            " name=\"flip1\"", "Click to play video", " ALT=\"MP4.jpg\"></a>"}));
    EXPECT_TRUE(
        Has(video, {"  <a title=\"Click to play video\"", "  href=\"clip.mp4\"> Play Video</a>",
                    "  </span>", "  <font color=#000000>", "  <small>&nbsp;(123 KB)</small>"}));
}

TEST(PageEntries, SwitchLabelsAndLinkVideos) {
    HtmlSettings s;
    EXPECT_FALSE(IsLabelPicture(s, "m31_Caption.jpg"));
    s.HtmlCheckImageLabel = 1;
    EXPECT_FALSE(IsLabelPicture(s, "m31_Caption.jpg")); // no text is set
    s.HtmlTextImageLabel = "_Caption";
    EXPECT_TRUE(IsLabelPicture(s, "m31_Caption.jpg"));
    EXPECT_FALSE(IsLabelPicture(s, "m31_caption.jpg"));
    EXPECT_EQ(LabelNameOf(s, "m31.jpg"), "m31_Caption.jpg");
    EntryFacts facts = Picture();
    EXPECT_FALSE(Has(Entry(s, facts), {" Turn labels - "}));
    facts.hasLabel = true;
    EXPECT_TRUE(
        Has(Entry(s, facts),
            {"</font>", "<p class=\"labels\">", " Turn labels - ", " <a href=\"#\"",
             " onclick=\"if (document.images) document.flip1.src='m31_Caption.jpg';",
             "             document.getElementById('link1').href='m31_Caption.jpg';",
             "             document.getElementById('spanoff1').style.fontWeight='normal';",
             "             document.getElementById('spanon1').style.fontWeight='bold';",
             "             return false;\">", "             <span id=\"spanon1\">On</a>",
             " <a href=\"#\"", " onclick=\"if (document.images) document.flip1.src='m31.jpg';",
             "             document.getElementById('link1').href='m31.jpg';",
             "             document.getElementById('spanoff1').style.fontWeight='bold';",
             "             document.getElementById('spanon1').style.fontWeight='normal';",
             "             return false;\">",
             "             <span id=\"spanoff1\" style=\"font-weight: bold;\">Off</a>", "</p>",
             "<p class=\"line\"></p>"}));
    s.HtmlMp4Video = 1;
    facts.hasVideo = true;
    EXPECT_TRUE(Has(Entry(s, facts),
                    {"<br><a href=\"m31.mp4\"><u>Click here for mp4 video</u></a>", "  </td>"}));
    s.HtmlPictureType = 3;
    EXPECT_EQ(Entry(s, facts).find("mp4"), std::string::npos);
}

TEST(PageEntries, BreakPagesAndNumberOn) {
    HtmlSettings s;
    s.HtmlPageBreak = 3;
    PageRun run;
    run.Begin();
    for (int i = 1; i <= 7; ++i) {
        const std::string entry = PageEntry(s, false, Picture(), run);
        EXPECT_EQ(entry.ends_with(Lines({"<p style=\"page-break-before: always\">", ""})),
                  i % 3 == 0)
            << i;
        EXPECT_NE(entry.find("\"flip" + std::to_string(i) + "\""), std::string::npos);
    }
}

TEST(PageBuilds, CountAnewWithAHeaderAloneAndTellAMissingScript) {
    const TestFolder folder;
    ForwardingFiles files;
    const std::string path = folder.Path() + "/a.html";
    PageBuild page("v1");
    page.Choose(path, folder.Path());
    HtmlSettings s;
    s.HtmlPageBreak = 2;
    // What stands on the page after a beginning, an entry and the close.
    const auto text = [&](bool append) {
        EXPECT_TRUE(append ? page.Append(files, "now") : page.Begin(files, s, "now", "none"));
        EXPECT_TRUE(page.Add(files, s, false, Picture()));
        EXPECT_TRUE(page.Close(files));
        return files.Read(path, SIZE_MAX, nullptr).value_or("");
    };
    const std::string pageBreak = "<p style=\"page-break-before: always\">";
    EXPECT_NE(text(false).find("\"flip1\""), std::string::npos);
    const std::string appended = text(true);
    EXPECT_NE(appended.find("\"flip2\""), std::string::npos);
    EXPECT_NE(appended.find(pageBreak), std::string::npos);
    const std::string anew = text(false);
    EXPECT_NE(anew.find("\"flip1\""), std::string::npos);
    EXPECT_EQ(anew.find(pageBreak), std::string::npos);

    s.HtmlZoomPan = 1;
    EXPECT_FALSE(page.Begin(files, s, "now", folder.Path() + "/none.js"));
    EXPECT_FALSE(page.IsOpen());
    EXPECT_EQ(page.Fault().title, "Copy javascript file error");
    EXPECT_EQ(page.Fault().text,
              "Error creating javascript file\n" + path + "\n\nError 2, No such file or directory");
    EXPECT_TRUE(files.Read(path, SIZE_MAX, nullptr)->ends_with("}\r\n</script>\r\n"));
}

TEST(PageBuilds, KeepWhatTheyReplaceAndWriteThroughNoLinkThatLeadsOut) {
    const TestFolder outside;
    const TestFolder folder;
    ForwardingFiles files;
    HtmlSettings s;
    s.HtmlZoomPan = 1;
    const std::string script = outside.Write("wheelzoom.js", "zoom");
    const std::string theirs = outside.Write("theirs.html", std::string(100, 't'));
    const std::string path = folder.Write("kept by a page.html", "an older page");
    const std::string scriptBeside = folder.Write("wheelzoom.js", "an older script");
    const TestFolder data;
    ::setenv("XDG_DATA_HOME", data.Path().c_str(), 1);
    const std::string basket = data.Path() + "/Trash/files/";
    PageBuild page("v1");
    page.Choose(path, folder.Path());
    ASSERT_TRUE(page.Begin(files, s, "now", script));
    ASSERT_TRUE(page.Close(files));
    EXPECT_EQ(files.Read(basket + "kept by a page.html", 100, nullptr), "an older page");
    EXPECT_EQ(files.Read(scriptBeside, 100, nullptr), "zoom");
    EXPECT_EQ(files.Read(basket + "wheelzoom.js", 100, nullptr), "an older script");

    const std::string link = folder.Path() + "/link.html";
    std::filesystem::create_symlink(theirs, link);
    page.Choose(link, folder.Path());
    for (const bool append : {true, false}) {
        EXPECT_FALSE(append ? page.Append(files, "now") : page.Begin(files, s, "now", script));
        EXPECT_EQ(page.Fault().text, "Error writting to html file\n" + link +
                                         "\n\nError 0, it is a link that leads out of the folder");
    }
    // The script of such a name neither.
    std::filesystem::remove(scriptBeside);
    std::filesystem::create_symlink(theirs, scriptBeside);
    page.Choose(path, folder.Path());
    EXPECT_FALSE(page.Begin(files, s, "now", script));
    EXPECT_EQ(page.Fault().title, "Copy javascript file error");
    EXPECT_EQ(files.Read(theirs, 1000, nullptr), std::string(100, 't'));
}

TEST(PageFiles, AppendOverTheCloseAndStopAtTheirLimit) {
    const TestFolder folder;
    ForwardingFiles files;
    std::string error;
    PageFile page;
    ASSERT_TRUE(page.Create(files, folder.Path() + "/a.html", "HEAD\r\n\r\n", &error)) << error;
    ASSERT_TRUE(page.Add(files, "ONE\r\n\r\n", &error));
    ASSERT_TRUE(page.Close(files, &error));
    for (const char* entry : {"TWO\r\n\r\n", "THREE\r\n\r\n"}) {
        ASSERT_TRUE(page.Append(files, folder.Path() + "/a.html", "now", &error)) << error;
        ASSERT_TRUE(page.Add(files, entry, &error));
        ASSERT_TRUE(page.Close(files, &error));
    }
    const std::string mark = "<!-- Appended data on now follows -->\r\n";
    EXPECT_EQ(files.Read(page.Path(), SIZE_MAX, nullptr),
              "HEAD\r\n\r\nONE\r\n" + mark + "TWO\r\n" + mark +
                  "THREE\r\n\r\n</body>\r\n</html>\r\n");

    const std::string most(kLargestAppend, 'x');
    const std::string longest = folder.Write("long.html", most);
    EXPECT_TRUE(page.Append(files, longest, "now", &error));
    page.Close(files, &error);
    for (const std::string& bytes : {most + "x", std::string(19, 'x')}) {
        const std::string refused = folder.Write("refused.html", bytes);
        EXPECT_FALSE(page.Append(files, refused, "now", &error));
        EXPECT_EQ(files.Read(refused, SIZE_MAX, nullptr), bytes);
    }
}

TEST(PageFiles, AFailedAddLeavesThePage) {
    const TestFolder folder;
    ForwardingFiles files;
    std::string error;
    PageFile page;
    ASSERT_TRUE(page.Create(files, folder.Path() + "/a.html", "HEAD\r\n", &error));
    files.onChange = [](const std::string&, const std::string&) { return "No space"; };
    EXPECT_FALSE(page.Add(files, "ONE\r\n", &error));
    EXPECT_EQ(error, "No space");
    files.onChange = {};
    // What stands there comes back when the disk takes only a part.
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = 8;
    std::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_FALSE(files.Extend(page.Path(), 2, "much longer", &error));
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_TRUE(page.Close(files, &error));
    EXPECT_EQ(files.Read(page.Path(), SIZE_MAX, nullptr), "HEAD\r\n</body>\r\n</html>\r\n");
}
