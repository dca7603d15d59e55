// Frames of the sky by the built program: measured, laid over each other, placed, reported, summed.
#include "FitsFiles.h"
#include "RunTarn.h"

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

using namespace tarn;
using namespace tarn::testing;

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
