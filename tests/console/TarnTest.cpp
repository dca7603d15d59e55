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
