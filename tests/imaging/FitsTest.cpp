// Files of telescopes: what is read, however it is stored, and what is made of broken ones.
#include "FitsFiles.h"
#include "PixelRows.h"
#include "support/TestFolder.h"

#include "imaging/fits/FitsFile.h"
#include "imaging/fits/FitsLines.h"
#include "imaging/fits/FitsPixels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>

using namespace tarn;
using namespace tarn::testing;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

double Ramp(std::size_t i) {
    return double(i);
}

class FitsPictures : public ::testing::Test {
protected:
    std::optional<FitsPixels> Read(const std::string& bytes, int width = 0, int height = 0) {
        error.clear();
        return FitsPixels::Read(folder.Write("a.fit", bytes), width, height, error);
    }
    std::string Rows(const std::string& bytes, int channel = 0, int width = 0, int height = 0) {
        const auto pixels = Read(bytes, width, height);
        return pixels ? RowsOf(*pixels, channel) : error;
    }
    static std::vector<std::uint32_t> Light(const FitsPixels& pixels, const Stretch& stretch) {
        std::vector<std::uint32_t> light(std::size_t(pixels.Width() * pixels.Height()));
        pixels.ToRgb(stretch, light.data(), std::size_t(pixels.Width()));
        return light;
    }

    TestFolder folder;
    std::string error;
};

TEST_F(FitsPictures, FirstStoredRowIsAtTheBottomUnlessTheFileSaysOtherwise) {
    EXPECT_EQ(Rows(FitsBytes(8, {3, 2}, Ramp)), "3 4 5/0 1 2");
    EXPECT_EQ(Rows(FitsBytes(8, {3, 2}, Ramp, {{"ROWORDER", "'TOP-DOWN'"}})), "0 1 2/3 4 5");
    EXPECT_EQ(Rows(FitsBytes(8, {3, 2}, Ramp, {{"ROWORDER", "'BOTTOM-UP'"}})), "3 4 5/0 1 2");
}

TEST_F(FitsPictures, EveryKindOfNumberGivesItsValues) {
    for (const int bits : {8, 16, 32, 64, -32, -64}) {
        EXPECT_EQ(Rows(FitsBytes(bits, {2, 2}, Ramp)), "2 3/0 1") << bits;
        EXPECT_EQ(Rows(FitsBytes(bits, {2, 2}, Ramp, {{"BSCALE", "2.0"}, {"BZERO", "100.0"}})),
                  "104 106/100 102")
            << bits;
    }
    const auto negative = [](std::size_t i) { return double(i) - 2; };
    EXPECT_EQ(Rows(FitsBytes(16, {2, 2}, negative)), "0 1/-2 -1");
    EXPECT_EQ(Rows(FitsBytes(16, {2, 1}, negative, {{"BZERO", "32768"}})), "32766 32767");
    const auto blank = Read(FitsBytes(16, {3, 1}, Ramp, {{"BLANK", "1"}}));
    EXPECT_TRUE(std::isnan(blank->Value(0, 1, 0)));
    EXPECT_EQ(blank->Value(0, 2, 0), 2);
}

TEST_F(FitsPictures, RangeIsWhatTheNumbersCanHoldOrDoHold) {
    const auto range = [&](const std::string& bytes) { return Read(bytes)->Range(); };
    EXPECT_EQ(range(FitsBytes(8, {2, 2}, Ramp)), (ValueRange{0, 255}));
    EXPECT_EQ(range(FitsBytes(16, {2, 2}, Ramp, {{"BZERO", "32768"}})), (ValueRange{0, 65535}));
    EXPECT_EQ(range(FitsBytes(16, {2, 2}, Ramp)), (ValueRange{0, 3}));
    EXPECT_EQ(range(FitsBytes(-32, {2, 2}, [](auto i) { return double(i) / 4; })),
              (ValueRange{0, 1}));
    EXPECT_EQ(range(FitsBytes(-32, {2, 2}, [](auto i) { return double(i) - 1; })),
              (ValueRange{-1, 2}));
    EXPECT_EQ(range(FitsBytes(-32, {2, 2}, [](auto) { return 7; })), (ValueRange{7, 8}));
    // Numbers so large that 1 more is the same.
    for (const char* zero : {"1048576E15", "1267650600228229401496703205376", "-1E30", "1E308"}) {
        const auto pixels = Read(FitsBytes(16, {2, 2}, Ramp, {{"BZERO", zero}}));
        EXPECT_LT(pixels->Range().low, pixels->Range().high) << zero;
        const auto& counts = pixels->Histogram();
        EXPECT_LE(std::accumulate(counts.begin(), counts.end(), 0), 4) << zero;
    }
}

