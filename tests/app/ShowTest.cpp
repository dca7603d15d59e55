// Shows in the whole program.
#include "AppDesk.h"

#include "platform/QtText.h"
#include "slides/frmSlideShow.h"

#include <QCheckBox>
#include <QLabel>

#include <deque>

namespace tarn::testing {
namespace {

// Does one thing at each look of a show for events.
struct ShowDesk : AppDesk {
    std::deque<std::function<void()>> acts;

    ShowDesk() {
        events.onPump = [this] {
            if (!house.slides.Window() || !house.state.Slideloop) return;
            if (acts.empty()) return house.slides.SlideDone();
            const auto act = acts.front();
            acts.pop_front();
            act();
        };
    }
    void Click(QPushButton* button) {
        button->click();
        EXPECT_EQ(house.slides.Window(), nullptr);
    }
    void Type(Qt::Key key) {
        acts.emplace_back([this, key] { QTest::keyClick(house.slides.Window(), key); });
    }
    void Fill() {
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg", "e.jpg"}) AddPicture(name);
        folder.Write("b2.avi", "x");
        Start();
    }
};

TEST(Show, TheMainWindowComesBackOnTheRightPicture) {
    ShowDesk d;
    d.Fill();
    d.house.controls.RotateRightButton->click();
    d.acts.emplace_back([&] {
        EXPECT_FALSE(d.house.window.isVisible());
        EXPECT_EQ(d.house.state.SlideTitle.substr(0, 8), "a.jpg   ");
    });
    d.Type(Qt::Key_N);
    d.Type(Qt::Key_N); // over the video
    d.Type(Qt::Key_R);
    d.Type(Qt::Key_Escape);
    d.Click(d.house.controls.SlideButton);
    EXPECT_TRUE(d.house.window.isVisible());
    EXPECT_EQ(d.Current(), "c.jpg");
    EXPECT_FALSE(d.house.state.ImageRotatedRight);
    d.acts.emplace_back([&] { d.house.slides.Window()->close(); });
    d.Click(d.house.controls.SlideButton);
    EXPECT_EQ(d.Current(), "c.jpg");
    d.Type(Qt::Key_R);
    d.Click(d.house.controls.SlideButton);
    EXPECT_TRUE(d.house.state.ImageRotatedRight); // the same picture in the same turn
    EXPECT_EQ(d.house.controls.Picture1->Picture().size(), QSize(40, 60));
    const int views = d.house.state.FileHistHigh;
    d.Type(Qt::Key_Down);
    d.Click(d.house.controls.Slides4Button);
    EXPECT_EQ(d.Current(), "d.jpg");
    EXPECT_EQ(d.house.state.FileHistHigh, views + 1); // the end alone is a view
}

TEST(Show, QuittingInTheMiddleSavesWhatTheUserHadSet) {
    ShowDesk d;
    d.Fill();
    d.house.controls.WCheck->setChecked(true);
    d.house.controls.FCheck->setChecked(true);
    const std::string types = d.house.state.FileTypes;
    d.Type(Qt::Key_Down);
    d.acts.emplace_back([&] {
        EXPECT_FALSE(d.house.controls.VCheck->isChecked());
        d.house.controls.Exit->trigger();
    });
    d.acts.emplace_back([] { FAIL() << "the loop leaves at its next round"; });
    d.Click(d.house.controls.Slides4Button);
    EXPECT_TRUE(d.events.ProgramEnds());
    EXPECT_FALSE(d.house.window.isVisible());
    EXPECT_TRUE(d.house.controls.VCheck->isChecked() && d.house.controls.WCheck->isChecked());
    EXPECT_EQ(d.house.state.FileTypes, types);
    EXPECT_EQ(d.settings->Read("videolist_check", ""), "1");
    EXPECT_EQ(d.settings->Read("weblist_check", ""), "1");
    EXPECT_TRUE(QString::fromStdString(d.settings->Read("filespec_default", "")).endsWith("b.jpg"));
}

TEST(Show, APathHandedOverEndsTheShowFirst) {
    ShowDesk d;
    d.Fill();
    TestFolder other;
    const std::string second = other.Write("z.jpg", JpegBytes(TellTale(60, 40)));
    d.acts.emplace_back([&] { d.house.Open(second); });
    d.Click(d.house.controls.SlideButton);
    QTest::qWait(400);
    EXPECT_EQ(d.house.state.Filename, second);
}

TEST(Show, KeysFollowTheMenuAndTheMenuFollowsTheKeys) {
    ShowDesk d;
    d.Fill();
    const int font = d.house.state.SlideFontIndex;
    for (const auto key : {Qt::Key_C, Qt::Key_F, Qt::Key_S, Qt::Key_B, Qt::Key_E}) d.Type(key);
    std::string title;
    d.acts.emplace_back([&] { title = d.house.slides.Window()->Lines().at(0).text; });
    d.Click(d.house.controls.SlideButton);
    EXPECT_TRUE(d.house.controls.SlideTextColorButton[1]->isChecked());
    EXPECT_TRUE(d.house.controls.SlideTextButton[std::size_t(font) + 1]->isChecked());
    EXPECT_EQ(d.house.state.SlideFontSize, "12");
    EXPECT_EQ(d.house.state.SlideBackground, 0xBFBFBF);
    EXPECT_FALSE(d.house.state.CameraSettings);
    EXPECT_EQ(title.substr(title.find('(')), "(1 of 6)   ");
}

TEST(Show, ABrokenPictureLeavesItsMessageForTheEnd) {
    ShowDesk d;
    d.Fill();
    d.folder.Write("c.jpg", "no picture");
    d.Type(Qt::Key_N);
    d.Type(Qt::Key_N);
    d.Click(d.house.controls.SlideButton);
    EXPECT_EQ(d.Current(), "d.jpg");
    EXPECT_TRUE(d.house.controls.Label_error->isVisible());
    EXPECT_TRUE(d.house.controls.Label_error->text().endsWith(" - c.jpg"));
}

} // namespace
} // namespace tarn::testing
