// The window "Best Frames" on a clip of discs, used by mouse and keys; the best taken out.
#include "FilesDesk.h"
#include "clips/MadeDiscs.h"
#include "clips/MadeSer.h"

#include "widgets/MeasureGraph.h"

#include <QPlainTextEdit>
#include <QSpinBox>

#include <filesystem>
#include <utility>

namespace tarn::testing {
namespace {

struct ClipDesk : FilesDesk {
    SerClip ser{.width = kDiscSide, .height = kDiscSide};
    TestFolder target;

    ClipDesk() {
        // Frame 5 is the sharpest, then 2, 7, 1; 3 is cut off, 4 has no light.
        for (const double blur : {4.0, 1.9, 1.2, 0.5, 0.5, 1.0, 3.0, 1.5, 2.5, 3.5})
            ser.frames.push_back(Disc(32, 32, blur, 255));
        ser.frames[3] = Disc(60, 32, 0.5, 255);
        ser.frames[4] = DarkFrame();
        folder.Write("mars.ser", SerBytes(ser));
        settings->Write("video_in_window", "True");
        settings->Write("best_frames", "30");
        Start();
        house.window.show();
    }
    void Open() {
        GoTo("mars.ser");
        c.ClipBestButton->click();
        ASSERT_TRUE(Up("frmBestFrames"));
        Settle();
    }
    void Settle() {
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return !In<QWidget>("frmBestFrames", "BestProgress")->isVisible(); }, 20000));
    }
    MeasureGraph* Graph() const {
        return dynamic_cast<MeasureGraph*>(In<QWidget>("frmBestFrames", "BestGraph"));
    }
    std::string Label(const char* name) const {
        return In<QLabel>("frmBestFrames", name)->text().toStdString();
    }
    // Up to the range of its sharpness.
    std::string Chosen() const {
        const std::string said = Label("BestSaid");
        return said.substr(0, said.find(','));
    }
    QSpinBox* Number() const { return In<QSpinBox>("frmBestFrames", "BestNumber"); }
    void Check(const char* name, bool on) {
        auto* box = In<QCheckBox>("frmBestFrames", name);
        if (box->isChecked() != on) box->click();
    }
    void ClickPoint(int point) {
        QTest::mouseClick(Graph(), Qt::LeftButton, {}, Graph()->PlaceOf(point, 0).toPoint());
    }
    std::string TargetNames() const { return NamesOf(ReadTree(target.Path())); }
};

} // namespace