// The first that has pixels; of more dimensions the first plane.
TEST_F(FitsPictures, FirstPictureOfTheFileCounts) {
    const std::string none = FitsBytes(8, {}, nullptr, {{"TELESCOP", "'Refractor'"}});
    EXPECT_EQ(Rows(none), "There is no picture in the FITS file");
    EXPECT_EQ(Rows(none + FitsExtension(8, {4}, Ramp) + FitsExtension(16, {2, 1}, Ramp)), "0 1");
    EXPECT_EQ(ReadFitsHeader(folder.Path() + "/a.fit", 0, error)->telescope, "Refractor");
    EXPECT_EQ(Rows(FitsBytes(8, {0, 0}, Ramp)), "The picture has no pixels");
    EXPECT_EQ(Rows(FitsBytes(8, {2, 1, 2, 2}, Ramp)), "0 1");
    const std::string colour = FitsBytes(8, {2, 1, 3, 2}, Ramp);
    EXPECT_EQ(Rows(colour, 0) + ", " + Rows(colour, 1) + ", " + Rows(colour, 2), "0 1, 2 3, 4 5");
}

TEST_F(FitsPictures, NamesAreTakenAsTheyAre) {
    for (const char* name : {"M31 [1:2,1:1].fit", "a+1.fits", "50%.fit", "x(2).fit", "-.fit",
                             "!a.fit", "mem:.fit", "a.fit[0]"}) {
        const std::string path = folder.Write(name, FitsBytes(8, {3, 2}, Ramp));
        const auto header = ReadFitsHeader(path, 0, error);
        ASSERT_TRUE(header) << name << ": " << error;
        EXPECT_EQ(header->width, 3) << name;
        EXPECT_TRUE(FitsPixels::Read(path, 0, 0, error)) << name;
    }
}

// Wherever the file ends: what it has is shown, what it has not is black, and it is told.
TEST_F(FitsPictures, CutShortAnywhere) {
    const int size = 100;
    const std::string whole = FitsBytes(16, {size, size}, [](auto) { return 5; });
    const std::size_t data = whole.size() - (20000 + 2879) / 2880 * 2880;
    for (std::size_t length = 0; length < data + 20000; length += 389) {
        const auto pixels = Read(whole.substr(0, length));
        EXPECT_FALSE(error.empty()) << length;
        ASSERT_EQ(pixels.has_value(), length >= data + 2880) << length;
        if (!pixels) continue;
        EXPECT_EQ(pixels->Value(0, 0, size - 1), 5);
        EXPECT_TRUE(std::isnan(pixels->Value(0, size - 1, 0)));
    }
    EXPECT_TRUE(Read(whole));
    EXPECT_EQ(error, "");
    // A size that only the header has.
    EXPECT_FALSE(Read(FitsBytes(-32, {1 << 20, 1 << 20}, nullptr)));
    EXPECT_NE(error, "");
}

// On these the library would end the program.
TEST_F(FitsPictures, WordsInPlaceOfAPackedSizeAreRefused) {
    const auto read = [&](const std::string& name, const std::string& word,
                          const std::string& method = "'GZIP_1  '") {
        std::vector<FitsWord> words{{"TFIELDS", "1"},         {"TTYPE1", "'COMPRESSED_DATA'"},
                                    {"TFORM1", "'1PB(10) '"}, {"ZIMAGE", "T"},
                                    {"ZVAL1", "32"},          {"ZCMPTYPE", method},
                                    {"ZBITPIX", "16"},        {"ZNAXIS", "2"},
                                    {"ZNAXIS1", "8"},         {"ZNAXIS2", "6"},
                                    {"ZTILE1", "8"}};
        for (FitsWord& each : words)
            if (each.name == name) each.value = word;
        std::string part = FitsExtension(8, {8, 6}, Ramp, words);
        part.replace(part.find("'IMAGE   '"), 10, "'BINTABLE'");
        error.clear();
        return ReadFitsHeader(folder.Write("a.fit", FitsBytes(8, {}, nullptr) + part), 0, error);
    };
    EXPECT_TRUE(read("", "")) << error;
    EXPECT_TRUE(read("ZCMPTYPE", "'GZIP_1'                             / how it is packed"));
    for (const char* name : {"ZBITPIX", "ZNAXIS", "ZNAXIS2", "ZTILE1"})
        for (const auto& word :
             {"'" + std::string(27, 'x') + "'", std::string(60, '9'), std::string(29, 'x')}) {
            EXPECT_FALSE(read(name, word)) << name << word;
            EXPECT_NE(error.find("a number"), std::string::npos) << error;
        }
    for (const char* name : {"ZNAXIS1", "ZTILE1"})
        for (const char* word : {"0", "'", "'0'", "-0.5"}) EXPECT_FALSE(read(name, word)) << name;
    EXPECT_TRUE(read("ZVAL1", "0")) << error;
    EXPECT_FALSE(read("ZVAL1", "0", "'RICE_1  '"));
}

