// The windows beside the main window, in the whole program.
#include "AppDesk.h"

#include "platform/imaging/PicturesAhead.h"

#include <QLabel>

#include <gtest/gtest.h>

#include <filesystem>

namespace tarn::testing {
namespace {

QWidget* Window(const char* name) {
    for (QWidget* each : QApplication::topLevelWidgets())
        if (each->objectName() == QLatin1String(name)) return each;
    return nullptr;
}

std::string Title(const char* name) {
    return Window(name)->windowTitle().toStdString();
}

TEST(Windows, FollowTheSelectionAndStepIt) {
    AppDesk d;
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) d.AddPicture(name, 1200, 800);
    d.Start();
    d.Key(Qt::Key_V);
    d.Key(Qt::Key_1);
    d.Key(Qt::Key_B);
    EXPECT_TRUE(Window("frmBrightness")->isVisible());
    d.Key(Qt::Key_N);
    EXPECT_EQ(Title("FrmPic").substr(0, 5), "b.jpg");
    EXPECT_EQ(Title("FrmPic").substr(Title("FrmPic").size() - 6), "2 of 3");
    EXPECT_EQ(Title("frmOnetoOne"), "Tarn View - 1:1  " + d.folder.Path() + "/b.jpg");
    QTest::keyClick(Window("FrmPic"), Qt::Key_Down);
    EXPECT_EQ(d.Current(), "c.jpg");
    EXPECT_EQ(Title("FrmPic").substr(0, 5), "c.jpg");
    auto* view = Window("frmOnetoOne")->findChild<QWidget*>(QStringLiteral("OnePicture2"));
    QTest::keyClick(view, Qt::Key_Up);
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(Title("FrmPic").substr(0, 5), "b.jpg");

    Window("FrmPic")->resize(300, 200);
    Window("FrmPic")->move(50, 60);
    QTest::keyClick(view, Qt::Key_T);
    d.house.lifecycle.Exit_Click();
    EXPECT_EQ(d.settings->Read("widthpic_value", ""), "4500");
    EXPECT_EQ(d.settings->Read("toppic_position", ""), "900");
    EXPECT_EQ(d.settings->Read("one_to_one_info", ""), "True");
}

// What stands on the screen is the file of its name, also where another picture was decoded ahead.
TEST(Windows, APictureReplacedWhileItsNeighbourIsShownComesAnew) {
    AppDesk d;
    d.AddPicture("a.jpg", 900, 600);
    const std::string b = d.AddPicture("b.jpg", 900, 600);
    const std::string c = d.AddPicture("c.jpg", 900, 600);
    d.Start();
    d.house.ahead.WaitUntilDone();
    EXPECT_GT(d.house.ahead.BytesHeld(), 0);
    d.AddPicture("b.jpg", 600, 900);
    std::filesystem::remove(c);
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.house.state.SizeText, "600 x 900");
    d.Key(Qt::Key_N);
    EXPECT_FALSE(d.house.controls.Label_error->isHidden());
    d.Key(Qt::Key_P);
    EXPECT_EQ(d.house.state.SizeText, "600 x 900");
}

// The times of a picture are set while it is shown: the way back finds it decoded all the same.
TEST(Windows, ThePictureBeforeIsNotDecodedAgain) {
    AppDesk d;
    const std::string head = CanonPicture(); // with its date, the picture behind
    const std::string dated =
        head.substr(0, head.size() - 2) + JpegBytes(TellTale(900, 600)).substr(2);
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg"}) d.folder.Write(name, dated);
    const std::string a = d.folder.Path() + "/a.jpg";
    const auto written = d.files.ModifiedTime(a, nullptr);
    d.Start();
    EXPECT_NE(d.files.ModifiedTime(a, nullptr), written);
    const QSize pane(d.house.state.PreviewWidth, d.house.state.PreviewHeight);
    const auto known = d.house.ahead.Take(a, pane);
    ASSERT_TRUE(known);
    d.Key(Qt::Key_N);
    d.house.ahead.WaitUntilDone();
    d.Key(Qt::Key_P);
    EXPECT_EQ(d.house.ahead.Take(a, pane), known);
    d.Key(Qt::Key_N);
    d.Key(Qt::Key_P);
    EXPECT_EQ(d.house.ahead.Take(a, pane), known);
}

} // namespace
} // namespace tarn::testing
