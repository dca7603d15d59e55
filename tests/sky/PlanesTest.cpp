// The same stars in files of each kind.
#include "FitsFiles.h"
#include "MadeSky.h"
#include "PictureFiles.h"
#include "clips/MadeSer.h"

#include "imaging/fits/KeptCards.h"
#include "sky/planes/FramesOfFiles.h"
#include "sky/planes/MeasurePicture.h"
#include "sky/planes/PictureValues.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

constexpr int kWidth = 600;
constexpr int kHeight = 400;
constexpr MadeStar kLike{.fwhm = 3.4};

MadeSky Night() {
    MadeSky sky(kWidth, kHeight, 5);
    sky.AddLevel(1000);
    sky.Scatter(60, kLike, 4000, 40000, 30);
    sky.Record(10);
    return sky;
}

std::string NightFits(const std::vector<FitsWord>& words = {}) {
    MadeSky sky = Night();
    std::vector<FitsWord> all = words;
    all.push_back({"BZERO", "32768"});
    return FitsBytes(
        16, {kWidth, kHeight},
        [&](std::size_t at) { return sky.At(int(at % kWidth), int(at / kWidth)) - 32768; }, all);
}

void ExpectTheNight(const FrameMeasures& row, double part) {
    EXPECT_EQ(row.fault, "");
    EXPECT_EQ(row.width, kWidth);
    EXPECT_EQ(row.height, kHeight);
    EXPECT_NEAR(row.stars, 58, 5) << row.noise << row.background;
    EXPECT_NEAR(row.hfr / (kLike.fwhm / 2), 1, part);
    EXPECT_NEAR(row.fwhm / kLike.fwhm, 1, part);
}

} // namespace

TEST(Planes, FitsHavePhysicalValues) {
    const TestFolder folder;
    const FrameMeasures whole = MeasurePicture(folder.Write("a.fits", NightFits()));
    ExpectTheNight(whole, 0.02);
    EXPECT_NEAR(whole.background, 1000, 2);
    MadeSky sky = Night();
    const std::string floats = FitsBytes(-32, {kWidth, kHeight}, [&](std::size_t at) {
        return at % kWidth == 100 ? std::nan("")
                                  : sky.At(int(at % kWidth), int(at / kWidth)) / 65535;
    });
    const FrameMeasures row = MeasurePicture(folder.Write("b.fits", floats));
    ExpectTheNight(row, 0.02);
    EXPECT_NEAR(row.background * 65535, 1000, 3);
    EXPECT_NEAR(row.noise * 65535, 33, 1);
}

TEST(Planes, ColoursAndMosaicsAreOnePlane) {
    const TestFolder folder;
    const FrameMeasures mosaic =
        MeasurePicture(folder.Write("a.fits", NightFits({{"BAYERPAT", "'RGGB'"}})));
    ExpectTheNight(mosaic, 0.06);
    MadeSky sky = Night();
    // A quarter, a half and a quarter of the planes is the sky again.
    const std::string planes = FitsBytes(-32, {kWidth, kHeight, 3}, [&](std::size_t at) {
        constexpr double kParts[] = {2, 0.5, 1};
        const std::size_t place = at % (kWidth * kHeight);
        return kParts[at / (kWidth * kHeight)] * sky.At(int(place % kWidth), int(place / kWidth));
    });
    const FrameMeasures colour = MeasurePicture(folder.Write("b.fits", planes));
    ExpectTheNight(colour, 0.02);
    EXPECT_NEAR(colour.background, 1000, 2);
}

// Places are those of the file, whose first row of FITS is the bottom one on the screen.
TEST(Planes, PlacesAreThoseOfTheFile) {
    const TestFolder folder;
    const std::string path = folder.Write("a.fits", NightFits());
    MadeSky sky(kWidth, kHeight, 5);
    const auto planted = sky.Scatter(60, kLike, 4000, 40000, 30);
    std::string fault;
    const auto listed = ListSourcesOf(path, fault);
    EXPECT_EQ(fault, "");
    ASSERT_FALSE(listed.empty());
    const auto brightest = std::max_element(
        planted.begin(), planted.end(),
        [](const MadeStar& one, const MadeStar& other) { return one.peak < other.peak; });
    EXPECT_NEAR(listed.front().x, brightest->x, 0.05);
    EXPECT_NEAR(listed.front().y, brightest->y, 0.05);
    EXPECT_NEAR(listed.front().peak, brightest->peak, 0.2 * brightest->peak);
}

TEST(Planes, PicturesOfTheScreenAreLinearLight) {
    const TestFolder folder;
    MadeSky sky = Night();
    QImage picture(kWidth, kHeight, QImage::Format_RGB32);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const double linear = std::clamp(double(sky.At(x, y)) / 65535, 0.0, 1.0);
            const double value =
                linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
            const int grey = int(std::lround(255 * value));
            picture.setPixel(x, y, qRgb(grey, grey, grey));
        }
    const FrameMeasures png = MeasurePicture(folder.Write("a.png", PictureBytes(picture, "PNG")));
    ExpectTheNight(png, 0.03);
    EXPECT_NEAR(png.background, 1000, 30);
    ExpectTheNight(MeasurePicture(folder.Write("a.jpg", JpegBytes(picture, JpegKind::Color, 92))),
                   0.06);
}

