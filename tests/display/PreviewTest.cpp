// What the user does with the picture on screen: turns, cut modes, brightness, reloading.
#include "Desk.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

#include <filesystem>

using namespace tarn;
using namespace tarn::testing;

namespace {

class Preview : public ::testing::Test {
protected:
    // By hand, as a click does: the box is toggled, and its command runs.
    void Click(QCheckBox* box) {
        d.calls.clear();
        box->click();
    }
    auto Loads() const { return d.Times("busy"); }
    const QImage& Shown() const { return d.controls.Picture1->Picture(); }

    Desk d;
};

} // namespace

TEST_F(Preview, TurnsFitThePictureAgain) {
    d.Show("a.jpg", JpegBytes(TellTale(640, 400)));
    d.calls.clear();
    d.room.RotateRightButton_Click();
    EXPECT_EQ(d.Shown(), "31x50 bryg");
    EXPECT_EQ(d.state.ImageWidth, 400);
    EXPECT_EQ(d.state.SizeText, "400 x 640");
    EXPECT_EQ(d.calls, Calls{"FocusPane"});
    d.room.RotateLeftButton_Click();
    EXPECT_EQ(d.Shown(), "80x50 rgby") << "as large as before";
    EXPECT_TRUE(d.state.ImageRotatedRight);
    EXPECT_TRUE(d.state.ImageRotatedLeft);
    d.controls.FlipButton->click();
    EXPECT_EQ(d.Shown(), "80x50 byrg");
    d.controls.MirrorButton->click();
    EXPECT_EQ(d.Shown(), "80x50 ybgr");
    d.controls.RotateRightButton->click();
    EXPECT_EQ(d.Shown(), "31x50 gyrb") << "a later turn keeps the mirrorings";
    EXPECT_EQ(Quarters(d.state.ImgXfull.FullPicture()), "rgby") << "the full copy is not turned";
}

TEST_F(Preview, OneXAndTwoXExcludeEachOtherAndLoadOnce) {
    d.Show("a.jpg", JpegBytes(TellTale(640, 400)));
    Click(d.controls.OneXcheck);
    EXPECT_EQ(d.Shown(), "80x50 rgby") << "the middle";
    EXPECT_EQ(Loads(), 1);
    EXPECT_EQ(d.controls.PreviewLabel->text().toStdString(),
              "Preview picture is full size cropped if needed");
    EXPECT_FALSE(d.controls.CropLabel->isHidden());
    EXPECT_EQ(d.LastCall(), "FocusPane");
    Click(d.controls.TwoXcheck);
    EXPECT_FALSE(d.controls.OneXcheck->isChecked());
    EXPECT_TRUE(d.state.TwoX);
    EXPECT_FALSE(d.state.OneX);
    EXPECT_EQ(Loads(), 1);
    EXPECT_EQ(d.state.SizeText, "1280 x 800");
    EXPECT_EQ(d.state.ImageWidth, 640) << "of the file";
    EXPECT_EQ(d.controls.PreviewLabel->text().toStdString(),
              "Preview picture is 2x cropped if needed");
    Click(d.controls.TwoXcheck);
    EXPECT_FALSE(d.state.TwoX);
    EXPECT_FALSE(d.state.OneX);
    EXPECT_EQ(Loads(), 1);
    EXPECT_EQ(d.controls.PreviewLabel->text().toStdString(), "Preview picture is reduced");
    EXPECT_TRUE(d.controls.CropLabel->isHidden());
}

