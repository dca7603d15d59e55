// Pictures of telescopes on the screen, and the window that stretches them.
#include "Desk.h"
#include "FitsFiles.h"
#include "XisfFiles.h"

#include "imaging/PicturesAhead.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/ScreenStretch.h"

#include <QAction>
#include <QCheckBox>
#include <QPushButton>
#include <QSlider>
#include <QTest>

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

const std::string kSky = NightSky(300, 200);

class Stretching : public ::testing::Test {
protected:
    ~Stretching() override { SetStretchChoice({}); }

    static QSlider& Midtones() { return *Part<QSlider>("frmStretch", "MidtonesSlider"); }

    // Mean light of the right half, where there is only sky.
    static int Sky(const QImage& picture) {
        double sum = 0;
        const int left = picture.width() / 2;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = left; x < picture.width(); ++x) sum += qGray(picture.pixel(x, y));
        return int(sum / (picture.width() - left) / picture.height());
    }
    int Shown() const { return Sky(d.controls.Picture1->Picture()); }
    bool ShownNear(int light) const { return std::abs(Shown() - light) < 8; }
    void Settle() {
        EXPECT_TRUE(QTest::qWaitFor([&] { return StretchGeneration() != m_generation; }));
        m_generation = StretchGeneration();
    }
    void Move(QSlider& slider, int by) {
        m_generation = StretchGeneration();
        slider.setValue(slider.value() + by);
    }

    Desk d;
    std::int64_t m_generation = 0;
};

TEST_F(Stretching, SkyIsDarkGreyAndStarsAreWhite) {
    d.state.PreviewWidth = 300;
    d.state.PreviewHeight = 200;
    d.Show("a.fit", kSky);
    EXPECT_TRUE(d.state.ImageLoaded);
    EXPECT_EQ(d.state.SizeText, "300 x 200");
    EXPECT_TRUE(ShownNear(64)) << Shown();
    EXPECT_GT(qGray(d.controls.Picture1->Picture().pixel(75, 50)), 250);
    EXPECT_FALSE(d.controls.DeleteFitsButton->isVisibleTo(&d.window));
    EXPECT_TRUE(d.controls.StretchButton->isEnabled());
    d.state.PreviewWidth = 75;
    d.Show("a.fit", kSky);
    EXPECT_TRUE(ShownNear(64)) << Shown();
    d.Show("a.jpg", JpegBytes(TellTale(75, 50)));
    EXPECT_FALSE(d.controls.StretchButton->isEnabled());
}

TEST_F(Stretching, WhatIsWrongWithAFileStandsInTheMessages) {
    d.Show("cut.fit", kSky.substr(0, kSky.size() / 2));
    EXPECT_EQ(d.Times("message The file ends too early - cut.fit"), 1);
    EXPECT_TRUE(d.state.ImageLoaded);
    EXPECT_EQ(qGray(d.controls.Picture1->Picture().pixel(40, 2)), 0); // the top comes last
    d.Show("none.fits", kSky.substr(0, 2880));
    EXPECT_EQ(d.Times("message The file ends too early - none.fits"), 1);
    EXPECT_EQ(d.controls.Picture1->Picture().width(), 75) << "the placeholder";
    EXPECT_FALSE(d.state.ImageLoaded);
    EXPECT_TRUE(d.controls.DeleteFitsButton->isVisibleTo(&d.window));
}

TEST_F(Stretching, StepsThroughThePicturesOfAFile) {
    const MainControls& c = d.controls;
    const auto steps = [&] {
        return std::pair(c.PrevImageButton->isEnabled(), c.NextImageButton->isEnabled());
    };
    const auto flat = [](std::size_t) { return 9.0; };
    const std::string two = FitsBytes(16, {30, 20}, flat) + FitsExtension(16, {10, 5}, flat);
    d.Show("one.fit", kSky);
    EXPECT_EQ(steps(), std::pair(false, false));
    d.Show("two.fit", two);
    EXPECT_EQ(d.state.SizeText, "30 x 20");
    EXPECT_EQ(steps(), std::pair(false, true));
    c.NextImageButton->trigger();
    EXPECT_EQ(d.state.SizeText, "10 x 5");
    EXPECT_EQ(d.calls.back(), "message Image 2 of 2 in the file");
    EXPECT_EQ(steps(), std::pair(true, false));
    d.room.NextImageButton_Click(); // there is no third
    EXPECT_EQ(d.state.SizeText, "10 x 5");
    d.Show("other.fit", two);
    EXPECT_EQ(d.state.SizeText, "30 x 20");
    d.Show("two.fit", two);
    EXPECT_EQ(d.state.SizeText, "10 x 5") << "its own again";
    c.PrevImageButton->trigger();
    EXPECT_EQ(d.state.SizeText, "30 x 20");
    XisfPicture small;
    small.width = 4;
    d.Show("two.xisf", XisfBytes({XisfPicture(), small}));
    c.NextImageButton->trigger();
    EXPECT_EQ(d.state.SizeText, "4 x 2");
    d.Show("a.jpg", JpegBytes(TellTale(75, 50)));
    EXPECT_EQ(steps(), std::pair(false, false));
    ChooseImage({});
}

