// Runs the built program and looks at what it prints and how it ends.
#include "FitsFiles.h"
#include "RunTarn.h"
#include "XisfFiles.h"

#include "console/Arguments.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"
#include "support/Trees.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

// A picture of one colour that needs no library to be written, 24 bits a pixel, rows of whole
// words.
std::string Bitmap(int width, int height) {
    std::string bytes = "BM";
    const auto put = [&bytes](std::initializer_list<std::uint32_t> words) {
        for (const std::uint32_t word : words)
            for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(word >> shift);
    };
    const auto row = static_cast<std::uint32_t>((width * 3 + 3) / 4 * 4);
    const auto size = row * static_cast<std::uint32_t>(height);
    put({54 + size, 0, 54, 40, static_cast<std::uint32_t>(width),
         static_cast<std::uint32_t>(height), 1 | 24U << 16, 0, size, 0, 0, 0, 0});
    return bytes + std::string(size, '\x40');
}

} // namespace

TEST(Tarn, PrintsPanels) {
    const TestFolder folder;
    const std::string sky = folder.Write("m[31].fit", NightSky(20, 10, {{"OBJECT", "'M 31'"}}));
    const Outcome night = Tarn("info '" + sky + "'");
    EXPECT_EQ(night.status, 0);
    EXPECT_TRUE(Has(night, " - 20 x 10 - ")) << night.out;
    EXPECT_TRUE(Has(night, "\n      Object: M 31\n      Format: 16 bit\n")) << night.out;
}

TEST(Tarn, PrintsDatesAndNeverThoseOfAnotherPicture) {
    const TestFolder folder;
    const std::string dated = folder.Write("a.jpg", CanonPicture());
    const std::string undated = folder.Write("b.jpg", ExifBuilder(Endian::Big).Jpeg());
    const std::string plain = folder.Write("c.gif", "GIF89a");
    std::string expected = dated + "\t2004:06:22 20:15:30\t06/22/2004 8:15:30 PM\n";
    expected += undated + "\t\t\n" + plain + "\t\t\n";
    const Outcome outcome = Tarn("info --date -- " + dated + " " + undated + " " + plain);
    EXPECT_EQ(outcome.out, expected);
    EXPECT_EQ(outcome.status, 0);
}

// A telescope's picture has the date of its exposure, in the panel, too.
TEST(Tarn, DatesPicturesOfTelescopes) {
    const TestFolder folder;
    const std::vector<FitsWord> words{{"DATE-OBS", "'2024-11-05T21:14:33.5'"}};
    const std::string sky = folder.Write("a.fit", NightSky(20, 10, words));
    const std::string packed = folder.Write("a.fits.gz", Gzipped(NightSky(20, 10, words)));
    const std::string undated = folder.Write("b.fit", NightSky(20, 10));
    XisfPicture picture;
    picture.elements = "<Property id=\"Observation:Time:Start\" value=\"2024-11-05T21:14:33Z\"/>";
    const std::string xisf = folder.Write("c.xisf", XisfBytes({picture}));
    const std::string date = "\t2024:11:05 21:14:33\t11/05/2024 9:14:33 PM\n";
    EXPECT_EQ(Tarn("info --date " + sky + " " + packed + " " + undated + " " + xisf).out,
              sky + date + packed + date + undated + "\t\t\n" + xisf + date);
    const Outcome panel = Tarn("info " + xisf);
    EXPECT_TRUE(Has(panel, "\nPicture date: 11/05/2024 9:14:33 PM  Tuesday\n")) << panel.out;
    EXPECT_TRUE(Has(panel, "\n    Observed: 2024-11-05 21:14:33 UT\n")) << panel.out;
}

