// The windows beside the main window: brightness, size window, 1:1 window.
#include "Desk.h"

#include "widgets/WindowPlaces.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

class PictureWindows : public ::testing::Test {
protected:
    static std::string Title(const char* window) {
        return Window(window)->windowTitle().toStdString();
    }
    // What the window shows, in pixels of the screen.
    static QImage OnScreen(QWidget& window) {
        QImage image = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
        image.setDevicePixelRatio(1);
        return image;
    }
    static void Wheel(QWidget& window, int delta, Qt::KeyboardModifiers with = Qt::NoModifier) {
        const QPointF at(window.width() / 2.0, window.height() / 2.0);
        QWheelEvent event(at, window.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, with,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&window, &event);
    }
    Calls Since(const std::function<void()>& act) {
        d.calls.clear();
        act();
        return d.calls;
    }

    Desk d;
};

// The current file is the show's: what it deletes or copies must be the slide that is seen.
TEST_F(PictureWindows, StandStillWhileAShowRuns) {
    d.Show("a.jpg", JpegBytes(TellTale(900, 700)));
    d.room.ViewFull();
    d.room.OneToOneButton_Click();
    d.state.SlideViewing = true;
    const Calls calls = Since([&] {
        for (QWidget* window : {Window("FrmPic"), Part("frmOnetoOne", "OnePicture2")})
            for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Y, Qt::Key_Delete})
                QTest::keyClick(window, Qt::Key(key));
        Wheel(*Window("FrmPic"), -120);
    });
    for (const char* call : {"Next", "Prev", "CopyImage", "Delete"})
        EXPECT_EQ(std::count(calls.begin(), calls.end(), call), 0) << call;
    d.state.SlideViewing = false;
    EXPECT_EQ(Since([&] { QTest::keyClick(Window("FrmPic"), Qt::Key_Down); }).front(), "Next");
}

TEST_F(PictureWindows, AnEmptiedListLeavesNoPictureInThem) {
    d.Show("a.jpg", JpegBytes(TellTale(900, 700)));
    d.room.ViewFull();
    d.room.OneToOneButton_Click();
    d.room.ShowNothing();
    d.room.SetBrightness(40); // which paints anew
    EXPECT_EQ(d.Shown(), "nothing");
    EXPECT_FALSE(d.state.ImgXfull.HasImage());
    const auto quarters = Quarters(OnScreen(*Window("frmOnetoOne")));
    EXPECT_EQ(quarters.find('r'), std::string::npos) << quarters;
}

} // namespace

using BrightnessWindow = PictureWindows;

TEST_F(BrightnessWindow, ChangesTheShownPictureFromItsUnchangedPixels) {
    QImage grey(40, 30, QImage::Format_RGB32);
    grey.fill(qRgb(100, 100, 100));
    d.Show("a.png", PictureBytes(grey, "PNG"));
    const auto shown = [this] { return qRed(d.controls.Picture1->Picture().pixel(5, 5)); };
    d.room.AdjustButton_Click();
    auto* slider = Part<QSlider>("frmBrightness", "BrightnessSlider");
    auto* label = Part<QLabel>("frmBrightness", "BrightnessLabel");
    EXPECT_EQ(slider->minimum(), -100);
    EXPECT_EQ(slider->maximum(), 100);
    EXPECT_EQ(slider->singleStep(), 1);
    EXPECT_EQ(slider->pageStep(), 5);
    slider->setValue(100);
    slider->setValue(40);
    EXPECT_EQ(shown(), 202);
    EXPECT_EQ(label->text(), QStringLiteral("40"));
    d.room.MirrorButton_Click();
    EXPECT_EQ(shown(), 202);
    d.Show("b.png", PictureBytes(grey, "PNG"));
    EXPECT_EQ(shown(), 202) << "holds for the next picture";
    d.room.SetBrightness(-500);
    EXPECT_EQ(slider->value(), -100);
    EXPECT_EQ(shown(), 0);

    // A slide follows.
    EXPECT_EQ(Since([&] { slider->setValue(20); }), Calls{"slide again"});
    EXPECT_EQ(Since([&] { d.room.ResetBButton_Click(); }), Calls{"slide again"});
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(shown(), 100);
}