TEST_F(FitsPictures, WhatIsNoNumberIsBlackAndCountsForNothing) {
    const auto sample = [](std::size_t i) {
        return i < 150 ? kNaN : i == 150 ? std::numeric_limits<float>::infinity() : 0.25F;
    };
    const auto pixels = Read(FitsBytes(-32, {20, 10}, sample));
    EXPECT_EQ(pixels->Range(), (ValueRange{0, 1}));
    const auto light = Light(*pixels, pixels->Automatic());
    EXPECT_EQ(light[20 * 9], 0xFF000000); // the bottom
    EXPECT_EQ(light[0], 0xFF404040);      // a quarter of the light
    const auto plane = Read(FitsBytes(-32, {4, 4, 3}, [](auto i) { return i < 16 ? kNaN : 0.5F; }));
    EXPECT_EQ(Light(*plane, LinearStretch(plane->Range()))[0], 0xFF008080);
    const auto all = Read(FitsBytes(-64, {4, 4}, [](auto) { return kNaN; }), 1, 1);
    EXPECT_EQ(Light(*all, all->Automatic())[0], 0xFF000000);
}

// One huge number in place of what was not measured.
TEST_F(FitsPictures, FillValuesAreNone) {
    for (const double fill : {1e9, -1e10, 3.4e38}) {
        const auto sample = [=](std::size_t i) { return i % 7 == 0 ? fill : 100.0 + double(i); };
        const auto pixels = Read(FitsBytes(-32, {20, 10}, sample));
        EXPECT_EQ(pixels->Range(), (ValueRange{101, 299})) << fill;
        EXPECT_TRUE(std::isnan(pixels->Value(0, 0, 9))) << fill;
    }
    // Two of them, or one that the others come near, are values.
    for (const double near : {2e9, 2e6}) {
        const auto sample = [=](std::size_t i) { return i == 0 ? 1e9 : i == 1 ? near : 5.0; };
        EXPECT_EQ(Read(FitsBytes(-32, {20, 10}, sample))->Range().high, std::max(1e9, near));
    }
}

TEST_F(FitsPictures, NumbersOfAnySizeAreShown) {
    const auto same = [](double value) { return [value](std::size_t) { return value; }; };
    for (const std::string& bytes :
         {FitsBytes(-32, {20, 10}, same(1e20)), FitsBytes(-64, {20, 10}, same(1e300)),
          FitsBytes(64, {20, 10}, same(4611686018427387904.0)),
          FitsBytes(16, {20, 10}, Ramp, {{"BSCALE", "1E308"}}),
          FitsBytes(16, {20, 10}, Ramp, {{"BZERO", "-1E308"}, {"BSCALE", "1E308"}}),
          FitsBytes(-32, {20, 10}, [](auto i) { return i % 2 ? 3e38 : -3e38; })}) {
        const auto pixels = Read(bytes);
        ASSERT_TRUE(pixels) << error;
        EXPECT_LT(pixels->Range().low, pixels->Range().high);
        EXPECT_EQ(Light(*pixels, pixels->Automatic())[0] >> 24, 0xFF);
    }
}

TEST_F(FitsPictures, ReducedPixelsAreMeansAndCoverThePicture) {
    const std::string bytes = FitsBytes(16, {5, 4}, Ramp);
    EXPECT_EQ(Rows(bytes, 0, 2, 2), "13 15 16.5/3 5 6.5");
    EXPECT_EQ(Rows(bytes, 0, 3, 2), Rows(bytes)); // a half would be too few
    EXPECT_EQ(Rows(FitsBytes(-32, {2, 2}, [](auto i) { return i == 0 ? kNaN : 3; }), 0, 1, 1), "3");
}

// Red 10, green 20, blue 30, whatever the pattern and its offset say.
TEST_F(FitsPictures, ColoursComeOutOfTheMosaic) {
    const std::string letters = "GRBG";
    const auto sample = [&](std::size_t i) {
        const char colour = letters[i / 7 % 2 * 2 + i % 7 % 2];
        return colour == 'R' ? 10 : colour == 'G' ? 20 : 30;
    };
    for (const std::vector<FitsWord>& words :
         {std::vector<FitsWord>{{"BAYERPAT", "'GRBG'"}},
          std::vector<FitsWord>{{"BAYERPAT", "'RGGB'"}, {"XBAYROFF", "1"}},
          std::vector<FitsWord>{
              {"BAYERPAT", "'BGGR'"}, {"YBAYROFF", "1"}, {"ROWORDER", "'TOP-DOWN'"}}})
        for (const int wanted : {0, 3, 1}) {
            const auto pixels = Read(FitsBytes(16, {7, 5}, sample, words), wanted, wanted);
            ASSERT_EQ(pixels->Channels(), 3);
            EXPECT_EQ(pixels->Width(), wanted == 0 ? 7 : wanted == 3 ? 7 : 2);
            for (int y = 0; y < pixels->Height(); ++y)
                for (int x = 0; x < pixels->Width(); ++x)
                    for (int channel = 0; channel < 3; ++channel)
                        ASSERT_EQ(pixels->Value(channel, x, y), 10 * (channel + 1))
                            << words[0].value << " " << x << " " << y;
        }
    EXPECT_EQ(Read(FitsBytes(8, {4, 4}, Ramp, {{"BAYERPAT", "'GGGG'"}}))->Channels(), 1);
}

