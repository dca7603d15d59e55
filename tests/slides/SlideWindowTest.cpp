#include "RawFiles.h"
#include "SlideDesk.h"

#include "slides/frmSlideDelay.h"

#include <QApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>

namespace tarn::testing {
namespace {

struct WindowDesk : SlideDesk {
    void Click(Qt::MouseButton button, int x, int y) {
        QTest::mouseClick(room.Window(), button, Qt::NoModifier, QPoint(x, y));
    }
    // The corner of a picture of this size, in device pixels.
    QPoint Middle(int w, int h) const {
        const QSize whole = room.Window()->Backing().size();
        const SlideScreen screen =
            SlideScreenOf(whole.width(), whole.height(), window.devicePixelRatioF());
        const SlidePlace place = PlaceSlide({w, h}, 0, SlideLayout::One, screen);
        return {place.left, place.top};
    }
    void Wheel(int eighths) {
        QWheelEvent event(QPointF(9, 9), QPointF(9, 9), {}, QPoint(0, eighths), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(room.Window(), &event);
    }
    void Key(QEvent::Type type, int key, bool repeats = false) {
        QKeyEvent event(type, key, Qt::NoModifier, {}, repeats);
        QApplication::sendEvent(room.Window(), &event);
    }
};

TEST(SlideWindow, MouseAndWheel) {
    WindowDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg"});
    d.Do([&] { d.Click(Qt::LeftButton, 700, 10); });
    d.Do([&] { d.Click(Qt::LeftButton, 10, 780); }); // at the line itself
    d.Do([&] { d.Click(Qt::RightButton, 700, 10); });
    d.Do([&] { EXPECT_EQ(d.state.SlideNotesMode, 1); });
    d.Do([&] { d.Click(Qt::RightButton, 700, 781); });
    d.Do([&] { d.Wheel(-240); }); // two notches
    d.Do([&] { d.Wheel(60); });
    d.Do([&] { d.Wheel(60); });
    d.Do([&] { d.state.SlideAltArrowKeys = true; });
    d.Do([&] { d.Click(Qt::LeftButton, 10, 10); }); // back in this layout too
    d.Do([&] { d.Click(Qt::LeftButton, 10, 781); });
    d.Do([] { FAIL() << "a click below the line ends the show"; });
    EXPECT_EQ(d.Run(), "a b a a a a c c b b a");
    EXPECT_TRUE(d.Called("CopyImage"));
}

TEST(SlideWindow, AHeldPressShowsTheNameAndDoesNothingMore) {
    WindowDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    d.Do([&] {
        auto* name = d.room.Window()->findChild<QLineEdit*>("SlideNameText");
        QTest::mousePress(d.room.Window(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
        QTest::qWait(550);
        EXPECT_TRUE(name->isVisible());
        EXPECT_EQ(name->text(), "a.jpg");
        EXPECT_EQ(name->geometry().topLeft(), QPoint(20, 10));
        EXPECT_EQ(name->width(), d.room.Window()->width() - 40);
        QTest::mouseRelease(d.room.Window(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
        EXPECT_FALSE(name->isVisible());
        // A release without its press, as after a double click that started the show.
        QTest::mouseRelease(d.room.Window(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 781));
    });
    d.Do([] {});
    EXPECT_EQ(d.Run(), "a a");
}

TEST(SlideWindow, KeysCountWithTheirPressAndHeldOnesStep) {
    WindowDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg"});
    d.Do([&] {
        d.Key(QEvent::KeyRelease, Qt::Key_N); // of the key that started the show
        QTest::keyClick(d.room.Window(), Qt::Key_N, Qt::ControlModifier);
    });
    d.Do([&] { QTest::keyClick(d.room.Window(), Qt::Key_Space); });
    d.Do([&] {
        d.Key(QEvent::KeyPress, Qt::Key_N);
        for (int i = 0; i < 5; ++i) { // one round however many came
            d.Key(QEvent::KeyRelease, Qt::Key_N, true);
            d.Key(QEvent::KeyPress, Qt::Key_N, true);
        }
    });
    d.Do([&] { d.Key(QEvent::KeyRelease, Qt::Key_N); }); // no step of its own
    d.Do([&] { d.Key(QEvent::KeyPress, Qt::Key_R, true); });
    d.Do([&] { // quick ones are not lost
        QTest::keyClick(d.room.Window(), Qt::Key_N);
        QTest::keyClick(d.room.Window(), Qt::Key_N);
    });
    d.Do([&] { QTest::keyClick(d.room.Window(), Qt::Key_Escape); });
    EXPECT_EQ(d.Run(), "a a b c c c b");
}

TEST(SlideWindow, AKeyHeldLongActsOnItsReleaseAllTheSame) {
    WindowDesk d;
    d.Fill({"a.jpg"});
    const auto held = [&](int key) {
        d.Key(QEvent::KeyPress, key);
        d.Key(QEvent::KeyPress, key, true);
    };
    d.Do([&] { held(Qt::Key_R); });
    d.Do([&] {
        EXPECT_EQ(d.QuartersAt(d.Middle(60, 40).x(), d.Middle(60, 40).y()), "rgby");
        d.Key(QEvent::KeyRelease, Qt::Key_R);
    });
    d.Do([&] {
        EXPECT_EQ(d.QuartersAt(d.Middle(40, 60).x(), d.Middle(40, 60).y(), 40, 60), "bryg");
        held(Qt::Key_Escape);
        d.Key(QEvent::KeyRelease, Qt::Key_Escape);
    });
    d.Do([] { FAIL() << "Esc ends the show"; });
    EXPECT_EQ(d.Run(), "a a a");
}

TEST(SlideWindow, ClosingAndTheProgramsEndAreSlideDone) {
    WindowDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    d.Do([&] { d.room.Window()->close(); });
    d.Do([] { FAIL(); });
    EXPECT_EQ(d.Run(), "a");
    EXPECT_TRUE(d.Called("main up"));
    d.pump.script.clear();
    d.state.SlideDelay = 30; // also out of the timed wait
    d.Do([] {});
    d.Do([&] { d.pump.ends = true; });
    EXPECT_EQ(d.Run(), "a a");
    EXPECT_LT(d.pump.slept, 1000);
}

TEST(SlidePainting, OnePictureInTheMiddleAndNothingRemains) {
    WindowDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    d.folder.Write("b.jpg", JpegBytes(TellTale(30, 20)));
    d.notes.note = "note";
    const double unit = d.window.devicePixelRatioF();
    const auto place = [&](int w, int h) { return d.Middle(w, h); };
    const auto quarters = [&](int w, int h) {
        return d.QuartersAt(place(w, h).x(), place(w, h).y(), w, h);
    };
    const auto ground = [&] { return d.room.Window()->Backing().pixelColor(0, 0).red(); };
    std::vector<std::string> painted;
    for (const int key : {int('N'), int('P'), int('R'), int('M'), 0})
        d.Do([&, key] {
            const bool small = d.state.SlideNameOnly == "b.jpg";
            const bool upright = painted.size() >= 3; // turned at the third
            painted.push_back(small     ? quarters(30, 20)
                              : upright ? quarters(40, 60)
                                        : quarters(60, 40));
            const QPoint corner = place(60, 40) + QPoint(1, 1);
            if (small) {
                EXPECT_EQ(d.room.Window()->Backing().pixelColor(corner).red(), 0x80);
            }
            d.room.SlideKeyUp(key);
        });
    d.Do([&] {
        EXPECT_EQ(ground(), 0x80);
        d.state.SlideBackground = 0;
        d.room.SlideKeyUp('O');
    });
    d.Do([&] {
        EXPECT_EQ(ground(), 0);
        const QImage shown = d.room.Window()->grab().toImage();
        const QRect strip(0, shown.height() - int(20 * unit), shown.width(), int(20 * unit));
        QImage black = shown.copy(strip);
        black.fill(Qt::black);
        EXPECT_NE(shown.copy(strip), black); // the title
        d.room.SlideKeyUp('T');
    });
    d.Do([&] {
        const QImage shown = d.room.Window()->grab().toImage();
        QImage black =
            shown.copy(0, shown.height() - int(24 * unit), shown.width(), int(24 * unit));
        const QImage strip = black;
        black.fill(Qt::black);
        EXPECT_EQ(strip, black); // nothing of it is left
    });
    d.Run();
    EXPECT_EQ(painted, (std::vector<std::string>{"rgby", "rgby", "rgby", "bryg", "rbgy"}));
}

TEST(SlidePainting, TheCamerasTurnFollowsTheKeysAndNotesStandUpright) {
    WindowDesk d;
    d.folder.Write("c.jpg", RawFile(TellTale(60, 40), "", QSize(1, 1), 1).bytes);
    d.Fill({"a.jpg", "b.jpg"});
    d.info.orientation = {{"a.jpg", 6}};
    const auto at = [&](int w, int h) {
        return d.QuartersAt(d.Middle(w, h).x(), d.Middle(w, h).y(), w, h);
    };
    std::vector<std::string> painted;
    d.Do([&] {
        painted.push_back(at(40, 60));
        d.room.SlideKeyUp(keys::kF6);
    });
    d.Do([&] { d.room.SlideKeyUp(keys::kF5); });
    d.Do([&] {
        painted.push_back(at(40, 60));
        d.room.SlideKeyUp('R');
    });
    d.Do([&] {
        painted.push_back(at(60, 40));
        d.room.SlideKeyUp('N');
    });
    d.Do([&] {
        painted.push_back(at(40, 60)); // it tells none: as the one before
        d.room.SlideKeyUp('N');
    });
    d.Do([&] { painted.push_back(at(60, 40)); }); // its reader has turned it
    d.Run();
    EXPECT_EQ(painted, (std::vector<std::string>{"bryg", "bryg", "ybgr", "bryg", "rgby"}));
}

TEST(SlidePainting, TheNoteAndTheCameraStandInThePicturesCorner) {
    WindowDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    for (const char* name : {"a.jpg", "b.jpg"}) d.folder.Write(name, JpegBytes(TellTale(300, 200)));
    d.info.named = "a.jpg";
    d.notes.note = "note";
    std::string written; // "." no text, "n" some
    const auto look = [&](int key, const char* note) {
        d.Do([&, key, note] {
            const QImage picture =
                d.room.Window()->Backing().copy(QRect(d.Middle(300, 200), QSize(300, 200)));
            bool white = false;
            for (int y = 10; y < 100; ++y)
                for (int x = 10; x < 290; ++x)
                    white |= qBlue(picture.pixel(x, y)) > 150 && qGreen(picture.pixel(x, y)) > 150;
            written += white ? "n" : ".";
            d.notes.note = note;
            d.room.SlideKeyUp(key);
        });
    };
    look('D', "note"); // mode 0
    look('O', "");     // the note
    look('D', "");
    look('N', ""); // the camera, too
    look('P', ""); // nothing of the picture before
    look('D', "");
    look(0, "");
    d.Run();
    EXPECT_EQ(written, ".n.n.n.");
}

TEST(SlidePainting, BrightnessAndAPictureLargerThanTheScreen) {
    WindowDesk d;
    d.Fill({"a.jpg"});
    QImage dark(8000, 4000, QImage::Format_RGB32);
    dark.fill(qRgb(40, 40, 40));
    d.folder.Write("a.jpg", JpegBytes(dark));
    std::vector<int> reds;
    for (const int key : {keys::kF1 + 6, 0})
        d.Do([&, key] {
            const QImage& whole = d.room.Window()->Backing();
            reds.push_back(whole.pixelColor(whole.width() / 2, whole.height() / 2).red());
            const double unit = d.window.devicePixelRatioF();
            const int wide = whole.width() - int(8 * unit); // half as high
            EXPECT_EQ(whole.pixelColor(whole.width() / 2, whole.height() / 2 - wide / 4 - 20 * unit)
                          .red(),
                      0x80);
            EXPECT_NE(whole.pixelColor(int(6 * unit), whole.height() / 2).red(), 0x80);
            EXPECT_NE(whole.pixelColor(whole.width() - int(6 * unit), whole.height() / 2).red(),
                      0x80);
            d.room.SlideKeyUp(key);
        });
    d.Run();
    ASSERT_EQ(reds.size(), 2U);
    EXPECT_NEAR(reds[0], 40, 2);
    EXPECT_NEAR(reds[1], 53, 3); // five percent of white
}

TEST(SlideDelay, TheSliderSetsTheDelayAndNothingTurnsItOff) {
    SlideDesk d;
    d.Fill({});
    d.controls.ResetSlideShowAutoUpdateButton->setVisible(false);
    frmSlideDelay delay(d.context);
    auto* slider = delay.findChild<QSlider*>("DelaySlider");
    const auto* frame = delay.findChild<QGroupBox*>("DelayFrame");
    EXPECT_EQ(frame->title(), "Auto Advance Off");
    delay.show();
    slider->setValue(7);
    EXPECT_EQ(d.state.SlideDelay, 7);
    EXPECT_EQ(frame->title(), "Auto Update seconds = 7");
    EXPECT_EQ(d.controls.SlideButton->toolTip(), frame->title());
    EXPECT_TRUE(d.controls.ResetSlideShowAutoUpdateButton->isVisible());
    slider->setValue(0);
    EXPECT_FALSE(delay.isVisible());
    EXPECT_EQ(frame->title(), "Auto Advance Off");
    slider->setValue(40);
    EXPECT_EQ(d.state.SlideDelay, 30);
    delay.findChild<QPushButton*>("DelayResetButton")->click();
    EXPECT_EQ(d.state.SlideDelay, 0);
    EXPECT_TRUE(d.controls.SlideButton->toolTip().isEmpty());
    EXPECT_FALSE(d.controls.ResetSlideShowAutoUpdateButton->isVisible());
}

} // namespace
} // namespace tarn::testing
