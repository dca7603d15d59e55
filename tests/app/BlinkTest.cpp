// The windows "Blink", "Find What Moves" and "Sum" on a folder of frames, used by mouse and keys.
#include "FilesDesk.h"
#include "MadeNight.h"

#include "imaging/fits/KeptCards.h"

#include <QAbstractItemView>
#include <QDoubleSpinBox>
#include <QSlider>
#include <QTableWidget>

#include <set>

namespace tarn::testing {
namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 300;

struct BlinkDesk : FilesDesk {
    BlinkDesk() : FilesDesk(std::vector<std::string>()) {}

    // Eight frames five minutes apart, each a little elsewhere, with one that goes 60 pixels an
    // hour to the right; the fourth is the sharpest.
    void AddNight() {
        for (int i = 0; i < 8; ++i) {
            MadeFrame frame{.fwhm = i == 3 ? 2.6 : 3.1,
                            .sky = 1000.0 + 30 * i,
                            .shiftX = 1.7 * i,
                            .shiftY = -0.9 * i};
            const std::string minute = (i < 2 ? "0" : "") + std::to_string(5 * i);
            frame.taken = "2024-11-05T20:" + minute + ":00";
            frame.more = {
                {.x = 180 + 5.0 * i + frame.shiftX, .y = 140 + frame.shiftY, .peak = 900}};
            Write("L" + std::to_string(i) + ".fits", frame);
        }
    }
    // One that is cut off, and one without stars.
    void AddUseless() {
        folder.Write("short.fits", FrameBytes({}, kWidth, kHeight).substr(0, 9000));
        Write("cloud.fits", {.stars = 0});
    }
    void Write(const std::string& name, const MadeFrame& frame) {
        folder.Write(name, FrameBytes(frame, kWidth, kHeight, unsigned(name[1])));
    }
    void Open() {
        Start(folder.Path() + "/L0.fits");
        house.window.show();
    }
    void OpenBlink() {
        Open();
        Key(Qt::Key_Q);
        ASSERT_TRUE(Up("frmBlink"));
    }
    static bool Comes(const std::function<bool()>& test) { return QTest::qWaitFor(test, 60000); }
    std::string Label(const char* form, const char* name) const {
        return In<QLabel>(form, name)->text().toStdString();
    }
    QWidget* Pane() const { return In<QWidget>("frmBlink", "BlinkPane"); }
    std::string Said() const { return Label("frmBlink", "BlinkSaid"); }
    std::string Corner() const { return Pane()->accessibleDescription().toStdString(); }
    void Type(Qt::Key key, Qt::KeyboardModifiers with = {}) { QTest::keyClick(Pane(), key, with); }
    Mark MarkAt(const std::string& name) { return house.marks.MarkOf(At(name)).value_or(Mark()); }
};

TEST(Blink, FramesPlayStopAndStep) {
    BlinkDesk d;
    d.AddNight();
    d.AddUseless();
    d.OpenBlink();
    ASSERT_TRUE(d.Comes([&] { return d.Said().starts_with("8 frames"); })) << d.Said();
    EXPECT_EQ(d.Said(),
              "8 frames; 2 left out: 1 \u00D7 The file ends too early, 1 \u00D7 no stars");
    std::set<std::string> seen;
    EXPECT_TRUE(d.Comes([&] { return seen.insert(d.Corner()), seen.size() == 8; }));
    d.Type(Qt::Key_Space);
    EXPECT_EQ(d.In<QPushButton>("frmBlink", "BlinkPlayButton")->text().toStdString(), "Play");
    d.Type(Qt::Key_Home);
    EXPECT_EQ(d.Corner().substr(0, 18), "L0.fits   20:00:00");
    d.Type(Qt::Key_Left);
    EXPECT_EQ(d.Corner().substr(0, 7), "L7.fits"); // round the end
    d.Type(Qt::Key_Right);
    d.Type(Qt::Key_Right);
    EXPECT_EQ(d.Corner().substr(0, 7), "L1.fits");
    d.In<QCheckBox>("frmBlink", "BlinkByScoreCheck")->click();
    d.Type(Qt::Key_Home);
    EXPECT_EQ(d.Corner().substr(0, 7), "L3.fits");
    EXPECT_TRUE(d.s.BlinkByScore);
    QTest::keyClick(d.Up("frmBlink"), Qt::Key_Escape);
    EXPECT_FALSE(d.Up("frmBlink"));
}

TEST(Blink, MarksAreMadeWhileItRunsAndRejectedFramesArePassedOver) {
    BlinkDesk d;
    d.AddNight();
    d.OpenBlink();
    ASSERT_TRUE(d.Comes([&] { return d.Said() == "8 frames"; })) << d.Said();
    d.Type(Qt::Key_Space);
    d.Type(Qt::Key_Home);
    d.Type(Qt::Key_K);
    d.Type(Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(d.MarkAt("L0.fits"), (Mark{Decision::Keep, 4}));
    d.Type(Qt::Key_Right);
    d.Type(Qt::Key_J);
    EXPECT_EQ(d.MarkAt("L1.fits").decision, Decision::Reject);
    EXPECT_EQ(d.Corner().substr(0, 7), "L1.fits"); // it is seen with its mark
    d.Type(Qt::Key_Right);
    EXPECT_EQ(d.Corner().substr(0, 7), "L2.fits");
    d.Type(Qt::Key_Left);
    EXPECT_EQ(d.Corner().substr(0, 7), "L0.fits");
    EXPECT_EQ(d.Said(), "7 frames");
    d.Type(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(d.Comes([&] { return d.Said() == "8 frames"; })) << d.Said();
    d.Type(Qt::Key_Right);
    EXPECT_EQ(d.Corner().substr(0, 7), "L1.fits");
}

TEST(Blink, ZoomRateAndDifference) {
    BlinkDesk d;
    d.AddNight();
    d.OpenBlink();
    ASSERT_TRUE(d.Comes([&] { return d.Said() == "8 frames"; })) << d.Said();
    d.Type(Qt::Key_Space);
    d.Type(Qt::Key_Plus);
    d.Type(Qt::Key_Plus);
    EXPECT_EQ(d.Label("frmBlink", "BlinkZoomLabel"), "400 %"); // the whole of it stood at 100
    d.Type(Qt::Key_1);
    EXPECT_EQ(d.Label("frmBlink", "BlinkZoomLabel"), "100 %");
    d.In<QSlider>("frmBlink", "BlinkRateSlider")->setValue(25);
    d.Type(Qt::Key_Up); // is the fastest
    d.Type(Qt::Key_Down);
    EXPECT_EQ(d.Label("frmBlink", "BlinkRateLabel"), "24 a second");
    EXPECT_EQ(d.s.BlinkRate, 24);
    d.Type(Qt::Key_9);
    d.Type(Qt::Key_D);
    // Left of the split the sky is a quarter of the light, right of it the grey of no difference.
    const auto mean = [&](double part) {
        const QImage seen = d.Pane()->grab().toImage();
        const int left = int(part * seen.width());
        double sum = 0;
        int count = 0;
        for (int y = seen.height() * 2 / 5; y < seen.height() * 3 / 5; ++y)
            for (int x = left - 20; x < left + 20; ++x, ++count) sum += qGray(seen.pixel(x, y));
        return sum / count;
    };
    EXPECT_TRUE(d.Comes([&] { return std::abs(mean(0.6) - 96) < 8; })) << mean(0.6);
    EXPECT_NEAR(mean(0.4), 66, 10);
}

TEST(Blink, OnlyWhatIsSelectedAndWhatHasStars) {
    BlinkDesk d;
    d.AddNight();
    d.Open();
    d.c.FileListBox->Select(1);
    d.c.FileListBox->Select(2);
    d.c.BlinkButton->trigger();
    EXPECT_TRUE(d.Comes([&] { return d.Said() == "3 frames"; })) << d.Said();
    TestFolder empty;
    d.house.navigation.OpenFolder(empty.Path(), {});
    d.c.BlinkButton->trigger();
    EXPECT_EQ(d.Corner(), "No pictures are listed here");
    empty.Write("a.jpg", JpegBytes(TellTale(60, 40)));
    d.house.navigation.RefreshDirButton_Click();
    d.c.BlinkButton->trigger();
    EXPECT_TRUE(d.Comes([&] { return d.Corner() == "No frames with stars here"; })) << d.Corner();
}

TEST(Movers, AreFoundListedKeptAndBlinkedAt) {
    BlinkDesk d;
    d.AddNight();
    d.Open();
    d.c.MoversButton->trigger();
    auto* table = d.In<QTableWidget>("frmMovers", "MoversTable");
    ASSERT_TRUE(table);
    ASSERT_TRUE(d.Comes([&] { return d.Label("frmMovers", "MoversSaid") == "1 mover"; }))
        << d.Label("frmMovers", "MoversSaid");
    const auto heading = [&](int column) {
        return table->horizontalHeaderItem(column)->text().toStdString();
    };
    EXPECT_EQ(heading(2), "Arc seconds an hour");
    EXPECT_EQ(heading(4), "Frames");
    EXPECT_EQ(heading(6), "In its frames");
    EXPECT_NEAR(table->item(0, 1)->text().toDouble(), 60, 3);
    EXPECT_TRUE(table->isColumnHidden(2)); // no header says how large a pixel is on the sky
    EXPECT_NEAR(table->item(0, 4)->text().toDouble(), 8, 1);
    EXPECT_FALSE(table->item(0, 6)->data(Qt::DecorationRole).value<QPixmap>().isNull());
    d.In<QPushButton>("frmMovers", "MoversCopyButton")->click();
    EXPECT_TRUE(d.clipboard->Text().starts_with("Mover 1: ")) << d.clipboard->Text();
    d.In<QPushButton>("frmMovers", "MoversKeepButton")->click();
    EXPECT_EQ(d.MarkAt("L4.fits").decision, Decision::Keep);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                      table->visualItemRect(table->item(0, 0)).center());
    ASSERT_TRUE(d.Up("frmBlink"));
    EXPECT_TRUE(d.Comes([&] { return d.Label("frmBlink", "BlinkZoomLabel") == "200 %"; }));
}

TEST(Sum, GrowsTellsWhatIsLeftOutAndIsSaved) {
    BlinkDesk d;
    d.AddNight();
    d.AddUseless();
    d.Open();
    d.house.marks.SetMarks({d.At("L6.fits")}, Decide(Decision::Reject));
    d.c.SumButton->trigger();
    auto* save = d.In<QPushButton>("frmSum", "SumSaveButton");
    ASSERT_TRUE(save);
    EXPECT_FALSE(save->isEnabled());
    ASSERT_TRUE(d.Comes([&] { return save->isEnabled(); })) << d.Label("frmSum", "SumSaid");
    EXPECT_EQ(d.Label("frmSum", "SumSaid"), "Mean of 7 frames, 3 left out");
    std::set<std::string> left;
    const auto* list = d.In<QListWidget>("frmSum", "SumLeftOutList");
    for (int i = 0; i < list->count(); ++i) left.insert(list->item(i)->text().toStdString());
    EXPECT_EQ(left, (std::set<std::string>{"L6.fits: marked as rejected", "cloud.fits: no stars",
                                           "short.fits: The file ends too early"}));
    d.dialogs.answers = {d.At("L0.fits")};
    save->click();
    EXPECT_EQ(d.Label("frmSum", "SumSaid"), "Not saved: 'L0.fits' is itself one of the frames");
    d.dialogs.answers = {d.At("sum.fits")};
    save->click();
    ASSERT_TRUE(d.Comes([&] { return save->isEnabled(); }));
    EXPECT_EQ(d.Label("frmSum", "SumSaid"), "Saved as " + d.At("sum.fits"));
    EXPECT_TRUE(IsSumOfFrames(d.At("sum.fits")));
    EXPECT_NE(d.Text("sum.fits").find("HISTORY L3.fits, weight 0."), std::string::npos);
    d.dialogs.answers = {d.At("l0.FITS")}; // a frame by another spelling
    save->click();
    EXPECT_EQ(d.Label("frmSum", "SumSaid"), "Not saved: 'L0.fits' is itself one of the frames");
    d.c.BlinkButton->trigger(); // the sum is none of the frames
    EXPECT_TRUE(d.Comes([&] { return d.Said().find("itself a sum") != std::string::npos; }))
        << d.Said();
    d.c.UndoButton->trigger();
    EXPECT_FALSE(std::filesystem::exists(d.At("sum.fits")));
}

TEST(Sum, IsOfTheKeptFramesAndCancelled) {
    BlinkDesk d;
    d.AddNight();
    d.Open();
    d.house.marks.SetMarks({d.At("L2.fits"), d.At("L3.fits"), d.At("L5.fits")},
                           Decide(Decision::Keep));
    d.c.SumButton->trigger();
    d.In<QPushButton>("frmSum", "SumCancelButton")->click();
    EXPECT_EQ(d.Label("frmSum", "SumSaid"), "Cancelled");
    d.c.SumButton->trigger();
    auto* save = d.In<QPushButton>("frmSum", "SumSaveButton");
    ASSERT_TRUE(d.Comes([&] { return save->isEnabled(); })) << d.Label("frmSum", "SumSaid");
    EXPECT_EQ(d.Label("frmSum", "SumSaid"), "Mean of 3 frames, 5 left out");
    d.In<QDoubleSpinBox>("frmSum", "SumSigmaBox")->setValue(2.5);
    d.In<QPushButton>("frmSum", "SumAgainButton")->click();
    EXPECT_FALSE(save->isEnabled());
    d.In<QPushButton>("frmSum", "SumCancelButton")->click();
    EXPECT_TRUE(save->isEnabled()); // the one before stands
    d.In<QPushButton>("frmSum", "SumAgainButton")->click();
    EXPECT_EQ(d.s.SumSigma, 25);
    EXPECT_TRUE(d.Comes([&] { return save->isEnabled(); }));
}

} // namespace
} // namespace tarn::testing