TEST_F(FitsPictures, HeaderAsLinesOfThePanel) {
    const std::string path =
        folder.Write("a.fit", NightSky(8, 8,
                                       {{"OBJECT", "'M 31    '"},
                                        {"DATE-OBS", "'2024-11-05T21:14:33.5'"},
                                        {"EXPTIME", "120.500"},
                                        {"GAIN", "100"},
                                        {"CCD-TEMP", "-10.0"},
                                        {"FILTER", "'H\xE4'"},
                                        {"TELESCOP", "'O''Hara 80'"},
                                        {"BAYERPAT", "'RGGB'"}}));
    EXPECT_EQ(
        SkyFactsOf(path).lines,
        (std::vector<std::string>{"      Object: M 31", "    Observed: 2024-11-05 21:14:33.5 UT",
                                  "    Exposure: 120.5s", "        Gain: 100",
                                  " Temperature: -10 C", "      Filter: H?",
                                  "   Telescope: O'Hara 80", "      Format: 16 bit, Bayer RGGB"}));
    const std::string bare = folder.Write("b.fit", FitsBytes(-32, {2, 2, 3}, Ramp));
    EXPECT_EQ(SkyFactsOf(bare).lines,
              std::vector<std::string>{"      Format: 32 bit floating point, 3 planes"});
    EXPECT_EQ(SkyFactsOf(folder.Write("c.fit", "no")), SkyFacts());
}

TEST(ScreenStretch, SkyGoesToAQuarterAndWhatIsBelowItToBlack) {
    const ChannelStatistics sky{1000, 20};
    const Stretch stretch = AutomaticStretch({0, 65535}, {&sky, 1});
    EXPECT_NEAR(stretch.shadows * 65535, 1000 - 2.8 * 20, 0.001);
    const ToLight light(stretch, 0);
    EXPECT_EQ(light(1000), 64);
    EXPECT_EQ(light(944), 0);
    EXPECT_EQ(light(0), 0);
    EXPECT_EQ(light(65535), 255);
    EXPECT_EQ(light(kNaN), 0);
    EXPECT_NEAR(MidtoneCurve(0.1, 0.1), 0.5, 1e-12);
    const ToLight straight(LinearStretch({100, 355}), 0);
    for (const float value : {100.0F, 101.0F, 227.0F, 355.0F})
        EXPECT_EQ(straight(value), std::uint32_t(value - 100));
}

TEST(ScreenStretch, StraightHasOneRangeForALockedSeries) {
    StretchChoice choice;
    choice.linear = true;
    choice.of = {1, 2, -32, 1};
    choice.fixed = Stretch{{0, 1000}, 0.1, 0.2, 0.9};
    const Stretch automatic{{0, 7}, 0.3};
    const Stretch straight = LinearStretch({0, 7});
    const StretchedFile next{1, 3, -32, 1};
    EXPECT_EQ(choice.For(next, automatic, straight), straight);
    choice.locked = true;
    EXPECT_EQ(choice.For(next, automatic, straight), LinearStretch({0, 1000}));
    EXPECT_EQ(choice.For({1, 3, 16, 1}, automatic, straight), straight); // of another kind
    choice.linear = false;
    EXPECT_EQ(choice.For(next, automatic, straight), *choice.fixed);
}

TEST(ScreenStretch, SkyOfAColourBecomesGrey) {
    const std::array<ChannelStatistics, 3> sky{{{0.1, 0.01}, {0.2, 0.02}, {0.15, 0.01}}};
    const Stretch stretch = AutomaticStretch({0, 1}, sky);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(ToLight(stretch, i)(float(sky[i].median)), 64);
}

TEST(ScreenStretch, PicturesWithoutNoiseOrSkyAreShownToo) {
    for (const double median : {0.0, 0.3, 1.0}) {
        const ChannelStatistics flat{median, 0};
        const ToLight light(AutomaticStretch({0, 1}, {&flat, 1}), 0);
        EXPECT_EQ(light(0), 0);
        EXPECT_EQ(light(1), 255);
    }
    const Stretch crossed{{0, 1}, 0.5, 0.5, 0.2};
    EXPECT_EQ(ToLight(crossed, 0)(0.4F), 0);
    EXPECT_EQ(ToLight(crossed, 0)(0.6F), 255);
}

} // namespace
