#include "AppDesk.h"

#include "platform/FolderTreeview.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>

#include <gtest/gtest.h>

#include <filesystem>

namespace tarn::testing {
namespace {

QWidget* Splash() {
    for (QWidget* each : QApplication::topLevelWidgets())
        if (each->objectName() == QLatin1String("frmSplash")) return each;
    return nullptr;
}

std::string Status(const AppDesk& d) {
    return d.house.window.findChild<QLabel*>(QStringLiteral("StatusBar1_Text"))
        ->text()
        .toStdString();
}

TEST(Start, TheFirstPictureRunsItsRoadUnderTheSplash) {
    AppDesk d;
    d.AddPicture("a.jpg");
    bool watched = false;
    d.files.onModifiedTime = [&](const std::string& path) {
        if (watched || path.find("a.jpg") == std::string::npos) return;
        watched = true;
        ASSERT_NE(Splash(), nullptr);
        EXPECT_TRUE(Splash()->isVisible());
        EXPECT_FALSE(d.house.window.isVisible());
        EXPECT_FALSE(d.house.state.FormLoadDone);
    };
    d.Start();
    EXPECT_TRUE(watched);
    EXPECT_FALSE(Splash()->isVisible());
    EXPECT_TRUE(d.house.window.isVisible());
    EXPECT_TRUE(d.house.state.FormLoadDone);
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_FALSE(d.house.controls.Picture1->Picture().isNull());
    EXPECT_EQ(d.house.window.windowTitle(),
              QStringLiteral("Tarn_View - Digital Camera Picture program - v61.14"));
    EXPECT_EQ(d.house.state.FileHistHigh, 1);
    EXPECT_EQ(d.house.state.FileHistLast, -1);
    EXPECT_FALSE(d.house.controls.FileBackButton->isEnabled());
}

TEST(Start, OnlyLaterPicturesTurnByOrientation) {
    AppDesk d;
    std::string exif = ExifBuilder(Endian::Big).Short(274, 6).Jpeg();
    exif.resize(exif.size() - 2); // the end of the file comes later
    const std::string body = JpegBytes(TellTale(60, 40));
    // The camera data in front, the picture behind.
    for (const char* name : {"a.jpg", "b.jpg"}) d.folder.Write(name, exif + body.substr(2));
    d.Start();
    EXPECT_EQ(d.house.state.ExpOrientation, 6);
    EXPECT_FALSE(d.house.state.ImageRotatedRight);
    EXPECT_EQ(d.house.controls.Picture1->Picture().size(), QSize(60, 40));
    d.Key(Qt::Key_N);
    EXPECT_TRUE(d.house.state.ImageRotatedRight);
    EXPECT_EQ(d.house.controls.Picture1->Picture().size(), QSize(40, 60));
}

TEST(Start, AFileNamedIsShownAndAMissingOneSaid) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.AddPicture("b.jpg");
    d.Start(d.folder.Path() + "/b.jpg");
    EXPECT_EQ(d.Current(), "b.jpg");
    AppDesk other;
    other.AddPicture("a.jpg");
    other.Start(other.folder.Path() + "/gone.jpg");
    EXPECT_EQ(other.Current(), "a.jpg");
    EXPECT_EQ(other.house.controls.FileDateText->text().toStdString(),
              "'" + other.folder.Path() + "/gone.jpg' does not exist");
}

TEST(Start, AFileNamedIsListedWithItsClass) {
    const auto fits = [](const AppDesk& d) { return d.house.controls.FCheck->isChecked(); };
    AppDesk d;
    d.AddPicture("a.jpg");
    const std::string frame = d.folder.Write("m31.fits", "SIMPLE  =");
    const std::string other = d.folder.Write("b.xyz", "");
    d.Start(frame);
    EXPECT_EQ(d.house.state.FileNameOnly, "m31.fits");
    EXPECT_TRUE(fits(d));
    d.house.controls.FCheck->setChecked(false);
    EXPECT_EQ(d.Current(), "a.jpg");
    d.house.Open(frame); // by a second start
    EXPECT_EQ(d.house.state.FileNameOnly, "m31.fits");
    EXPECT_TRUE(fits(d));
    AppDesk none;
    none.Start(other);
    EXPECT_FALSE(fits(none));
    EXPECT_EQ(none.house.controls.FileDateText->text().toStdString(),
              "'" + other + "' is not among the files listed");
}

TEST(Start, AMissingFolderLeavesTheProgramUsable) {
    AppDesk d;
    d.AddPicture("a.jpg");
    const std::string gone = d.folder.Path() + "/gone/more";
    d.Start(gone);
    EXPECT_EQ(Status(d), "Cannot set path to " + gone);
    EXPECT_EQ(d.house.controls.FileListBox->Count(), 0);
    d.house.Open(d.folder.Path());
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Start, AFirstRunShowsTheFirstPictureOfTheHomeFolder) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.files.home = d.folder.Path();
    d.Start("");
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Start, WithoutAReaderOfPicturesItEndsWithABox) {
    AppDesk d;
    EXPECT_FALSE(d.house.Start(d.folder.Path(), "no reader"));
    EXPECT_EQ(d.dialogs.shown, (Calls{"ImgX4.dll missing error|no reader"}));
    EXPECT_FALSE(d.house.window.isVisible());
}

TEST(End, ExitSavesAndTheNextStartTakesItUp) {
    AppDesk d;
    d.AddPicture("a.jpg");
    const std::string b = d.AddPicture("b.jpg");
    d.Start();
    d.Key(Qt::Key_N);
    d.house.window.resize(d.house.window.width(), d.house.window.height() + 45);
    const QSize size = d.house.window.size();
    d.house.controls.BeepAllSlideButton->trigger();
    d.house.controls.ThumbSizeButton[5]->trigger();
    d.house.window.close();
    EXPECT_TRUE(d.events.ProgramEnds());
    EXPECT_EQ(d.settings->Read("filespec_default", ""), b);

    QuickPump events;
    House next(
        {d.files, *d.settings, events, d.dialogs, d.sound, d.desktop, *d.clipboard, d.printing});
    ASSERT_TRUE(next.Start("", {}));
    EXPECT_EQ(next.state.Filename, b);
    EXPECT_EQ(next.window.size(), size);
    EXPECT_TRUE(next.controls.BeepAllSlideButton->isChecked());
    EXPECT_EQ(next.state.ThumbSize, 200);
    // The new window's own folder history was taken up, too.
    EXPECT_EQ(next.state.HistHigh, d.house.state.HistHigh);
}

TEST(End, QuitWritesNothing) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.Start();
    d.house.controls.QuitButton->trigger();
    EXPECT_TRUE(d.events.ProgramEnds());
    EXPECT_FALSE(std::filesystem::exists(d.settingsFile));
}

TEST(End, SettingsAreSavedRemovedAndBackAtTheExit) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.Start();
    d.house.controls.SaveSettingsButton->trigger();
    EXPECT_EQ(d.house.controls.FileDateText->text(), QStringLiteral("Settings saved"));
    d.house.controls.RemoveRegButton->trigger();
    EXPECT_EQ(d.dialogs.shown.back(),
              "Tarn_View|Registry entries for Tarn_View have been removed.");
    EXPECT_FALSE(d.settings->Contains("main_width"));
    d.house.controls.HelpContentsButton->trigger();
    d.house.controls.Exit->trigger();
    EXPECT_TRUE(d.settings->Contains("main_width"));
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->isVisible()) << window->objectName().toStdString();
}

} // namespace
} // namespace tarn::testing