TEST_F(BrightnessWindow, DoneTakesTheChangeAwayAndTheCloseBoxKeepsIt) {
    d.Show("a.jpg", JpegBytes(TellTale(60, 40)));
    d.room.AdjustButton_Click();
    QWidget* window = Window("frmBrightness");
    EXPECT_TRUE(IsOnTop(*window));
    EXPECT_FALSE(window->isModal());
    auto* slider = Part<QSlider>("frmBrightness", "BrightnessSlider");
    slider->setValue(40);
    window->move(300, 200);
    window->close();
    EXPECT_EQ(d.state.BrightnessValue, 40);
    EXPECT_EQ(d.state.BrightnessPlace.left, 300 * 15);
    EXPECT_EQ(d.state.BrightnessPlace.top, 200 * 15);
    d.room.AdjustButton_Click();
    EXPECT_EQ(slider->value(), 40);
    EXPECT_EQ(window->pos(), QPoint(300, 200));
    QTest::mouseClick(Part("frmBrightness", "CloseBrightnessButton"), Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(d.state.BrightnessValue, 0);
}

using SizeWindow = PictureWindows;

TEST_F(SizeWindow, PaintsThePictureInItsMiddleOnTheSlideBackground) {
    d.state.SlideBackground = 0x404040;
    d.state.TextNumOf = "3 of 12";
    const QImage picture = Ramp(64, 48);
    d.Show("a.png", PictureBytes(picture, "PNG"));
    d.room.ViewFull();
    QWidget* window = Window("FrmPic");
    ASSERT_TRUE(window);
    EXPECT_FALSE(window->parent());
    window->resize(100, 81);
    EXPECT_EQ(Title("FrmPic"), "a.png  (100x81)  156%  3 of 12");
    const QImage screen = OnScreen(*window);
    EXPECT_EQ(screen.copy(18, 16, 64, 48), picture) << "16.5 goes to even";
    EXPECT_EQ(screen.pixel(17, 16), qRgb(0x40, 0x40, 0x40));
    EXPECT_EQ(screen.pixel(99, 80), qRgb(0x40, 0x40, 0x40));

    // A new picture is painted as it comes, with the turns and the brightness in force.
    d.state.BrightnessValue = 20;
    d.info.whenRead = [this] { d.state.ExpOrientation = 6; };
    d.Show("b.jpg", JpegBytes(TellTale(640, 400)));
    EXPECT_EQ(Title("FrmPic"), "b.jpg  (100x81)  25%  3 of 12");
    const QImage turned = OnScreen(*window);
    EXPECT_EQ(turned.pixel(0, 40), qRgb(0x40, 0x40, 0x40));
    EXPECT_EQ(turned.pixel(40, 10), qRgb(51, 51, 255)) << "blue, above left";
    EXPECT_EQ(turned.pixel(60, 10), qRgb(255, 51, 51)) << "red, above right";
    d.state.BrightnessValue = 0;
    d.info.whenRead = [this] { d.state.ExpOrientation = 3; };
    d.Show("b.jpg", JpegBytes(TellTale(640, 400)));
    EXPECT_EQ(Quarters(OnScreen(*window).copy(0, 18, 100, 63)), "ybgr");
}

TEST_F(SizeWindow, KeysAndMouseStepWithTheFocusKept) {
    d.Show("a.jpg", JpegBytes(TellTale(64, 48)));
    d.room.ViewFull();
    QWidget* window = Window("FrmPic");
    window->resize(200, 100);
    EXPECT_EQ(Since([&] { QTest::keyClick(window, Qt::Key_Down); }), Calls{"Next"});
    EXPECT_EQ(Since([&] { QTest::keyClick(window, Qt::Key_Up); }), Calls{"Prev"});
    EXPECT_EQ(Since([&] { QTest::keyClick(window, Qt::Key_Y); }), Calls{"CopyImage"});
    EXPECT_EQ(Since([&] { QTest::keyClick(window, Qt::Key_F1); }), Calls{"help 3"});
    EXPECT_EQ(Since([&] { QTest::keyRelease(window, Qt::Key_Down); }), Calls{})
        << "pressed in another window";
    const auto click = [&](Qt::MouseButton button, int x) {
        return Since([&] { QTest::mouseClick(window, button, Qt::NoModifier, {x, 50}); });
    };
    EXPECT_EQ(click(Qt::LeftButton, 99), Calls{"Prev"});
    EXPECT_EQ(click(Qt::LeftButton, 100), Calls{"Next"});
    EXPECT_EQ(click(Qt::RightButton, 10), Calls{"message Size window set to Top"});
    EXPECT_TRUE(IsOnTop(*window));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(click(Qt::MiddleButton, 10), Calls{"message Size window set to Normal"});
    EXPECT_EQ(Since([&] { Wheel(*window, -120); }), Calls{"Next"});
    EXPECT_EQ(Since([&] {
                  for (int i = 0; i < 4; ++i) Wheel(*window, 60);
              }),
              (Calls{"Prev", "Prev"}))
        << "a touchpad sends half notches";
    EXPECT_FALSE(d.navigation.requested.focus);
    d.shell.minimised = true;
    EXPECT_EQ(Since([&] { QTest::keyClick(window, Qt::Key_Escape); }), Calls{"main restored"});
    EXPECT_FALSE(window->isVisible());
}

TEST_F(SizeWindow, AHeldKeyStepsAsFastAsPicturesArePainted) {
    d.Show("a.jpg", JpegBytes(TellTale(64, 48)));
    d.room.ViewFull();
    QWidget* window = Window("FrmPic");
    const auto repeat = [window] {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(window, &event);
    };
    int steps = 0;
    d.navigation.onStep = [&] {
        ++steps;
        d.room.DisplayPicture(KeepingKeyboard());
    };
    OnScreen(*window);
    QTest::keyPress(window, Qt::Key_Down);
    for (int i = 0; i < 5; ++i) repeat();
    EXPECT_EQ(steps, 1);
    OnScreen(*window);
    repeat();
    EXPECT_EQ(steps, 2);
    QTest::keyRelease(window, Qt::Key_Down);
    EXPECT_EQ(steps, 2);
}

TEST_F(SizeWindow, TheWheelWithControlZooms) {
    d.Show("a.png", PictureBytes(Ramp(200, 100), "PNG"));
    d.room.ViewFull();
    QWidget* window = Window("FrmPic");
    window->resize(200, 100);
    const QImage fit = OnScreen(*window);
    EXPECT_EQ(Since([&] { Wheel(*window, 360, Qt::ControlModifier); }), Calls{});
    const QImage zoomed = OnScreen(*window);
    EXPECT_LT(qRed(zoomed.pixel(199, 50)), qRed(fit.pixel(199, 50)) - 40);
    EXPECT_GT(qRed(zoomed.pixel(0, 50)), qRed(fit.pixel(0, 50)) + 40);
    EXPECT_NEAR(qRed(zoomed.pixel(100, 50)), qRed(fit.pixel(100, 50)), 2) << "the middle stays";
    Wheel(*window, -360, Qt::ControlModifier);
    EXPECT_EQ(OnScreen(*window), fit);
}

TEST_F(SizeWindow, ComesBackWhereItStoodAndKeepsThePictureAtAVideo) {
    d.state.PicPlace = {150, 300, 3000, 1500};
    d.Show("a.jpg", JpegBytes(TellTale(640, 400)));
    d.room.ViewFull();
    QWidget* window = Window("FrmPic");
    EXPECT_EQ(QRect(window->pos(), window->size()), QRect(10, 20, 200, 100));
    window->move(40, 50);
    window->resize(300, 200);
    window->close();
    EXPECT_EQ(d.state.PicPlace, (WindowPlace{600, 750, 4500, 3000}));
    EXPECT_EQ(Since([&] { d.Show("b.jpg", JpegBytes(TellTale(640, 400))); }).back(), "FocusPane")
        << "closed, it stays so";
    EXPECT_FALSE(window->isVisible());
    d.room.ViewFull();
    EXPECT_EQ(QRect(window->pos(), window->size()), QRect(40, 50, 300, 200));
    const QImage before = OnScreen(*window);
    d.state.Filename = d.folder.Path() + "/clip.avi";
    QTest::keyClick(window, Qt::Key_Down);
    EXPECT_EQ(OnScreen(*window), before);
}

class OneToOneWindow : public PictureWindows {
protected:
    void Open(const QImage& picture) {
        d.Show("a.png", PictureBytes(picture, "PNG"));
        d.room.OneToOneButton_Click();
        window = Window("frmOnetoOne");
        window->resize(240, 180);
        view = Part<PictureBox>("frmOnetoOne", "OnePicture2");
        nav = Part<PictureBox>("frmOnetoOne", "OnePicture3");
    }
    std::string Info() const {
        return Part<QLabel>("frmOnetoOne", "InfoText")->text().toStdString();
    }
    void PressNavigator(int x, int y) {
        QTest::mouseClick(nav, Qt::LeftButton, Qt::NoModifier, {x, y});
    }

    QWidget* window = nullptr;
    PictureBox* view = nullptr;
    PictureBox* nav = nullptr;
};

TEST_F(OneToOneWindow, ShowsTheMiddleThenThePartsPressedPixelByPixel) {
    const QImage picture = Ramp(600, 400);
    d.state.FileSizeText = "1,234 KB";
    Open(picture);
    EXPECT_FALSE(window->parent());
    EXPECT_TRUE(d.state.OneToOneLoaded);
    EXPECT_FALSE(d.controls.CloseOneToOneButton->isHidden());
    EXPECT_EQ(Title("frmOnetoOne"), "Tarn View - 1:1  " + d.state.Filename);
    EXPECT_EQ(Info(), d.state.Filename + " (600 x 400) 1,234 KB");
    EXPECT_EQ(nav->Picture().size(), QSize(150, 100));
    EXPECT_EQ(nav->geometry(), QRect(240 - 155, 180 - 105, 150, 100));
    EXPECT_EQ(view->Picture(), picture.copy(180, 110, 240, 180));
    PressNavigator(1, 1);
    EXPECT_EQ(view->Picture(), picture.copy(0, 0, 240, 180));
    PressNavigator(149, 99);
    EXPECT_EQ(view->Picture(), picture.copy(360, 220, 240, 180));
    PressNavigator(75, 30);
    EXPECT_EQ(view->Picture(), picture.copy(180, 30, 240, 180));

    // The same point of the next picture, whatever its size; a larger window shows more round it.
    d.Show("b.png", PictureBytes(Ramp(300, 200), "PNG"));
    EXPECT_EQ(view->Picture(), Ramp(300, 200).copy(30, 0, 240, 180));
    window->resize(260, 190);
    EXPECT_EQ(view->Picture(), Ramp(300, 200).copy(20, 0, 260, 190));
    EXPECT_EQ(OnScreen(*view), view->Picture());
    const QImage before = view->Picture();
    d.Show("small.png", PictureBytes(Ramp(100, 200), "PNG"));
    EXPECT_EQ(view->Picture(), before) << "smaller than the viewport";
    EXPECT_EQ(nav->Picture().size(), QSize(100, 200));

    // At a clip or page it names the file and shows no picture; then the same point again.
    d.state.Filename = "clip.avi";
    d.state.ImageWidth = d.state.ImageHeight = 0;
    d.state.Kind = FileKind::Clip;
    d.current.Tell();
    d.state.Kind = FileKind::Picture;
    EXPECT_EQ(Title("frmOnetoOne"), "Tarn View - 1:1  clip.avi");
    EXPECT_TRUE(view->Picture().isNull());
    EXPECT_TRUE(nav->Picture().isNull());
    d.Show("b.png", PictureBytes(Ramp(300, 200), "PNG"));
    EXPECT_EQ(view->Picture(), Ramp(300, 200).copy(20, 0, 260, 190));
}

// Run on screens of finer pixels, too.
TEST_F(OneToOneWindow, OnePixelOfThePictureForEachOfTheScreen) {
    const QImage picture = Ramp(600, 400);
    Open(picture);
    nav->hide();
    const QSize pane = view->PixelSize();
    EXPECT_EQ(pane, QSize(240, 180) * window->devicePixelRatio());
    EXPECT_EQ(OnScreen(*window), picture.copy(300 - pane.width() / 2, 200 - pane.height() / 2,
                                              pane.width(), pane.height()));
    // A point of the navigator is the same part of the picture on every screen.
    nav->show();
    PressNavigator(nav->width() - 1, nav->height() - 1);
    EXPECT_EQ(view->Picture(),
              picture.copy(QRect(QPoint(600, 400) - QPoint(pane.width(), pane.height()), pane)));
    EXPECT_NEAR(nav->width(), 150, 1);

    d.room.ViewFull();
    QWidget* size = Window("FrmPic");
    size->resize(1000, 500);
    const QSize inside = QSize(1000, 500) * window->devicePixelRatio();
    EXPECT_EQ(
        OnScreen(*size).copy((inside.width() - 600) / 2, (inside.height() - 400) / 2, 600, 400),
        picture);
}

TEST_F(OneToOneWindow, APortraitPictureIsUprightHoweverTheWindowWasOpened) {
    struct Case {
        int orientation;
        std::string turned;
    };
    for (const Case& c : {Case{1, "rgby"}, Case{6, "bryg"}, Case{8, "gyrb"}, Case{3, "ybgr"}}) {
        d.info.whenRead = [&] { d.state.ExpOrientation = std::int16_t(c.orientation); };
        Open(TellTale(640, 400));
        EXPECT_EQ(Quarters(nav->Picture()), c.turned) << "by its button, " << c.orientation;
        d.Show("b.jpg", JpegBytes(TellTale(640, 400)));
        EXPECT_EQ(Quarters(nav->Picture()), c.turned) << "by the next picture, " << c.orientation;
        window->close();
    }
    d.info.whenRead = nullptr;
    Open(TellTale(640, 400));
    d.room.MirrorButton_Click();
    d.state.BrightnessValue = 40;
    d.room.OneToOneButton_Click();
    EXPECT_EQ(nav->Picture().pixel(10, 10), qRgb(102, 255, 102));
    EXPECT_EQ(view->Picture().pixel(10, 10), qRgb(102, 255, 102));
}

TEST_F(OneToOneWindow, Keys) {
    Open(Ramp(600, 400));
    const auto key = [&](Qt::Key which) { return Since([&] { QTest::keyClick(view, which); }); };
    EXPECT_EQ(key(Qt::Key_Down), Calls{"Next"});
    EXPECT_FALSE(d.navigation.requested.focus);
    EXPECT_EQ(key(Qt::Key_Up), Calls{"Prev"});
    EXPECT_EQ(key(Qt::Key_Delete), Calls{"Delete"});
    EXPECT_EQ(key(Qt::Key_F1), Calls{"help 4"});
    const QWidget* info = Part("frmOnetoOne", "InfoText");
    EXPECT_TRUE(info->isHidden());
    key(Qt::Key_T);
    EXPECT_TRUE(info->isVisible());
    EXPECT_TRUE(d.state.OneToOneInfo);
    QTest::mouseClick(nav, Qt::RightButton);
    EXPECT_FALSE(info->isVisible());
    EXPECT_FALSE(d.state.OneToOneInfo);
    key(Qt::Key_Z);
    EXPECT_TRUE(nav->isHidden());
    key(Qt::Key_Space);
    EXPECT_TRUE(nav->isVisible());

    EXPECT_EQ(key(Qt::Key_Y), Calls{"CopyImage"});
    EXPECT_EQ(Title("frmOnetoOne"), "Tarn View - 1:1  a.png  COPIED");
    EXPECT_FALSE(info->isVisible());
    d.copies.answer = {Outcome::Refused("'Copy to' folder has not been set"), {}};
    d.room.OneToOneButton_Click();
    key(Qt::Key_Y);
    EXPECT_EQ(Info(), "'Copy to' folder has not been set");
    d.copies.answer.copyOk = "ERROR - a.png";
    key(Qt::Key_Y);
    EXPECT_EQ(Info(), "ERROR - a.png");
    EXPECT_TRUE(info->isVisible());
    EXPECT_EQ(Title("frmOnetoOne"), "Tarn View - 1:1  " + d.state.Filename);
    EXPECT_FALSE(d.state.OneToOneInfo) << "what the user chose stays";

    key(Qt::Key_X);
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(d.state.OneToOneLoaded);
    EXPECT_TRUE(d.controls.CloseOneToOneButton->isHidden());
    d.state.Filename = "other";
    emit window->windowHandle()->screenChanged(nullptr);
    EXPECT_NE(Title("frmOnetoOne"), "Tarn View - 1:1  other") << "closed, it does nothing";
}

TEST_F(OneToOneWindow, TwoPlacesAreSwappedByOneKey) {
    const QImage picture = Ramp(600, 400);
    Open(picture);
    PressNavigator(30, 30);
    QTest::keyClick(view, Qt::Key_S);
    EXPECT_EQ(view->Picture(), picture.copy(0, 30, 240, 180)) << "remembered";
    PressNavigator(100, 60);
    QTest::keyClick(view, Qt::Key_S);
    EXPECT_EQ(view->Picture(), picture.copy(0, 30, 240, 180));
    QTest::keyClick(view, Qt::Key_S);
    EXPECT_EQ(view->Picture(), picture.copy(280, 150, 240, 180));
}

TEST_F(OneToOneWindow, MouseOnTheViewStepsDragsAndMinimises) {
    const QImage picture = Ramp(600, 400);
    Open(picture);
    const auto click = [&](Qt::MouseButton button, int x) {
        return Since([&] { QTest::mouseClick(view, button, Qt::NoModifier, {x, 5}); });
    };
    EXPECT_EQ(click(Qt::LeftButton, 120), Calls{"Prev"});
    EXPECT_EQ(click(Qt::LeftButton, 121), Calls{"Next"});
    EXPECT_EQ(click(Qt::RightButton, 10), Calls{"main minimised"});
    EXPECT_EQ(click(Qt::RightButton, 10), Calls{"main restored"});
    EXPECT_EQ(Since([&] { Wheel(*view, 120); }), Calls{"Prev"});

    const auto drag = [&](QPoint from, QPoint to) {
        return Since([&] {
            QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, from);
            QMouseEvent move(QEvent::MouseMove, to, view->mapToGlobal(to), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(view, &move);
            QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, to);
        });
    };
    EXPECT_EQ(drag({10, 10}, {50, 40}), Calls{}) << "no step";
    EXPECT_EQ(view->Picture(), picture.copy(140, 80, 240, 180));
    drag({0, 0}, {2000, 2000});
    EXPECT_EQ(view->Picture(), picture.copy(0, 0, 240, 180));
    drag({50, 50}, {20, 50});
    EXPECT_EQ(view->Picture(), picture.copy(30, 0, 240, 180)) << "back at once from the edge";
}

TEST_F(OneToOneWindow, StandsAboveTheOthersByTheMenuAndComesBackWhereItStood) {
    d.controls.OneWindowTopButton->setChecked(false);
    Open(Ramp(600, 400));
    EXPECT_FALSE(IsOnTop(*window));
    d.controls.OneWindowTopButton->trigger();
    EXPECT_TRUE(IsOnTop(*window));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(d.state.OneAlwaysTop);
    window->move(70, 80);
    d.controls.CloseOneToOneButton->click();
    EXPECT_FALSE(window->isVisible());
    d.controls.OneWindowTopButton->trigger();
    EXPECT_TRUE(IsOnTop(*window)) << "closed, it is told by its next opening";
    d.room.OneToOneButton_Click();
    EXPECT_FALSE(IsOnTop(*window));
    EXPECT_EQ(QRect(window->pos(), window->size()), QRect(70, 80, 240, 180));
    d.shell.minimised = true;
    EXPECT_EQ(Since([&] { window->close(); }), Calls{"main restored"});
}