TEST_F(Preview, CutsAreTakenFromThePicturesOwnPixels) {
    const QImage picture = Ramp(173, 121);
    d.state.OneX = true;
    d.Show("a.png", PictureBytes(picture, "PNG"));
    EXPECT_EQ(Shown(), picture.copy(46, 36, 80, 50)) << "46.5 and 35.5, halves to even";
    d.state.OneX = false;
    d.state.TwoX = true;
    d.Show("a.png", PictureBytes(picture, "PNG"));
    const QImage doubled =
        picture.scaled(346, 242, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_EQ(Shown(), doubled.copy(133, 96, 80, 50)) << "as from the whole picture doubled";
    d.state.PreviewWidth = 800;
    d.state.PreviewHeight = 500;
    d.room.ShowPreview();
    EXPECT_EQ(Shown(), doubled) << "nothing to cut";
    EXPECT_TRUE(d.controls.CropLabel->isHidden());
}

TEST_F(Preview, MirroringInCutModeMirrorsTheCutAsItStands) {
    d.state.OneX = true;
    d.Show("a.png", PictureBytes(Ramp(173, 121), "PNG"));
    const QImage cut = Shown();
    d.room.MirrorButton_Click();
    EXPECT_EQ(Shown(), cut.mirrored(true, false));
    d.room.FlipButton_Click();
    EXPECT_EQ(Shown(), cut.mirrored(true, true));
    d.room.ShowPreview();
    EXPECT_EQ(Shown().size(), cut.size());
    EXPECT_GT(qRed(Shown().pixel(0, 0)), qRed(Shown().pixel(79, 0))) << "still mirrored";
}

TEST_F(Preview, ALargerPaneGetsMorePixels) {
    d.Show("a.jpg", JpegBytes(TellTale(640, 400)));
    ASSERT_LT(d.state.ImgXfull.SystemPicture().width(), 640);
    d.state.PreviewWidth = 400;
    d.state.PreviewHeight = 250;
    d.room.ShowPreview();
    EXPECT_EQ(d.Shown(), "400x250 rgby");
    d.state.PreviewWidth = 2000;
    d.state.PreviewHeight = 2000;
    d.room.ShowPreview();
    EXPECT_EQ(d.Shown(), "640x400 rgby");
}

TEST_F(Preview, RedrawReloadsWhatIsUp) {
    d.state.WebTypes = "*.htm;*.html";
    d.Show("a.jpg", JpegBytes(TellTale(640, 400)));
    const auto redraw = [this] {
        d.calls.clear();
        d.room.Redraw();
        return d.calls;
    };
    d.folder.Write("a.jpg", JpegBytes(TellTale(40, 30)));
    redraw();
    EXPECT_EQ(d.Times("history with row"), 1);
    EXPECT_EQ(d.Shown(), "40x30 rgby");

    d.state.Kind = FileKind::Text;
    EXPECT_EQ(redraw(), Calls{"history with row"});
    Click(d.controls.OneXcheck);
    EXPECT_EQ(Loads(), 0) << "no picture is up";
    d.state.Kind = FileKind::Clip;
    EXPECT_EQ(redraw(), (Calls{"history with row", "ShowVideoFile", "FocusPane"}));
    d.state.FileType = ".HTM";
    EXPECT_EQ(redraw(), (Calls{"history with row", "Load_web"}));
    d.state.FileType = "HTML";
    EXPECT_EQ(redraw(), (Calls{"history with row", "Load_web"}));
}

TEST_F(Preview, PictureCommandsFollowButThoseWithoutACommandStayOff) {
    const MainControls& c = d.controls;
    const std::vector<QAction*> entries{
        c.PrintButton,          c.PrintCButton,      c.Printc4Button,   c.PrintCSButton,
        c.PrintCMButton,        c.AdjustButton,      c.SyncDatesButton, c.GenerateThumbButton,
        c.GenerateThumbCButton, c.CopyPictureButton, c.ZoomInButton,    c.ZoomOutButton,
        c.FitToPaneButton};
    d.room.SetPictureCommands(true);
    EXPECT_FALSE(c.PrintButton->isEnabled());
    for (QAction* entry : entries) Connect(entry, [] {});
    for (const bool on : {true, false}) {
        d.room.SetPictureCommands(on);
        for (QAction* entry : entries)
            EXPECT_EQ(entry->isEnabled(), on) << entry->text().toStdString();
        for (QPushButton* button : {c.ViewButton, c.RotateRightButton, c.RotateLeftButton,
                                    c.FlipButton, c.MirrorButton, c.OneToOneButton})
            EXPECT_EQ(button->isEnabled(), on) << button->text().toStdString();
    }
}