TEST(BestFramesWindow, MarksTheBestAndShowsWhatIsClicked) {
    ClipDesk d;
    d.Open();
    EXPECT_EQ(d.Label("BestSummary"),
              "9 frames rated; 1 not: no light stands out of the sky; 1 cut off at the border");
    EXPECT_EQ(d.Chosen(), "3 of 10 frames chosen"); // 30 % of them
    EXPECT_NE(d.Label("BestSaid").find("(frame 5)"), std::string::npos);
    // The points are the frames that are rated: the fifth of them is frame 5.
    d.ClickPoint(4);
    EXPECT_EQ(d.house.video.Position(), 5);
    EXPECT_EQ(d.Said(), "Video frame 5");
    QTest::keyClick(d.Graph(), Qt::Key_Right);
    EXPECT_EQ(d.house.video.Position(), 6);
    QTest::keyClick(d.Graph(), Qt::Key_Left);
    QTest::keyClick(d.Graph(), Qt::Key_Left);
    EXPECT_EQ(d.house.video.Position(), 3); // over the one without light
    d.Check("BestSortedCheck", true);
    d.ClickPoint(1); // 3 is the sharpest, though it is cut off
    EXPECT_EQ(d.house.video.Position(), 5);

    d.Check("BestPercentCheck", false);
    EXPECT_EQ(d.Number()->value(), 3);
    d.Number()->setValue(5);
    EXPECT_EQ(d.Chosen(), "5 of 10 frames chosen");
    d.Number()->setValue(100);
    EXPECT_EQ(d.Chosen(), "8 of 10 frames chosen");
    EXPECT_EQ(d.s.BestFrames, 100);
    EXPECT_FALSE(d.s.BestInPercent);

    // The line that is dragged between the second and the third in the order of sharpness.
    const QPoint from = d.Graph()->PlaceOf(8, 0).toPoint(); // the least sharp has it
    const int to = int(d.Graph()->PlaceOf(2, 0).y() + d.Graph()->PlaceOf(3, 0).y()) / 2;
    QTest::mousePress(d.Graph(), Qt::LeftButton, {}, from - QPoint(60, 0));
    QMouseEvent move(QEvent::MouseMove, QPointF(from.x() - 60, to),
                     d.Graph()->mapToGlobal(QPointF(from.x() - 60, to)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(d.Graph(), &move);
    QTest::mouseRelease(d.Graph(), Qt::LeftButton, {}, QPoint(from.x() - 60, to));
    EXPECT_EQ(d.Chosen(), "2 of 10 frames chosen");
}

TEST(BestFramesWindow, FollowsTheClipThatIsShown) {
    ClipDesk d;
    d.Open();
    d.ser.frames.resize(2);
    d.folder.Write("other.ser", SerBytes(d.ser));
    d.house.navigation.RefreshDirButton_Click();
    d.GoTo("other.ser");
    d.Settle();
    EXPECT_EQ(d.Label("BestSummary"), "2 frames rated");
    d.GoTo("a.jpg");
    EXPECT_EQ(d.Label("BestSummary"), "");
    EXPECT_FALSE(d.In<QPushButton>("frmBestFrames", "BestTakeButton")->isEnabled());
    d.folder.Write("bad.ser", SerBytes(d.ser).substr(0, 178 + 100));
    d.folder.Write("cut.ser", SerBytes(d.ser).substr(0, 178 + 64 * 64 * 3 / 2));
    d.house.navigation.RefreshDirButton_Click();
    d.GoTo("bad.ser");
    d.Settle();
    EXPECT_EQ(d.Label("BestSummary"), "The clip has no frames");
    EXPECT_FALSE(d.In<QPushButton>("frmBestFrames", "BestTakeButton")->isEnabled());
    d.GoTo("cut.ser");
    d.Settle();
    EXPECT_EQ(d.Label("BestSummary"), "1 frame rated; it is cut off: 1 of 2 frames are there");
    d.Up("frmBestFrames")->close();
    d.GoTo("mars.ser");
    d.c.BestFramesButton->trigger();
    d.Settle();
    EXPECT_EQ(d.Chosen(), "3 of 10 frames chosen");
}

TEST(BestFramesWindow, BlinksTwoFramesAtOnePlace) {
    ClipDesk d;
    d.ser.frames[2] = Disc(35, 30, 1.2, 255);
    d.folder.Write("mars.ser", SerBytes(d.ser));
    d.Open();
    d.In<QPushButton>("frmBestFrames", "BestBlinkButton")->click();
    EXPECT_EQ(d.house.video.Position(), 5);
    const QImage first = d.c.Picture2->Picture();
    ASSERT_TRUE(QTest::qWaitFor([&] { return d.house.video.Position() == 2; }, 5000));
    // The disc, 3 to the right and 2 above, lies where the other one does: its edge is there.
    const QImage second = d.c.Picture2->Picture();
    for (const auto& [x, y] : {std::pair(32, 15), std::pair(32, 49), std::pair(15, 32)})
        EXPECT_NEAR(qGray(first.pixel(x, y)), qGray(second.pixel(x, y)), 14) << x << " " << y;
    EXPECT_EQ(second.pixel(63, 10), qRgb(0, 0, 0)); // nothing of the frame falls there
    d.In<QPushButton>("frmBestFrames", "BestBlinkButton")->click();
    QTest::qWait(600);
    EXPECT_EQ(d.house.video.Position(), 2);
    EXPECT_NE(d.c.Picture2->Picture().pixel(63, 10), qRgb(0, 0, 0)); // as it is again
}

TEST(BestFramesWindow, ABlinkEndsForACopyAndWithItsPlayer) {
    ClipDesk d;
    d.ser.frames[2] = Disc(35, 30, 1.2, 255);
    d.folder.Write("mars.ser", SerBytes(d.ser));
    d.Open();
    auto* blink = d.In<QPushButton>("frmBestFrames", "BestBlinkButton");
    blink->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return d.house.video.Position() == 2; }, 5000));
    d.house.video.CopyFrame();
    EXPECT_FALSE(blink->isChecked());
    EXPECT_EQ(d.Said(), "Copied frame 2");
    EXPECT_NE(d.c.Picture2->Picture().pixel(63, 10), qRgb(0, 0, 0)); // not as the blink shifts it
    blink->click();
    ASSERT_TRUE(blink->isChecked());
    std::filesystem::resize_file(d.At("mars.ser"), 178 + 100);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !blink->isChecked(); }, 5000));
    EXPECT_FALSE(d.house.video.ClipIsOpen());
    EXPECT_FALSE(blink->isEnabled());
}