TEST(Tarn, SaysWhatIsWrongWithAnXisfFileInOneLine) {
    const TestFolder folder;
    XisfPicture picture;
    picture.attributes = "checksum=\"sha-256:00\"";
    const std::string path = folder.Write("a.xisf", XisfBytes({picture}));
    const Outcome outcome = Tarn("convert " + path);
    EXPECT_EQ(outcome.out, "tarn: " + path +
                               ": The XISF file cannot be read: block of image 1: checksum "
                               "SHA-256 differs\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST(Tarn, GoesOnBehindAFileThatCannotBeRead) {
    const TestFolder folder;
    const std::string good = folder.Write("a.jpg", CanonPicture());
    const Outcome outcome = Tarn("info /no/such.jpg " + folder.Path() + " " + good);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(Has(outcome, "tarn: /no/such.jpg: cannot be read\n"));
    EXPECT_FALSE(Has(outcome, "== /no/such.jpg"));
    EXPECT_TRUE(Has(outcome, "== " + good));
}

// Its rows are printed as far as they are true.
TEST(Tarn, ComplainsOfPicturesWhoseHeadersCannotBeRead) {
    const TestFolder folder;
    const std::string sky = NightSky(20, 10);
    for (const auto& [name, bytes] :
         {std::pair<const char*, std::string>{"cut.fit", sky.substr(0, 300)},
          {"broken.xisf", XisfBytesOf("<xisf><Image")},
          {"cut.jpg", "\xFF\xD8\xFF\xE0"},
          {"cut.gif", "GIF89a"},
          {"cut.bmp", Bitmap(20, 10).substr(0, 20)}}) {
        const std::string path = folder.Write(name, bytes);
        const Outcome outcome = Tarn("info " + path);
        EXPECT_EQ(outcome.status, 1) << name;
        EXPECT_TRUE(outcome.out.starts_with("== " + path + "\n")) << outcome.out;
        const std::size_t complaint = outcome.out.find("\ntarn: " + path + ": ");
        ASSERT_NE(complaint, std::string::npos) << outcome.out;
        EXPECT_EQ(outcome.out.find('\n', complaint + 1), outcome.out.size() - 1) << outcome.out;
    }
    const std::string cut = folder.Path() + "/cut.fit";
    const Outcome dates = Tarn("info --date " + cut);
    EXPECT_EQ(dates.status, 1);
    EXPECT_TRUE(dates.out.starts_with(cut + "\t\t\ntarn: " + cut + ": The FITS file")) << dates.out;
    // What is no picture at all has rows as before, and so has one whose end is missing.
    const std::string text = folder.Write("a.txt", "BM is how this text begins");
    const std::string ending = folder.Write("b.fit", sky.substr(0, sky.size() - 2880));
    for (const std::string& path : {text, ending}) {
        const Outcome outcome = Tarn("info " + path);
        EXPECT_EQ(outcome.status, 0) << outcome.out;
    }
}

TEST(Tarn, SetsFileDatesToPictureDates) {
    const TestFolder folder;
    const std::string dated = folder.Write("b.JPG", CanonPicture());
    const std::string undated = folder.Write("a.jpg", ExifBuilder(Endian::Big).Jpeg());
    const std::string other = folder.Write("c.avi", CanonPicture());
    for (const std::string& path : {dated, undated, other}) SetFileTime(path, 2001, 2, 3, 4, 5, 6);
    const auto time = [](const std::string& path) {
        return Tarn("info --date x; stat -c %y " + path).out;
    };
    const std::string rows = "a.jpg\t\nb.JPG\t06/22/2004 8:15:30 PM\n";
    EXPECT_EQ(Tarn("dates --dry-run " + folder.Path()).out, rows);
    EXPECT_NE(time(dated).find("2001-02-03 04:05:06"), std::string::npos);
    const Outcome outcome = Tarn("dates " + folder.Path());
    EXPECT_EQ(outcome.out, rows);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(time(dated).find("2004-06-22 20:15:30"), std::string::npos);
    for (const std::string& path : {undated, other})
        EXPECT_NE(time(path).find("2001-02-03 04:05:06"), std::string::npos) << path;
    EXPECT_EQ(Tarn("dates " + folder.Path() + "/none").status, 1);
    EXPECT_EQ(Tarn("dates").status, 2);
}

TEST(Tarn, ConvertsToNamesThatAreFree) {
    const TestFolder folder;
    const TestFolder to;
    const std::string path = folder.Write("a.bmp", Bitmap(200, 120));
    const std::string stem = folder.Path() + "/a";
    EXPECT_EQ(Tarn("convert " + path).out, path + " -> " + stem + ".jpg\n");
    const Outcome text = Tarn("convert --text 'M31 & M32' " + path);
    EXPECT_TRUE(Has(text, path + " -> " + stem + "-1.jpg\n"));
    EXPECT_NE(BytesOf(stem + ".jpg"), BytesOf(stem + "-1.jpg"));
    const Outcome full = Tarn("convert " + path);
    EXPECT_EQ(full.out, "tarn: " + path + ": 'a-1.jpg' already exists, aborted\n");
    EXPECT_EQ(full.status, 1);

    // Both would be "a-CM.jpg": the run does not write over itself.
    to.Write("A.JPG", "stands in the folder");
    const std::string cm = to.Path() + "/a-CM.jpg";
    const Outcome many = Tarn("convert --max-width 50 --quality 5 --to " + to.Path() + " " + path +
                              " " + stem + ".jpg " + folder.Path() + "/none.jpg");
    EXPECT_EQ(many.status, 1);
    EXPECT_TRUE(Has(many, path + " -> " + cm + "\n"));
    EXPECT_TRUE(Has(many, stem + ".jpg: 'a-CM.jpg' already exists, aborted\n"));
    EXPECT_TRUE(Has(many, "none.jpg: No such file or directory\n"));
    EXPECT_TRUE(Has(Tarn("info " + cm), " 50 x 30 "));
    EXPECT_EQ(BytesOf(to.Path() + "/A.JPG"), "stands in the folder");
    // The next run does, by way of the wastebasket.
    const std::string before = BytesOf(cm);
    const TestFolder data;
    ::setenv("XDG_DATA_HOME", data.Path().c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    EXPECT_EQ(Tarn("convert --to " + to.Path() + " " + path).status, 0);
    EXPECT_NE(BytesOf(cm), before);
    EXPECT_EQ(Trashed("a-CM.jpg"), before);
}

// As other programs read and write them, too.
TEST(Tarn, MarksPicturesInSidecars) {
    const TestFolder folder;
    const TestFolder out;
    for (const char* name : {"a.bmp", "b.bmp", "c,d.bmp"}) folder.Write(name, Bitmap(20, 10));
    const std::string in = folder.Path() + "/";
    EXPECT_EQ(Tarn("mark --rating 3 " + in + "a.bmp " + in + "b.bmp").status, 0);
    EXPECT_EQ(Tarn("mark --keep " + in + "a.bmp").status, 0);
    EXPECT_EQ(Tarn("mark --reject " + in + "c,d.bmp").status, 0);
    EXPECT_EQ(Tarn("marks --csv " + folder.Path()).out, "file,mark,rating\n" + in +
                                                            "a.bmp,keep,3\n" + in + "b.bmp,,3\n\"" +
                                                            in + "c,d.bmp\",reject,0\n");
    EXPECT_EQ(Tarn("marks " + in + "b.bmp").out, "-      3 " + in + "b.bmp\n");

    EXPECT_EQ(Tarn("page --kept " + out.Path() + "/p.html " + folder.Path()).out,
              out.Path() + "/p.html: 1 images\n");
    EXPECT_EQ(Tarn("gallery --stars 3 --thumbnails " + in + "g.html " + folder.Path()).out,
              in + "g.html: 2 pictures\n");
    EXPECT_TRUE(Has(Tarn("thumbnails --kept --stars 3 " + folder.Path()), "a.bmp"));
    EXPECT_EQ(BytesOf(in + "thumbnails/T120_b.jpg"), "(none)");
    const Outcome none = Tarn("sheet 2x2 --stars 4 " + out.Path() + "/s.pdf " + folder.Path());
    EXPECT_EQ(none.status, 1);
    EXPECT_TRUE(Has(none, "has no pictures with such marks")) << none.out;

    EXPECT_EQ(Tarn("mark --clear " + in + "a.bmp").status, 0);
    EXPECT_EQ(Tarn("marks " + in + "a.bmp").out, "-      0 " + in + "a.bmp\n");
    folder.Write("b.bmp.xmp", "no XMP");
    const Outcome broken = Tarn("mark --keep " + in + "b.bmp " + in + "none.bmp");
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(broken.out, "tarn: " + in + "b.bmp: its sidecar: it is no XMP\ntarn: " + in +
                              "none.bmp: No such file or directory\n");
    EXPECT_EQ(BytesOf(in + "b.bmp.xmp"), "no XMP");
    const Outcome unread = Tarn("marks --csv " + in + "b.bmp");
    EXPECT_EQ(unread.status, 1);
    EXPECT_TRUE(Has(unread, "file,mark,rating\n" + in + "b.bmp,,\n")) << unread.out;
    for (const char* usage :
         {"mark a.bmp", "mark --keep", "mark --keep --reject a.bmp", "mark --rating 6 a.bmp",
          "marks", "marks --all .", "page --stars x p.html ."})
        EXPECT_EQ(Tarn(usage).status, 2) << usage;
}

TEST(Tarn, LaysPages) {
    const TestFolder folder;
    const TestFolder notes;
    folder.Write("a.bmp", Bitmap(60, 40));
    folder.Write("b.bmp", Bitmap(900, 600));
    folder.Write("c.txt", "one\r\ntwo <b>");
    notes.Write("a.enf", "\"K\xE4se\nlow\"\r\n"); // another editor's line end
    const std::string page = folder.Path() + "/p.html";
    const std::string tail =
        " --notes " + notes.Path() + " --now NOW " + page + " " + folder.Path();
    const Outcome made =
        Tarn("page --set html_picture_type=2 --set html_title='M\xC3\xB6nch #1' --preview 300x200" +
             tail);
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.out, page + ": 3 images\n");
    const std::string first = BytesOf(page);
    for (const char* part :
         {" <title>M\xF6nch #1</title>\r\n", "<!-- Page created on NOW -->\r\n",
          "<b>K\xE4se</b></font><br>\r\n", "\r\nlow<br>\r\n",
          "SRC=\"a.bmp\" height=40 width=60\r\n", "SRC=\"b.bmp\" height=200 width=300\r\n",
          "\r\none<br>\r\ntwo <b><br>\r\n"})
        EXPECT_NE(first.find(part), std::string::npos) << part << first;

    // The page's own options hold again, and what was there stays but for its close.
    ASSERT_EQ(Tarn("page --append --reverse" + tail).status, 0);
    const std::string second = BytesOf(page);
    const std::string added = second.substr(second.find("<!-- Appended data on NOW follows -->"));
    EXPECT_LT(added.find("two <b>"), added.find("b.bmp"));
    EXPECT_LT(added.find("b.bmp"), added.find("a.bmp"));

    // A link to nothing has no camera data, whatever the picture before it had.
    const TestFolder broken;
    broken.Write("a.jpg", CanonPicture());
    std::filesystem::create_symlink("gone", broken.Path() + "/b.jpg");
    const Outcome links =
        Tarn("page --set html_exif_info=1 " + broken.Path() + "/p.html " + broken.Path());
    EXPECT_EQ(links.status, 1);
    EXPECT_TRUE(Has(links, "b.jpg: cannot be read")) << links.out;
    const std::string entries = BytesOf(broken.Path() + "/p.html");
    EXPECT_NE(entries.find("File name: b.jpg"), std::string::npos) << entries;
    EXPECT_NE(entries.find("EOS 20D"), std::string::npos);
    EXPECT_EQ(entries.find("EOS 20D"), entries.rfind("EOS 20D")) << entries;

    EXPECT_EQ(Tarn("page --append " + folder.Path() + "/none.html " + folder.Path()).status, 1);
    EXPECT_EQ(Tarn("page /no/such/p.html " + folder.Path()).status, 1);
    EXPECT_EQ(Tarn("page " + page + " /no/such").status, 1);
    for (const char* usage :
         {"page", "page --set nothing=1 x.html .", "page --set html_border x.html .",
          "page --set html_border=wide x.html .", "page --preview 0x1 x.html ."})
        EXPECT_EQ(Tarn(usage).status, 2) << usage;
    EXPECT_EQ(BytesOf(page), second);
}

TEST(Tarn, MakesGalleries) {
    const TestFolder folder;
    const TestFolder notes;
    const TestFolder data;
    ::setenv("XDG_DATA_HOME", data.Path().c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    folder.Write("a.bmp", Bitmap(60, 40));
    folder.Write("b.bmp", Bitmap(40, 60));
    notes.Write("b.enf", "\"old\"\r\nTelescope: 80 mm");
    const std::string index = folder.Path() + "/index.html";
    const std::string tail =
        " --notes " + notes.Path() + " --now NOW " + index + " " + folder.Path();
    const Outcome none = Tarn("gallery" + tail);
    EXPECT_EQ(none.status, 1);
    EXPECT_TRUE(Has(none, "2 pictures have no thumbnail")) << none.out;
    const Outcome made = Tarn(
        "gallery --thumbnails --set CheckOrder=1 --set ThumbCheckTele=1 --set html_thumb_slider=1" +
        tail);
    EXPECT_EQ(made.out, index + ": 2 pictures\n");
    const std::string cells = BytesOf(index);
    EXPECT_NE(cells.find("\"old\"\r\n<br>Telescope: 80 mm\r\n"), std::string::npos) << cells;
    EXPECT_LT(cells.find("T120_b.bmp"), cells.find("T120_a.bmp"));
    EXPECT_NE(BytesOf(folder.Path() + "/ImageT001.html").find("b.bmp (40x60)  [7K]"),
              std::string::npos);

    EXPECT_EQ(Tarn("gallery --frames" + tail).status, 0);
    const Tree site = ReadTree(folder.Path());
    EXPECT_TRUE(site.contains("index_top.html"));
    EXPECT_EQ(Tarn("gallery " + folder.Path() + "/ImageT001.html " + folder.Path()).status, 1);
    EXPECT_EQ(Tarn("gallery --set SizeCheck=on " + index + " " + folder.Path()).status, 2);
    EXPECT_EQ(ReadTree(folder.Path()), site);
    // Made, but of little use.
    const TestFolder other;
    folder.Write("a#1.bmp", Bitmap(60, 40));
    const Outcome poor = Tarn("gallery --thumbnails --set html_thumb_cs=1 "
                              "--set html_thumb_cs_value=abc " +
                              other.Path() + "/index.html " + folder.Path());
    EXPECT_EQ(poor.status, 1);
    for (const char* part : {"/index.html: 3 pictures", "its links will not find them",
                             "a#1.bmp: browsers", "'abc' is no number above 0"})
        EXPECT_TRUE(Has(poor, part)) << part << poor.out;
}

TEST(Tarn, PrintsSheets) {
    const TestFolder folder;
    const TestFolder notes;
    const TestFolder to;
    const std::string good = folder.Write("a.bmp", Bitmap(60, 40));
    folder.Write("b.bmp", Bitmap(40, 60));
    folder.Write("c.txt", "in the list, and no picture");
    notes.Write("a.enf", "Note-of-a");
    const std::string pdf = to.Path() + "/x.pdf";
    const auto text = [&] { return Tarn("info x; pdftotext -layout " + pdf + " -").out; };
    const std::string options = " --notes " + notes.Path() + " --now '1/2/2024 3:04 PM' ";
    const Outcome made = Tarn("sheet 3x4" + options + pdf + " " + folder.Path());
    EXPECT_EQ(made.status, 0) << made.out;
    const std::string sheet = text();
    for (const std::string& part :
         {" 1/2/2024 - " + folder.Path(), std::string("Page 1 of 1"), std::string("1. a.bmp"),
          std::string("3. c.txt"), std::string("Note-of-a"), std::string("60 x 40")})
        EXPECT_NE(sheet.find(part), std::string::npos) << part << sheet;
    EXPECT_EQ(sheet.find("3:04"), std::string::npos);
    EXPECT_EQ(Tarn("sheet 5x8 --no-print-notes" + options + pdf + " " + folder.Path()).status, 0);
    EXPECT_EQ(text().find("Note-of-a"), std::string::npos);
    EXPECT_EQ(Tarn("sheet data --paper letter" + options + pdf + " " + good).status, 0);
    for (const std::string& part : {good, std::string("Notes:"), std::string("Note-of-a"),
                                    std::string("File name: a.bmp"), std::string("3:04 PM")})
        EXPECT_NE(text().find(part), std::string::npos) << part;

    // A file that cannot be read is told; the sheet has its place, a data sheet is not made.
    const std::string bad = folder.Write("d.jpg", "no picture");
    const Outcome some = Tarn("sheet 4x6 " + pdf + " " + folder.Path());
    EXPECT_EQ(some.status, 1);
    EXPECT_TRUE(Has(some, "tarn: " + bad + ": "));
    EXPECT_NE(text().find("4. d.jpg"), std::string::npos);
    const std::string before = BytesOf(pdf);
    EXPECT_EQ(Tarn("sheet data " + pdf + " " + bad).status, 1);
    EXPECT_EQ(BytesOf(pdf), before);
    EXPECT_EQ(Tarn("sheet 3x4 /no/such/x.pdf " + folder.Path()).status, 1);
    EXPECT_EQ(Tarn("sheet 3x4 " + pdf + " " + to.Path()).status, 1);
    for (const std::string& usage :
         {std::string("sheet"), "sheet 9x9 " + pdf + " " + folder.Path(), "sheet 3x4 " + pdf,
          "sheet data --no-print-notes " + pdf + " " + good,
          "sheet 3x4 --paper Z9 " + pdf + " " + folder.Path()}) {
        const Outcome outcome = Tarn(usage);
        EXPECT_EQ(outcome.status, 2) << usage;
        EXPECT_TRUE(Has(outcome, "usage: tarn sheet (2x2|")) << usage;
    }
}

// What can be read of a damaged picture is shown on sheets and thumbnails, and never without a
// word.
TEST(Tarn, TellsOfDamagedPicturesWhateverIsMadeOfThem) {
    const TestFolder folder;
    const TestFolder to;
    const std::string bad = folder.Write("a.bmp", Bitmap(60, 120).substr(0, 5000));
    const std::string fault = "tarn: " + bad + ": The file ends too early\n";
    for (const std::string& work :
         {"convert --to " + to.Path() + " " + bad,
          "sheet 2x2 " + to.Path() + "/x.pdf " + folder.Path(), "thumbnails " + folder.Path()}) {
        const Outcome outcome = Tarn(work);
        EXPECT_EQ(outcome.status, 1) << work;
        EXPECT_TRUE(Has(outcome, fault)) << work << outcome.out;
    }
    EXPECT_FALSE(std::filesystem::exists(to.Path() + "/a.jpg"));
    EXPECT_TRUE(std::filesystem::exists(to.Path() + "/x.pdf"));
    EXPECT_TRUE(std::filesystem::exists(folder.Path() + "/thumbnails/T120_a.bmp"));
}

TEST(Tarn, MakesThumbnailsOfAFolder) {
    const TestFolder folder;
    const TestFolder notes;
    folder.Write("a.b.bmp", Bitmap(60, 120));
    folder.Write("a.b.tif", Bitmap(60, 120)); // by its content, whatever its name
    folder.Write("c.jpg", "no picture");
    folder.Write("t.txt", "text");
    notes.Write("a.b.enf", "half moon");
    const std::string options = "thumbnails --size 150 --notes " + notes.Path() + " ";
    const Outcome first = Tarn(options + folder.Path());
    EXPECT_EQ(first.status, 1);
    EXPECT_TRUE(Has(first, "Generating thumbnail 2 ...\\thumbnails\\T150_a.b.tif\n"));
    EXPECT_TRUE(Has(first, "2 thumbnails, sized 150 pixels created in ...\\thumbnails sub folder, "
                           "1 failed: 'c.jpg' - "));
    EXPECT_EQ(ReadTree(notes.Path()).at("T150_a.enf"), "\"half moon\"\r\n");
    folder.Write("thumbnails/T150_a.b.tif", "kept");
    EXPECT_TRUE(Has(Tarn(options + "--update " + folder.Path()), "\n0 thumbnails, "));
    EXPECT_EQ(ReadTree(folder.Path() + "/thumbnails").at("T150_a.b.tif"), "kept");
    EXPECT_TRUE(
        Has(Tarn("thumbnails --subfolder .. " + folder.Path()), "Sub folder name is not valid"));
    TestFolder sky;
    for (const char* name : {"a.fits", "b.fit", "c.cr2", "d.dat"}) sky.Write(name, "x");
    EXPECT_TRUE(Has(Tarn("thumbnails " + sky.Path()),
                    "0 thumbnails, sized 120 pixels created in ...\\thumbnails sub folder; no "
                    "pictures are listed in the folder, 2 FITS files and 1 raw file are not "
                    "listed\n"));
    EXPECT_EQ(Tarn("thumbnails --size 5 " + folder.Path()).status, 2);
    EXPECT_EQ(Tarn("thumbnails " + folder.Path() + "/none").status, 1);
}

TEST(Tarn, TellsItsUsage) {
    for (const char* bad : {"", "nonsense", "info", "info --date", "info --size a.jpg"}) {
        const Outcome outcome = Tarn(bad);
        EXPECT_EQ(outcome.status, 2) << bad;
        EXPECT_TRUE(Has(outcome, "tarn info [--date] FILE...")) << bad;
    }
    for (const char* bad :
         {"", "--quality 0 a", "--quality 101 a", "--quality 7.5 a", "--max-width 9 a",
          "--max-height x a", "--max-width 20 --max-height 20 a"}) {
        const Outcome outcome = Tarn(std::string("convert ") + bad);
        EXPECT_EQ(outcome.status, 2) << bad;
        EXPECT_TRUE(Has(outcome, "usage: tarn convert [--quality N]")) << bad;
    }
    EXPECT_EQ(Tarn("convert --to /no/such a").status, 1);
    EXPECT_EQ(Tarn("--help").status, 0);
    EXPECT_EQ(Tarn("info --help").status, 0);
    EXPECT_EQ(Tarn("--version").out.find("tarn "), 0U);
    EXPECT_EQ(Tarn("info --help > /dev/full").status, 1);
    // Lost on the way, not only with the last bytes.
    const TestFolder folder;
    const std::string good = folder.Write("a.jpg", CanonPicture());
    std::string many = "info";
    for (int i = 0; i < 20; ++i) many += " " + good;
    EXPECT_EQ(Tarn(many + " > /dev/full").status, 1);
}

TEST(Usage, SaysWhatIsRead) {
    const std::vector<OptionRule> rules = {{"--set", "KEY=VALUE", true},
                                           {.name = "--wide", .value = "N", .excludesNext = true},
                                           {"--tall", "N"},
                                           {"--dry"}};
    const std::vector<std::string_view> choices = {"2x2", "3x4"};
    const std::vector<UsageLine> lines = {{rules, "OUT FILE...", choices}, {{}, "FOLDER"}};
    EXPECT_EQ(TextOf({"make", lines}),
              "tarn make (2x2|3x4) [--set KEY=VALUE]... [--wide N | --tall N] [--dry] OUT FILE...\n"
              "       tarn make FOLDER");
    std::string fault;
    const std::vector<std::string> both = {"--tall", "5", "--dry", "--wide", "6"};
    EXPECT_FALSE(Arguments::Parse(both, rules, fault).has_value());
    EXPECT_EQ(fault, "only one of --wide and --tall can be given");
    const std::vector<std::string> one = {"--tall", "5", "--dry", "--set", "--wide"};
    EXPECT_TRUE(Arguments::Parse(one, rules, fault).has_value());
}

TEST(Arguments, OptionsComeFirst) {
    const std::vector<OptionRule> rules = {{"--size", "N"}, {"--date"}};
    const std::vector<std::string> words = {"--size", "5", "--size", "-6", "-", "--date"};
    std::string fault;
    const auto arguments = Arguments::Parse(words, rules, fault);
    ASSERT_TRUE(arguments.has_value());
    EXPECT_EQ(arguments->Values("--size"), (std::vector<std::string>{"5", "-6"}));
    EXPECT_FALSE(arguments->Has("--date"));
    EXPECT_EQ(arguments->Operands(), (std::vector<std::string>{"-", "--date"}));
    EXPECT_FALSE(Arguments::Parse(std::vector<std::string>{"--size"}, rules, fault).has_value());
    EXPECT_EQ(fault, "option --size needs a value");
}

// Rows in the order given, folders by name; a file that fails has its row and its reason.
TEST(Tarn, MeasuresStars) {
    const TestFolder folder;
    ASSERT_EQ(::setenv("XDG_CACHE_HOME", folder.Path().c_str(), 1), 0);
    const TestFolder night;
    const auto frame = [](double peak) {
        return FitsBytes(-32, {200, 200}, [=](std::size_t at) {
            const double x = double(at % 200) - 20 - 40 * std::floor(double(at % 200) / 40);
            const double y = double(at / 200) - 20 - 40 * std::floor(double(at / 200) / 40);
            return 1000 + double(at * 7919 % 101) / 10 + peak * std::exp(-(x * x + y * y) / 8);
        });
    };
    const std::string bright = night.Write("b,1.fits", frame(2000));
    const std::string faint = night.Write("a.fits", frame(1000));
    night.Write("notes.txt", "no picture");
    const std::string words = "stars --csv " + night.Path() + " /no/such.fits";
    const Outcome outcome = Tarn(words);
    EXPECT_EQ(outcome.status, 1);
    const std::string head = "file,width,height,stars,hfr,fwhm,eccentricity,background,noise,"
                             "saturated,transparency,sharpness,score,error\n";
    EXPECT_TRUE(outcome.out.starts_with(head + faint + ",200,200,25,2.3")) << outcome.out;
    EXPECT_TRUE(Has(outcome, "\n\"" + bright + "\",200,200,25,2.3")) << outcome.out;
    EXPECT_TRUE(Has(outcome, "\n/no/such.fits,,,,,,,,,,,,,No such file or directory\n"))
        << outcome.out;
    EXPECT_TRUE(Has(outcome, ",0.667,")) << outcome.out; // of the light of the middle frame
    EXPECT_EQ(Tarn(words).out, outcome.out);             // kept
    EXPECT_TRUE(std::filesystem::exists(folder.Path() + "/tarn-view/measures.sqlite"));

    const Outcome list = Tarn("stars --list --csv '" + bright + "'");
    EXPECT_EQ(list.status, 0);
    EXPECT_TRUE(list.out.starts_with("x,y,flux,peak,hfr,fwhm,eccentricity,angle,saturated\n"));
    EXPECT_EQ(std::count(list.out.begin(), list.out.end(), '\n'), 26) << list.out;
    EXPECT_EQ(Tarn("stars").status, 2);
    EXPECT_EQ(Tarn("stars --list a b").status, 2);
}

// The frames are shifted copies; the second has no stars at all.
TEST(Tarn, AlignsFrames) {
    const TestFolder folder;
    ASSERT_EQ(::setenv("XDG_CACHE_HOME", folder.Path().c_str(), 1), 0);
    const TestFolder night;
    const auto frame = [](int shift, double peak) {
        return FitsBytes(-32, {260, 200}, [=](std::size_t at) {
            const int column = int(at % 260) - shift;
            const int row = int(at / 260);
            double value = 1000 + double(at * 7919 % 101) / 10;
            for (int star = 0; star < 20; ++star) { // of no order
                const int x = column - (30 + star * star * 37 % 190);
                const int y = row - (20 + star * 53 % 160);
                value += peak * (1 + star % 5) * std::exp(-double(x * x + y * y) / 8);
            }
            return value;
        });
    };
    const std::string a = night.Write("a.fits", frame(0, 500));
    const std::string b = night.Write("b.fits", frame(0, 0));
    const std::string c = night.Write("c.fits", frame(7, 500));
    const Outcome outcome = Tarn("align --csv --reference " + a + " " + night.Path());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(
        outcome.out.starts_with("file,a,b,c,d,e,f,matched,residual,error\n" + a + ",1.00000000,"))
        << outcome.out;
    EXPECT_TRUE(Has(outcome, "\n" + b + ",,,,,,,,,no stars\n")) << outcome.out;
    double map[6]{};
    const std::size_t row = outcome.out.find("\n" + c + ",");
    ASSERT_NE(row, std::string::npos) << outcome.out;
    ASSERT_EQ(std::sscanf(outcome.out.c_str() + row + c.size() + 2, "%lf,%lf,%lf,%lf,%lf,%lf", map,
                          map + 1, map + 2, map + 3, map + 4, map + 5),
              6);
    EXPECT_NEAR(100 * map[0] + 100 * map[1] + map[2], 93, 0.05);
    EXPECT_NEAR(100 * map[3] + 100 * map[4] + map[5], 100, 0.05);
    EXPECT_EQ(Tarn("align").status, 2);
}

// By the headers alone: a frame of a telescope, one of a camera that knows its place, and what says
// nothing. The sign of the folder's longitudes is told beside the table.
TEST(Tarn, SaysWhatStoodInTheSky) {
    const TestFolder folder;
    const std::vector<FitsWord> words{{"DATE-OBS", "'2024-11-05T23:00:00'"},
                                      {"EXPTIME", "120"},
                                      {"RA", "'05 34 31.9'"},
                                      {"DEC", "'+22 00 52'"},
                                      {"SITELAT", "48.1"},
                                      {"SITELONG", "-11.6"},
                                      {"LST", "'02:50:00'"}};
    const std::string crab = folder.Write("a.fits", NightSky(20, 10, words));
    ExifBuilder camera(Endian::Little);
    camera.Ascii(272, "CAM 1").Satellites(-33, -71, 2200, "2024:11:06 02:00:00").ExifDirectory();
    camera.Ascii(0x9003, "2024:11:05 23:00:00").Ascii(0x9011, "-03:00").Rational(0x829A, 60, 2);
    const std::string andes = folder.Write("b.jpg", camera.Jpeg());
    const std::string dark = folder.Write(
        "c.fits", NightSky(20, 10, {{"IMAGETYP", "'Dark Frame'"}, words[0], words[1]}));
    const std::string plain = folder.Write("d.png", "no picture");

    const Outcome outcome = Tarn("sky --csv --site 48.1,11.6 " + folder.Path() + " /no/such.fits");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out,
              "tarn: " + folder.Path() +
                  ": longitudes count west, by its sidereal times\n"
                  "file,utc,ra,dec,altitude,azimuth,airmass,sun_altitude,moon_altitude,moon_phase,"
                  "moon_separation,error\n" +
                  crab +
                  ",2024-11-05T23:01:00Z,83.63292,22.01444,47.977,113.435,1.345,-57.940,-46.357,"
                  "0.178,168.582,\n" +
                  andes + ",2024-11-06T02:00:15Z,,,,,,-29.606,15.366,0.186,,\n" + dark +
                  ",2024-11-05T23:01:00Z,,,,,,-57.940,-46.357,0.178,,\n" + plain +
                  ",,,,,,,,,,,its header says nothing of the exposure\n"
                  "/no/such.fits,,,,,,,,,,,No such file or directory\n");
    EXPECT_EQ(Tarn("sky").status, 2);
    EXPECT_EQ(Tarn("sky --site 95,10 " + crab).status, 2);
    EXPECT_EQ(Tarn("sky --csv " + crab).status, 0);
}

// Rows of exposures, marks counted; the page and the PDF are commands of the history.
TEST(Tarn, ReportsNights) {
    const TestFolder home;
    ASSERT_EQ(::setenv("XDG_CACHE_HOME", home.Path().c_str(), 1), 0);
    ASSERT_EQ(::setenv("XDG_STATE_HOME", home.Path().c_str(), 1), 0);
    const TestFolder folder;
    const auto frame = [&](const char* name, const char* time, const char* type) {
        return folder.Write(name, NightSky(40, 30,
                                           {{"DATE-OBS", std::string("'") + time + "'"},
                                            {"EXPTIME", "90.5"},
                                            {"IMAGETYP", std::string("'") + type + "'"},
                                            {"OBJECT", "'M 1, <Crab>'"},
                                            {"FILTER", "'Ha'"},
                                            {"INSTRUME", "'CAM 1'"}}));
    };
    const std::string kept = frame("a.fits", "2024-11-05T23:00:00", "LIGHT");
    frame("b.fits", "2024-11-05T23:02:00", "Light Frame");
    frame("c.fits", "2024-11-06T05:00:00", "master dark");
    ASSERT_EQ(Tarn("mark --keep " + kept).status, 0);
    const std::string rows =
        "target,filter,camera,exposure,frames,seconds,kept_frames,kept_seconds,first_utc,last_utc,"
        "error\n"
        "\"M 1, <Crab>\",Ha,CAM 1,90.5,2,181,1,90.5,2024-11-05T23:00:45.25Z,"
        "2024-11-05T23:02:45.25Z,\n"
        "Dark,Ha,CAM 1,90.5,1,90.5,0,0,2024-11-06T05:00:45.25Z,2024-11-06T05:00:45.25Z,\n";
    const Outcome plain = Tarn("night --csv " + folder.Path());
    EXPECT_EQ(plain.out, rows);
    EXPECT_EQ(plain.status, 0);

    const std::string html = folder.Path() + "/night.html";
    const std::string pdf = folder.Path() + "/night.pdf";
    const std::string options = " --now then --site 48.1,11.5 " + folder.Path();
    EXPECT_EQ(Tarn("night --csv --html " + html + options).out, rows);
    const std::string page = BytesOf(html);
    EXPECT_NE(page.find("<h1>Night of 2024-11-05</h1>"), std::string::npos);
    EXPECT_NE(page.find("M 1, &lt;Crab&gt;"), std::string::npos);
    EXPECT_NE(page.find(", then</footer>"), std::string::npos);
    EXPECT_EQ(Tarn("night --csv --pdf " + pdf + options).status, 0);
    EXPECT_EQ(BytesOf(pdf).substr(0, 5), "%PDF-");
    const Outcome past = Tarn("history --csv");
    EXPECT_TRUE(Has(past, ",Night report 'night.html',")) << past.out;
    EXPECT_TRUE(Has(past, ",Night report 'night.pdf',")) << past.out;

    const std::string broken = folder.Write("d.fits", "SIMPLE  =                    T");
    const Outcome failed = Tarn("night --csv " + folder.Path() + " /no/such");
    EXPECT_EQ(failed.status, 1);
    EXPECT_TRUE(Has(failed, "\n,,,,,,,,,," + broken + ": The FITS file cannot be read"))
        << failed.out;
    EXPECT_TRUE(Has(failed, "\n,,,,,,,,,,/no/such: No such file")) << failed.out;
    EXPECT_EQ(Tarn("night --html a.html --pdf a.pdf " + folder.Path()).status, 2);
    EXPECT_EQ(Tarn("night").status, 2);
}

namespace {

// A frame of a few dozen stars and one that moves by six pixels from frame to frame.
std::string MovingFrame(int number, const std::vector<FitsWord>& words) {
    return FitsBytes(
        -32, {260, 200},
        [=](std::size_t at) {
            const int column = int(at % 260);
            const int row = int(at / 260);
            double value = 1000 + double((at + std::size_t(number) * 31) * 7919 % 101) / 10;
            for (int star = 0; star < 20; ++star) {
                const int x = column - number - (30 + star * star * 37 % 190);
                const int y = row - (20 + star * 53 % 160);
                value += 500 * (1 + star % 5) * std::exp(-double(x * x + y * y) / 4);
            }
            const int x = column - number - (60 + 6 * number);
            return value + 120 * std::exp(-double(x * x + (row - 101) * (row - 101)) / 4);
        },
        words);
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<FitsWord> WordsAt(int minute) {
    const std::string two = std::to_string(100 + minute).substr(1);
    return {{"DATE-OBS", "'2024-11-05T20:" + two + ":00'"},
            {"EXPTIME", "60.0"},
            {"CRVAL1", "10.68"},
            {"BSCALE", "1.0"}};
}

} // namespace

TEST(Tarn, SumsFramesAndFindsWhatMoves) {
    const TestFolder cache;
    ASSERT_EQ(::setenv("XDG_CACHE_HOME", cache.Path().c_str(), 1), 0);
    const TestFolder state;
    ASSERT_EQ(::setenv("XDG_STATE_HOME", state.Path().c_str(), 1), 0);
    ASSERT_EQ(::setenv("XDG_DATA_HOME", state.Path().c_str(), 1), 0);
    const TestFolder night;
    std::vector<std::string> paths;
    for (int i = 0; i < 6; ++i)
        paths.push_back(
            night.Write("f" + std::to_string(i) + ".fits", MovingFrame(i, WordsAt(6 * i))));
    const std::string timeless = night.Write("g.fits", MovingFrame(2, {}));
    const std::string small =
        night.Write("small.fits", FitsBytes(-32, {20, 20}, [](std::size_t) { return 5; }));
    ASSERT_EQ(Tarn("mark --reject " + paths[5]).status, 0);
    const std::string target = night.Path() + "/sum.fits";

    const Outcome sum = Tarn("stack --csv --to " + target + " " + night.Path());
    EXPECT_EQ(sum.status, 1); // of the small one
    EXPECT_TRUE(
        sum.out.starts_with("file,used,weight,rejected_pixels,error\n" + paths[0] + ",1,0.1"))
        << sum.out;
    EXPECT_TRUE(Has(sum, "\n" + paths[5] + ",0,,,marked as rejected\n")) << sum.out;
    EXPECT_TRUE(Has(sum, "\n" + small + ",0,,,")) << sum.out;
    const Outcome panel = Tarn("info " + target);
    EXPECT_TRUE(Has(panel, "260 x 200")) << panel.out;
    EXPECT_TRUE(Has(panel, "32 bit floating point")) << panel.out;
    EXPECT_TRUE(Has(panel, "2024-11-05 20:00:00")) << panel.out;
    const std::string header = ReadFile(target).substr(0, 8640);
    EXPECT_NE(header.find("CRVAL1  = "), std::string::npos);
    EXPECT_EQ(header.find("BSCALE"), std::string::npos);
    EXPECT_NE(header.find("NCOMBINE=                    6 "), std::string::npos) << header;
    EXPECT_NE(header.find("HISTORY f3.fits, weight 0.1"), std::string::npos) << header;
    EXPECT_NE(header.find("DATE-END= '2024-11-05T20:25:00'"), std::string::npos) << header;
    EXPECT_NE(header.find("DATE-AVG= '2024-11-05T20:1"), std::string::npos) << header;

    // Over itself it leaves itself out, and what stood there comes back.
    const std::string first = ReadFile(target);
    EXPECT_FALSE(Has(Tarn("stack --reject 0 --to " + target + " " + night.Path()), "sum.fits\t"));
    EXPECT_NE(ReadFile(target), first);
    EXPECT_EQ(Tarn("undo").status, 0);
    EXPECT_EQ(ReadFile(target), first);
    EXPECT_EQ(Tarn("undo").status, 0);
    EXPECT_FALSE(std::filesystem::exists(target));
    const std::string light = ReadFile(paths[0]);
    for (const std::string& taken :
         {paths[0], night.Path() + "/F0.FITS", night.Path() + "/none/sum.fits"})
        EXPECT_EQ(Tarn("stack --to " + taken + " " + night.Path()).status, 1) << taken;
    EXPECT_EQ(ReadFile(paths[0]), light);

    // A file named twice counts once; a sum that stands in the folder is no frame.
    const std::string older = night.Path() + "/older.fits";
    const std::string three = paths[0] + " " + paths[1] + " " + paths[2];
    const Outcome twice = Tarn("stack --csv --to " + older + " " + three + " " + paths[0]);
    EXPECT_EQ(twice.status, 0) << twice.out;
    EXPECT_TRUE(Has(twice, "\n" + paths[0] + ",0,,,the same file as " + paths[0] + "\n"))
        << twice.out;
    EXPECT_TRUE(Has(Tarn("stack --csv " + night.Path()), older + ",0,,,itself a sum of frames\n"));
    std::filesystem::remove(older);

    const Outcome movers = Tarn("movers --csv " + night.Path());
    EXPECT_EQ(movers.status, 1);
    EXPECT_TRUE(
        movers.out.starts_with("track,file,x,y,flux,speed,angle,error\n1," + paths[0] + ","))
        << movers.out;
    for (int i = 0; i < 5; ++i) {
        const std::string begin = "\n1," + paths[std::size_t(i)] + ",";
        const std::size_t row = movers.out.find(begin);
        ASSERT_NE(row, std::string::npos) << movers.out;
        double x = 0;
        double y = 0;
        double flux = 0;
        double speed = 0;
        double angle = 0;
        ASSERT_EQ(std::sscanf(movers.out.c_str() + row + begin.size(), "%lf,%lf,%lf,%lf,%lf", &x,
                              &y, &flux, &speed, &angle),
                  5);
        EXPECT_NEAR(x, 60 + 7 * i, 0.3);
        EXPECT_NEAR(y, 101, 0.3);
        EXPECT_NEAR(flux, 120 * 4 * 3.1416, 100);
        EXPECT_NEAR(speed, 60, 2);
        EXPECT_NEAR(angle, 0, 3);
    }
    EXPECT_TRUE(Has(movers, "\n," + timeless + ",,,,,,no time of exposure\n")) << movers.out;
    EXPECT_FALSE(Has(movers, "\n2,")) << movers.out;
    EXPECT_EQ(Tarn("movers").status, 2);
    EXPECT_EQ(Tarn("stack --reject much " + night.Path()).status, 2);
}
