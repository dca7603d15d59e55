// The picture in the pane larger than it fits.
#include "Desk.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>

#include <gtest/gtest.h>

#include <filesystem>

using namespace tarn;
using namespace tarn::testing;

namespace {

class PaneZoom : public ::testing::Test {
protected:
    PaneZoom() { d.controls.Picture1->setGeometry(0, 0, 80, 50); }

    const QImage& Shown() const { return d.controls.Picture1->Picture(); }
    std::string Text() const { return d.controls.PreviewLabel->text().toStdString(); }
    void ShowRamp(const std::string& name, int width, int height) {
        d.Show(name, PictureBytes(Ramp(width, height), "PNG"));
    }

    Desk d; // whose pane has 80 x 50 pixels
};

} // namespace

TEST_F(PaneZoom, ShowsThePixelsAsTheyAreAndGoesBackToTheFit) {
    const QImage picture = Ramp(400, 300);
    ShowRamp("a.png", 400, 300);
    const QImage fitted = Shown();
    EXPECT_EQ(d.state.ZoomText, "17%"); // 67 of 400
    d.room.Zoom(-1);
    EXPECT_EQ(Shown(), fitted);

    d.room.Zoom(1);
    EXPECT_EQ(Shown(), picture.copy(160, 125, 80, 50));
    EXPECT_EQ(d.state.SizeText, "400 x 300");
    EXPECT_EQ(d.state.ZoomText, "100%");
    EXPECT_EQ(Text(), "Preview picture is full size cropped if needed");
    EXPECT_FALSE(d.controls.CropLabel->isHidden());
    EXPECT_EQ(d.controls.Picture1->cursor().shape(), Qt::OpenHandCursor);
    d.room.Zoom(2);
    EXPECT_EQ(Shown(), picture.copy(190, 143, 21, 14).scaled(84, 56).copy(0, 3, 80, 50))
        << "four pixels for one";
    EXPECT_EQ(d.state.ZoomText, "400%");
    EXPECT_EQ(Text(), "Preview picture is 4x cropped if needed");
    d.room.Zoom(-9);
    EXPECT_EQ(Shown(), fitted) << "to the pixel";
    EXPECT_EQ(Text(), "Preview picture is reduced");
    EXPECT_TRUE(d.controls.CropLabel->isHidden());
    EXPECT_EQ(d.controls.Picture1->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PaneZoom, ZoomsAtAPlaceOfThePaneAndFollowsThePointer) {
    const QImage picture = Ramp(400, 300);
    ShowRamp("a.png", 400, 300);
    EXPECT_FALSE(d.room.MayPan());
    d.room.Zoom(1, QPointF(40 + 24, 25 - 10)); // on the pixel 343, 90
    EXPECT_EQ(Shown(), picture.copy(279, 75, 80, 50));
    EXPECT_TRUE(d.room.MayPan());
    d.room.Pan({30, 5});
    EXPECT_EQ(Shown(), picture.copy(249, 70, 80, 50));
    d.room.Pan({-500, 500});
    EXPECT_EQ(Shown(), picture.copy(320, 0, 80, 50));
    ShowRamp("small.png", 20, 10);
    EXPECT_EQ(Shown(), Ramp(20, 10));
    EXPECT_FALSE(d.room.MayPan()) << "all of it is seen";
    EXPECT_EQ(d.controls.Picture1->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PaneZoom, StaysFromPictureToPictureAtTheSamePlace) {
    ShowRamp("a.png", 400, 300);
    d.room.Zoom(1);
    d.room.Pan({-100, 75}); // to 300, 75
    ShowRamp("b.png", 800, 600);
    EXPECT_EQ(Shown(), Ramp(800, 600).copy(560, 125, 80, 50));
    d.Show("c.jpg", "no picture");
    EXPECT_EQ(d.Shown().substr(0, 5), "75x50") << "the placeholder is seen whole";
    EXPECT_EQ(d.state.ZoomText, "");
    EXPECT_FALSE(d.room.MayPan());
    d.info.whenRead = [this] { d.state.ExpOrientation = 6; };
    ShowRamp("d.png", 300, 400);
    const QImage upright = Ramp(300, 400).transformed(QTransform().rotate(90));
    EXPECT_EQ(Shown(), upright.copy(260, 50, 80, 50));
    d.info.whenRead = nullptr;
    ShowRamp("a.png", 400, 300);
    EXPECT_EQ(Shown(), Ramp(400, 300).copy(260, 50, 80, 50));
}

TEST_F(PaneZoom, TurnsAndBrightnessActOnWhatIsSeen) {
    ShowRamp("a.png", 400, 300);
    d.room.Zoom(1);
    d.room.Pan({-100, 75}); // to 300, 75
    QImage turned = Ramp(400, 300).transformed(QTransform().rotate(90));
    d.room.RotateRightButton_Click();
    EXPECT_EQ(Shown(), turned.copy(225 - 40, 300 - 25, 80, 50));
    EXPECT_EQ(d.state.SizeText, "300 x 400");
    d.room.MirrorButton_Click();
    turned = turned.mirrored(true, false);
    EXPECT_EQ(Shown(), turned.copy(75 - 40, 300 - 25, 80, 50));
    d.room.SetBrightness(20);
    ImgX bright;
    bright.TakePicture(turned.copy(35, 275, 80, 50));
    bright.Brightness(20);
    EXPECT_EQ(Shown(), bright.FullPicture());
    EXPECT_EQ(d.room.ShownPicture().FullPicture(), bright.FullPicture());
    d.room.SetBrightness(0);
    ShowRamp("b.png", 400, 300);
    EXPECT_EQ(Shown(), Ramp(400, 300).copy(260, 50, 80, 50)) << "the next is as it came";
}

TEST_F(PaneZoom, TheBoxesAreWhereTheZoomBeginsAndFitToPaneUnticksThem) {
    const QImage picture = Ramp(400, 300);
    ShowRamp("a.png", 400, 300);
    d.room.Zoom(3);
    d.controls.OneXcheck->click();
    EXPECT_EQ(Shown(), picture.copy(160, 125, 80, 50)) << "the box shows what it says";
    EXPECT_EQ(d.state.ZoomText, "100%");
    d.room.Zoom(1);
    EXPECT_EQ(d.state.ZoomText, "200%");
    d.room.Zoom(-1);
    EXPECT_EQ(Shown(), picture.copy(160, 125, 80, 50));
    d.room.Zoom(1);
    d.controls.FitToPaneButton->trigger();
    EXPECT_FALSE(d.controls.OneXcheck->isChecked());
    EXPECT_EQ(d.state.ZoomText, "17%");
    d.room.Zoom(1);
    d.controls.FitToPaneButton->trigger();
    EXPECT_EQ(d.state.ZoomText, "17%");
}

TEST_F(PaneZoom, TheEntriesNeedAPicture) {
    const MainControls& c = d.controls;
    ShowRamp("a.png", 400, 300);
    c.ZoomInButton->trigger();
    EXPECT_EQ(d.state.ZoomText, "100%");
    c.ZoomOutButton->trigger();
    EXPECT_EQ(d.state.ZoomText, "17%");
    for (QAction* entry : {c.ZoomInButton, c.ZoomOutButton, c.FitToPaneButton})
        EXPECT_TRUE(entry->isEnabled()) << entry->text().toStdString();
    d.room.ShowNothing();
    d.room.Zoom(1);
    EXPECT_EQ(d.Shown(), "nothing");
    EXPECT_EQ(d.state.ZoomText, "");
    for (QAction* entry : {c.ZoomInButton, c.ZoomOutButton, c.FitToPaneButton})
        EXPECT_FALSE(entry->isEnabled()) << entry->text().toStdString();
}

TEST_F(PaneZoom, PicturesComeWithAllTheirPixelsAsLongAsItIsZoomed) {
    const std::string bytes = JpegBytes(TellTale(640, 400));
    d.state.PictureTypes = "*.jpg";
    d.folder.Write("b.jpg", bytes);
    d.Show("a.jpg", bytes);
    const auto wholeAhead = [this] {
        d.ahead.WaitUntilDone();
        return d.ahead.Take(d.folder.Path() + "/b.jpg", {}) != nullptr;
    };
    EXPECT_FALSE(wholeAhead());
    d.room.Zoom(1);
    EXPECT_TRUE(wholeAhead());
    d.Show("b.jpg", bytes);
    EXPECT_EQ(d.state.ImgXfull.SystemPicture().width(), 640);
    EXPECT_EQ(d.Shown(), "80x50 rgby");
    // While a show runs nobody sees the pane.
    d.state.SlideViewing = true;
    d.folder.Write("c.jpg", bytes);
    d.Show("c.jpg", bytes);
    EXPECT_LT(d.state.ImgXfull.SystemPicture().width(), 640);
    d.state.SlideZoomed = true;
    d.folder.Write("d.jpg", bytes);
    d.Show("d.jpg", bytes);
    EXPECT_EQ(d.state.ImgXfull.SystemPicture().width(), 640);
}

TEST_F(PaneZoom, SaysWhyThePixelsCannotBeHadAnyMore) {
    d.Show("a.jpg", JpegBytes(TellTale(640, 400)));
    std::filesystem::remove(d.state.Filename);
    d.room.Zoom(1);
    EXPECT_EQ(d.Shown(), "80x50 rgby") << "an enlargement";
    EXPECT_EQ(d.Times("message No such file or directory - a.jpg"), 1);
    d.room.Pan({5, 5});
    EXPECT_EQ(d.Times("busy"), 2) << "asked once";
}