TEST_F(Stretching, WhatIsWrongWithAnXisfFileStandsOverThePicture) {
    XisfPicture picture;
    picture.attributes = "checksum=\"sha-1:00\"";
    d.Show("sum.xisf", XisfBytes({picture}));
    EXPECT_TRUE(d.state.ImageLoaded);
    const std::string wrong = "error The XISF file cannot be read: block of image 1: ";
    EXPECT_EQ(d.Times(wrong + "checksum SHA-1 differs - sum.xisf"), 1);
    picture.attributes.clear();
    picture.codec = "zlib";
    const std::string packed = XisfBytes({picture});
    d.Show("cut.xisf", packed.substr(0, packed.size() - 1));
    EXPECT_FALSE(d.state.ImageLoaded);
    EXPECT_EQ(d.Times(wrong + "the file ends too early - cut.xisf"), 1);
}

TEST_F(Stretching, SliderChangesThePictureAtOnceAndWhatIsMadeOfItAfterwards) {
    d.Show("a.fit", kSky);
    d.room.RotateRightButton_Click();
    const QSize turned = d.controls.Picture1->Picture().size();
    d.room.StretchButton_Click();
    const int before = Shown();
    Move(Midtones(), 400);
    const int after = Shown();
    EXPECT_LT(after, before - 20);
    EXPECT_NEAR(Sky(d.state.ImgXfull.SystemPicture()), before, 8) << "not yet";
    Settle();
    EXPECT_NEAR(Sky(d.state.ImgXfull.SystemPicture()), after, 2);
    EXPECT_NEAR(Shown(), after, 2);
    EXPECT_EQ(d.controls.Picture1->Picture().size(), turned);
    ImgX again;
    EXPECT_EQ(again.LoadFile(d.state.Filename, {}), "");
    EXPECT_NEAR(Sky(again.FullPicture()), after, 2) << "a show or a print";
    Part<QPushButton>("frmStretch", "ResetStretchButton")->click();
    EXPECT_NEAR(Shown(), before, 2);
}

TEST_F(Stretching, ValuesHoldForOnePictureAndLockedForTheSeries) {
    d.Show("a.fit", kSky);
    d.room.StretchButton_Click();
    Move(Midtones(), 400);
    Settle();
    const int changed = Shown();
    d.Show("b.fit", kSky);
    EXPECT_TRUE(ShownNear(64)) << Shown();
    d.Show("a.fit", kSky);
    EXPECT_EQ(Shown(), changed) << "its own again";
    Part<QCheckBox>("frmStretch", "LockStretchCheck")->click();
    d.Show("b.fit", kSky);
    EXPECT_NEAR(Shown(), changed, 2);
    d.Show("colour.fit", NightSky(300, 200, {{"BAYERPAT", "'RGGB'"}}));
    EXPECT_TRUE(ShownNear(64)) << Shown() << ", no picture of the series";
    {
        const AutomaticStretchOnly automatic;
        ImgX thumbnail;
        thumbnail.LoadFile(d.folder.Path() + "/b.fit", {});
        EXPECT_NEAR(Sky(thumbnail.FullPicture()), 64, 8);
    }
    d.Show("none.fit", "no picture");
    EXPECT_TRUE(QTest::qWaitFor([] { return !Midtones().isEnabled(); }));
    d.Show("b.fit", kSky);
    EXPECT_TRUE(QTest::qWaitFor([] { return Midtones().isEnabled(); }));
    Part<QCheckBox>("frmStretch", "LockStretchCheck")->click();
    d.Show("c.fit", kSky);
    EXPECT_TRUE(ShownNear(64)) << Shown();
}

TEST_F(Stretching, LinearShowsWhatIsStored) {
    d.Show("a.fit", kSky);
    d.room.StretchButton_Click();
    Part<QCheckBox>("frmStretch", "LinearCheck")->click();
    EXPECT_EQ(Shown(), 1000 * 255 / 65535 + 1);
    EXPECT_FALSE(Midtones().isEnabled());
    d.Show("b.fit", kSky);
    EXPECT_EQ(Shown(), 1000 * 255 / 65535 + 1);
    Part<QCheckBox>("frmStretch", "LinearCheck")->click();
    EXPECT_TRUE(ShownNear(64)) << Shown();
}

// What was decoded ahead with another stretch does not count.
TEST_F(Stretching, PicturesDecodedAheadFollow) {
    const std::string path = d.folder.Write("a.fit", kSky);
    PicturesAhead ahead;
    ahead.Expect({{path, {80, 50}, {}}});
    ahead.WaitUntilDone();
    EXPECT_TRUE(ahead.Take(path, {80, 50}));
    StretchChoice choice;
    choice.linear = true;
    SetStretchChoice(choice);
    EXPECT_FALSE(ahead.Take(path, {80, 50}));
}

} // namespace
