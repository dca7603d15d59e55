// What the header of a telescope's file says, as people read it.
#include "FitsFiles.h"
#include "support/TestFolder.h"

#include "imaging/fits/FitsLines.h"

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

class FitsHeaders : public ::testing::Test {
protected:
    SkyFacts Facts(const std::vector<FitsWord>& words) {
        const auto zero = [](std::size_t) { return 0.0; };
        return SkyFactsOf(folder.Write("a.fit", FitsBytes(8, {2, 2}, zero, words)));
    }
    // The row of that label, without it; "none" where there is no such row.
    std::string Row(const std::vector<FitsWord>& words, const std::string& label) {
        const std::string start = std::string(12 - label.size(), ' ') + label + ": ";
        for (const std::string& line : Facts(words).lines)
            if (line.starts_with(start)) return line.substr(start.size());
        return "none";
    }

    TestFolder folder;
};

TEST_F(FitsHeaders, DatesAreShownInTheirOwnTime) {
    struct Case {
        std::vector<FitsWord> words;
        std::string shown;
        std::string camera;
    };
    const std::string clock = "2024:11:05 21:14:33";
    for (const Case& each : {
             Case{{{"DATE-OBS", "'2024-11-05T21:14:33.5'"}}, "2024-11-05 21:14:33.5 UT", clock},
             Case{{{"DATE-OBS", "'2024-11-05T21:14:33Z'"}}, "2024-11-05 21:14:33 UT", clock},
             Case{{{"DATE-OBS", "'2024-11-05T21:14:33-0700'"}},
                  "2024-11-05 21:14:33 UTC-07:00",
                  clock},
             Case{{{"DATE-OBS", "'2024-11-05T21:14:33.25+05:30'"}},
                  "2024-11-05 21:14:33.25 UTC+05:30",
                  clock},
             Case{{{"DATE-OBS", "'2024-11-05T21:14:33'"}, {"TIMESYS", "'TT'"}},
                  "2024-11-05 21:14:33 TT",
                  clock},
             Case{{{"DATE-OBS", "'2024-11-05'"}, {"TIME-OBS", "'21:14:33.5'"}},
                  "2024-11-05 21:14:33.5 UT",
                  clock},
             Case{{{"DATE-OBS", "'05/11/98'"}, {"UT", "'21:14:33'"}},
                  "1998-11-05 21:14:33 UT",
                  "1998:11:05 21:14:33"},
             Case{{{"MJD-OBS", "60619.88510416666"}}, "2024-11-05 21:14:33.000 UT", clock},
             Case{{{"MJD-OBS", "51603.999999999"}},
                  "2000-03-01 00:00:00.000 UT",
                  "2000:03:01 00:00:00"},
             Case{{{"MJD-OBS", "6.061988510416666D+04"}}, "2024-11-05 21:14:33.000 UT", clock},
             Case{{{"DATE-OBS", "'2024-11-05'"}, {"MJD-OBS", "60619.88510416666"}},
                  "2024-11-05 21:14:33.000 UT",
                  clock},
             Case{{{"DATE-OBS", "'2024-11-05'"}, {"MJD-OBS", "60619"}}, "2024-11-05", ""},
             Case{{{"DATE-OBS", "'2024-11-04'"}, {"MJD-OBS", "60619.88510416666"}},
                  "2024-11-04",
                  ""},
             Case{{{"MJD-OBS", "1E30"}}, "none", ""},
             Case{{{"DATE-OBS", "'2024-11-05'"}}, "2024-11-05", ""},
             Case{{{"DATE-OBS", "'2024-13-05T21:14:33'"}}, "2024-13-05 21:14:33 UT", ""},
             Case{{{"DATE-OBS", "'yesterday'"}}, "yesterday", ""},
             Case{{}, "none", ""},
         }) {
        EXPECT_EQ(Row(each.words, "Observed"), each.shown);
        EXPECT_EQ(Facts(each.words).cameraDate, each.camera) << each.shown;
    }
    EXPECT_EQ(Row({{"DATE-LOC", "'2024-11-05T22:14:33.5'"}}, "Local time"),
              "2024-11-05 22:14:33.5");
}

TEST(PlainNumber, IsAsPeopleWriteIt) {
    for (const auto& [written, plain] : {std::pair{"5.000E+01", "50"},
                                         {"-9.800000000000001", "-9.8"},
                                         {"-9.800000190734863", "-9.8"},
                                         {"-9.80000019", "-9.8"},
                                         {"-9.8000002", "-9.8"},
                                         {"2.13700008E+01", "21.37"},
                                         {"0.00980000012", "0.0098"},
                                         {"202.469575", "202.469575"},
                                         {"83.633083", "83.633083"},
                                         {"5.20000001", "5.20000001"},
                                         {"120.500", "120.5"},
                                         {"30.", "30"},
                                         {"100", "100"},
                                         {"1E-4", "0.0001"},
                                         {"0.000E+00", "0"},
                                         {"-0.0", "0"},
                                         {"83.8220833333333", "83.82208333"},
                                         {"12345678901234567890", "12345678901234567890"},
                                         {"1.5E+20", "1.5E+20"},
                                         {"+46.50", "+46.5"},
                                         {"05 35 17.30", "05 35 17.30"},
                                         {"", ""}})
        EXPECT_EQ(PlainNumber(written), plain);
}

TEST_F(FitsHeaders, RowsBehindTheFormat) {
    std::vector<std::string> lines = Facts({{"CCDTEMP", "-9.800000000000001"},
                                            {"IMAGETYP", "'Light Frame'"},
                                            {"BLKLEVEL", "5.000D+01"},
                                            {"PEDESTAL", "-100"},
                                            {"XBINNING", "2"},
                                            {"YBINNING", "4"},
                                            {"FOCALLEN", "530.0"},
                                            {"FOCPOS", "12345"},
                                            {"AIRMASS", "1.2345678901234"},
                                            {"OBJCTRA", "'05 35 17'"},
                                            {"OBJCTDEC", "'-05 23 28'"},
                                            {"SITELAT", "46.5"},
                                            {"SITELONG", "7.98"}})
                                         .lines;
    EXPECT_EQ(lines, (std::vector<std::string>{
                         " Temperature: -9.8 C", "      Format: 8 bit", "  Image type: Light Frame",
                         "      Offset: 50", "    Pedestal: -100", "     Binning: 2 x 4",
                         "Focal length: 530 mm", "     Focuser: 12345", "    Air mass: 1.23456789",
                         "  RA and Dec: 05 35 17, -05 23 28", "        Site: 46.5, 7.98"}));
    EXPECT_EQ(Row({{"OFFSET", "10"}, {"BLKLEVEL", "20"}}, "Offset"), "10");
    EXPECT_EQ(Row({{"XBINNING", "3"}}, "Binning"), "3 x 3");
    EXPECT_EQ(Row({{"CCD-TEMP", "180.2"}}, "Temperature"), "180.2 K");
    EXPECT_EQ(Row({{"RA", "83.82"}}, "RA and Dec"), "none");
}

TEST_F(FitsHeaders, PatternsAreKnownByEveryWordAndSpelling) {
    for (const char* word : {"BAYERPAT", "COLORTYP", "CFAPAT"})
        for (const char* letters : {"'RGGB'", "'rggb    '", "' RG GB'"})
            EXPECT_EQ(Row({{word, letters}}, "Format"), "8 bit, Bayer RGGB") << word << letters;
    EXPECT_EQ(Row({{"BAYERPAT", "'RGB'"}}, "Format"), "8 bit");
}

} // namespace