TEST(BestFramesWindow, WhatChangesWhileItIsAskedOrTakenOutIsTold) {
    ClipDesk d;
    d.Open();
    // Another file comes to be shown while the folder is chosen.
    d.dialogs.onAsk = [&] { d.GoTo("a.jpg"); };
    d.Press("frmBestFrames", "BestTakeButton", {d.target.Path()});
    d.dialogs.onAsk = nullptr;
    EXPECT_EQ(d.TargetNames(), "");
    d.GoTo("mars.ser");
    d.Settle();
    // Another program has changed what is to go back.
    int steps = 0;
    d.events.onPump = [&] {
        if (++steps != 2) return;
        d.target.Write("mars_0001.fits", "changed");
        QTest::keyClick(d.In<QPushButton>("frmBestFrames", "BestCancelButton"), Qt::Key_Escape);
    };
    d.Press("frmBestFrames", "BestTakeButton", {d.target.Path()});
    d.events.onPump = nullptr;
    EXPECT_EQ(ReadTree(d.target.Path()), (Tree{{"mars_0001.fits", "changed"}}));
    EXPECT_EQ(d.Label("BestSummary"), "Not all could be taken back");
    const auto* faults = d.In<QPlainTextEdit>("frmFaults", "FaultsBox");
    ASSERT_TRUE(faults);
    EXPECT_EQ(faults->toPlainText().toStdString(), "mars_0001.fits - it has been changed since");
}

TEST(BestFramesWindow, TakesTheChosenOutAndBackAgain) {
    ClipDesk d;
    d.Open();
    const Tree before = d.Pictures();
    d.Press("frmBestFrames", "BestTakeButton", {d.target.Path()});
    EXPECT_EQ(d.TargetNames(), "mars_0001.fits mars_0002.fits mars_0003.fits ");
    EXPECT_EQ(d.Said(), "3 frames of 'mars.ser' taken out");
    EXPECT_EQ(d.s.BestFolder, d.target.Path());
    const Tree taken = ReadTree(d.target.Path());
    // What stands there is asked about, and comes back with the command.
    d.Check("BestByTimeCheck", true);
    d.Press("frmBestFrames", "BestTakeButton", {d.target.Path(), "Cancel"});
    EXPECT_EQ(ReadTree(d.target.Path()), taken);
    d.Press("frmBestFrames", "BestTakeButton", {d.target.Path(), "Replace"});
    EXPECT_NE(ReadTree(d.target.Path()), taken);
    QTest::keyClick(d.Up("frmBestFrames"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(ReadTree(d.target.Path()), taken);
    QTest::keyClick(d.Up("frmBestFrames"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(d.TargetNames(), "");

    d.Check("BestAsClipCheck", true);
    d.Press("frmBestFrames", "BestTakeButton", {d.target.Path()});
    d.ser.frames = {d.ser.frames[2], d.ser.frames[5], d.ser.frames[7]};
    EXPECT_EQ(ReadTree(d.target.Path()), (Tree{{"mars_best.ser", SerBytes(d.ser)}}));
    EXPECT_EQ(d.Pictures(), before);

    // Cancelled by Esc at its second step.
    d.Check("BestAsClipCheck", false);
    int steps = 0;
    d.events.onPump = [&] {
        if (++steps == 2)
            QTest::keyClick(d.In<QPushButton>("frmBestFrames", "BestCancelButton"), Qt::Key_Escape);
    };
    d.Press("frmBestFrames", "BestTakeButton", {d.target.Path()});
    d.events.onPump = nullptr;
    EXPECT_EQ(d.TargetNames(), "mars_best.ser ");
    EXPECT_EQ(d.Said(), "Cancelled; nothing was taken out");

    // Another program writes the clip anew.
    d.folder.Write("mars.ser", SerBytes(d.ser));
    d.Press("frmBestFrames", "BestTakeButton", {d.target.Path()});
    EXPECT_EQ(d.TargetNames(), "mars_best.ser ");
    d.Settle();
    EXPECT_EQ(d.Label("BestSummary"), "3 frames rated");
}

} // namespace tarn::testing
