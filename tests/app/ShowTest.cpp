// Shows in the whole program.
#include "AppDesk.h"

#include "platform/QtText.h"

namespace tarn::testing {
namespace {

struct ShowDesk : AppDesk {
    ShowActs acts;

    void Click(QPushButton* button) { RunShow(button, std::exchange(acts, {})); }
    void Type(Qt::Key key) {
        acts.emplace_back([this, key] { QTest::keyClick(house.slides.Window(), key); });
    }
    void Fill() {
        AddPictures({"a.jpg", "b.jpg", "c.jpg", "d.jpg", "e.jpg"});
        folder.Write("b2.avi", "x");
        Start();
    }
};

TEST(Show, TheMainWindowComesBackOnTheRightPicture) {
    ShowDesk d;
    d.Fill();
    d.c.RotateRightButton->click();
    d.acts.emplace_back([&] {
        EXPECT_FALSE(d.house.window.isVisible());
        EXPECT_EQ(d.house.slides.Window()->Lines().at(0).text.substr(0, 8), "a.jpg   ");
    });
    d.Type(Qt::Key_N);
    d.Type(Qt::Key_N); // over the video
    d.Type(Qt::Key_R);
    d.Type(Qt::Key_Escape);
    d.Click(d.c.SlideButton);
    EXPECT_TRUE(d.house.window.isVisible());
    EXPECT_EQ(d.Current(), "c.jpg");
    EXPECT_TRUE(d.s.ImageRotatedRight); // as the show left it
    EXPECT_EQ(d.c.Picture1->Picture().size(), QSize(40, 60));
    d.acts.emplace_back([&] { d.house.slides.Window()->close(); });
    d.Click(d.c.SlideButton);
    EXPECT_EQ(d.Current(), "c.jpg");
    d.Type(Qt::Key_R);
    d.Click(d.c.SlideButton);
    EXPECT_TRUE(d.s.ImageRotatedRight); // the same picture in the same turn
    EXPECT_EQ(d.c.Picture1->Picture().size(), QSize(40, 60));
    const int views = d.house.navigation.Views().Count();
    d.Type(Qt::Key_Down);
    d.Click(d.c.Slides4Button);
    EXPECT_EQ(d.Current(), "d.jpg");
    EXPECT_EQ(d.house.navigation.Views().Count(), views + 1); // the end alone is a view
}

TEST(Show, QuittingInTheMiddleSavesWhatTheUserHadSet) {
    ShowDesk d;
    d.Fill();
    d.c.WCheck->setChecked(true);
    d.c.FCheck->setChecked(true);
    const std::string types = d.s.FileTypes;
    d.Type(Qt::Key_Down);
    d.acts.emplace_back([&] {
        EXPECT_FALSE(d.c.VCheck->isChecked());
        d.c.Exit->trigger();
    });
    d.acts.emplace_back([] { FAIL() << "the loop leaves at its next round"; });
    d.Click(d.c.Slides4Button);
    EXPECT_TRUE(d.events.ProgramEnds());
    EXPECT_FALSE(d.house.window.isVisible());
    EXPECT_TRUE(d.c.VCheck->isChecked());
    EXPECT_TRUE(d.c.WCheck->isChecked());
    EXPECT_EQ(d.s.FileTypes, types);
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
    d.Click(d.c.SlideButton);
    QTest::qWait(400);
    EXPECT_EQ(d.s.Filename, second);
}

TEST(Show, KeysFollowTheMenuAndTheMenuFollowsTheKeys) {
    ShowDesk d;
    d.Fill();
    const int font = d.s.SlideFontIndex;
    for (const auto key : {Qt::Key_C, Qt::Key_F, Qt::Key_S, Qt::Key_B, Qt::Key_E}) d.Type(key);
    std::string title;
    d.acts.emplace_back([&] { title = d.house.slides.Window()->Lines().at(0).text; });
    d.Click(d.c.SlideButton);
    EXPECT_TRUE(d.c.SlideTextColorButton[1]->isChecked());
    EXPECT_TRUE(d.c.SlideTextButton[std::size_t(font) + 1]->isChecked());
    EXPECT_EQ(d.s.SlideFontSize, "12");
    EXPECT_EQ(d.s.SlideBackground, 0xBFBFBF);
    EXPECT_FALSE(d.s.CameraSettings);
    EXPECT_EQ(title.substr(title.find('(')), "(1 of 6)   ");
}

TEST(Show, ABrokenPictureLeavesItsMessageForTheEnd) {
    ShowDesk d;
    d.Fill();
    d.folder.Write("c.jpg", "no picture");
    d.Type(Qt::Key_N);
    d.Type(Qt::Key_N);
    d.Click(d.c.SlideButton);
    EXPECT_EQ(d.Current(), "d.jpg");
    EXPECT_TRUE(d.Error().ends_with(" - c.jpg"));
}

} // namespace
} // namespace tarn::testing