TEST(Planes, ClipsGiveTheirFirstFrame) {
    const TestFolder folder;
    MadeSky sky = Night();
    SerClip clip;
    clip.width = kWidth;
    clip.height = kHeight;
    clip.bits = 16;
    const std::vector<std::uint16_t> words = sky.Words();
    clip.frames = {{words.begin(), words.end()}, std::vector<int>(words.size(), 7)};
    ExpectTheNight(MeasurePicture(folder.Write("a.ser", SerBytes(clip))), 0.02);
    clip.color = 10; // a mosaic, green first, blue beside it
    std::string error;
    const auto frame = ReadFrameColours(folder.Write("b.ser", SerBytes(clip)), error);
    ASSERT_TRUE(frame) << error;
    EXPECT_TRUE(frame->mosaic);
    EXPECT_EQ(frame->width, kWidth);
    EXPECT_EQ(frame->height, kHeight);
    EXPECT_EQ(frame->colours, (std::array<int, 4>{1, 2, 0, 1}));
    EXPECT_EQ(frame->At(0, 31, 17), float(words[17 * kWidth + 31]));
}

// A picture behind others has the words of its own header and what the first one has besides.
TEST(Planes, CardsAreThoseOfThePicture) {
    const TestFolder folder;
    const auto dark = [](std::size_t) { return 0.0; };
    const std::string path = folder.Write(
        "parts.fits",
        FitsBytes(16, {}, dark, {{"OBJECT", "'M 31'"}, {"EXPTIME", "5.0"}}) +
            FitsExtension(16, {30, 20, 2}, dark, {{"FILTER", "'R'"}}) +
            FitsExtension(16, {30, 20}, dark, {{"EXPTIME", "7.0"}, {"FILTER", "'B'"}}));
    const auto words = [&](int image) {
        std::vector<std::string> begins;
        for (const std::string& card : CardsOfFrame(path, image))
            begins.push_back(card.substr(0, card.find_last_not_of(' ') + 1));
        std::sort(begins.begin(), begins.end());
        return begins;
    };
    EXPECT_EQ(words(1), (std::vector<std::string>{"EXPTIME =                  5.0", "FILTER  = 'R'",
                                                  "OBJECT  = 'M 31'"}));
    EXPECT_EQ(words(2), (std::vector<std::string>{"EXPTIME =                  7.0", "FILTER  = 'B'",
                                                  "OBJECT  = 'M 31'"}));
}

TEST(Planes, WhatIsNoLightFrameHasNoStars) {
    const TestFolder folder;
    for (const auto& [type, fault] : {std::pair{"'Dark Frame'", "a dark frame"},
                                      {"'FLAT'", "a flat frame"},
                                      {"'FlatDark'", "a dark frame"},
                                      {"'Master Bias'", "a bias frame"}}) {
        const FrameMeasures row =
            MeasurePicture(folder.Write("a.fits", NightFits({{"IMAGETYP", type}})));
        EXPECT_EQ(row.fault, fault);
        EXPECT_EQ(row.stars, 0);
        EXPECT_TRUE(std::isnan(row.hfr));
        EXPECT_TRUE(row.brightest.empty());
        EXPECT_NEAR(row.background, 1000, 2);
    }
}

TEST(Planes, WhatCannotBeReadSaysWhy) {
    const TestFolder folder;
    const std::string whole = NightFits();
    for (const auto& [name, bytes] : {std::pair{"cut.fits", whole.substr(0, whole.size() / 2)},
                                      {"header.fits", whole.substr(0, 400)},
                                      {"text.fits", std::string("no picture")},
                                      {"cut.ser", std::string("LUCAM-RECORDER")},
                                      {"empty.jpg", std::string()}}) {
        const FrameMeasures row = MeasurePicture(folder.Write(name, bytes));
        EXPECT_NE(row.fault, "") << name;
        EXPECT_EQ(row.width, 0) << name;
        EXPECT_TRUE(std::isnan(row.background)) << name;
    }
    std::string fault;
    EXPECT_TRUE(ListSourcesOf(folder.Path() + "/none.fits", fault).empty());
    EXPECT_EQ(fault, "No such file or directory");
}

// Cut off anywhere: told, and nothing is read that is not there.
TEST(Planes, FilesCutOffAnywhereDoNoHarm) {
    const TestFolder folder;
    const std::string whole = NightSky(40, 30);
    for (std::size_t size = 0; size < whole.size(); size += 97) {
        const FrameMeasures row = MeasurePicture(folder.Write("a.fits", whole.substr(0, size)));
        EXPECT_NE(row.fault, "") << size;
    }
}
