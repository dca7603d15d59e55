#include "AppDesk.h"

namespace tarn::testing {
namespace {

TEST(Start, TheFirstPictureRunsItsRoadUnderTheSplash) {
    AppDesk d;
    d.AddPicture("a.jpg");
    bool watched = false;
    d.files.onAsk = [&](const std::string& verb, const std::string& path) {
        if (watched || verb != "look" || !path.ends_with("a.jpg")) return "";
        watched = true;
        EXPECT_TRUE(AppDesk::Up("frmSplash"));
        EXPECT_FALSE(d.house.window.isVisible());
        EXPECT_FALSE(d.s.FormLoadDone);
        return "";
    };
    d.Start();
    EXPECT_TRUE(watched);
    EXPECT_TRUE(d.house.window.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([] { return !AppDesk::Up("frmSplash"); }, 2000));
    EXPECT_TRUE(d.s.FormLoadDone);
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_FALSE(d.c.Picture1->Picture().isNull());
    EXPECT_EQ(d.house.window.windowTitle(),
              QStringLiteral("Tarn_View - Digital Camera Picture program - v61.14"));
    EXPECT_EQ(d.house.navigation.Views().Count(), 1);
    EXPECT_EQ(d.house.navigation.Views().Last(), -1);
    EXPECT_FALSE(d.c.FileBackButton->isEnabled());
}

TEST(Start, AFileNamedIsShownAndAMissingOneSaid) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.AddPicture("b.jpg");
    d.Start(d.At("b.jpg"));
    EXPECT_EQ(d.Current(), "b.jpg");
    AppDesk other;
    other.AddPicture("a.jpg");
    other.Start(other.folder.Path() + "/gone.jpg");
    EXPECT_EQ(other.Current(), "a.jpg");
    EXPECT_EQ(other.Said(), "'" + other.folder.Path() + "/gone.jpg' does not exist");
}

TEST(Start, AFileNamedIsListedWithItsClass) {
    const auto fits = [](const AppDesk& d) { return d.c.FCheck->isChecked(); };
    AppDesk d;
    d.AddPicture("a.jpg");
    const std::string frame = d.folder.Write("m31.fits", "SIMPLE  =");
    const std::string other = d.folder.Write("b.xyz", "");
    d.Start(frame);
    EXPECT_EQ(d.s.FileNameOnly, "m31.fits");
    EXPECT_TRUE(fits(d));
    d.c.FCheck->setChecked(false);
    EXPECT_EQ(d.Current(), "a.jpg");
    d.house.Open(frame); // by a second start
    EXPECT_EQ(d.s.FileNameOnly, "m31.fits");
    EXPECT_TRUE(fits(d));
    AppDesk none;
    none.Start(other);
    EXPECT_FALSE(fits(none));
    EXPECT_EQ(none.Said(), "'" + other + "' is not among the files listed");
}

TEST(Start, AMissingFolderLeavesTheProgramUsable) {
    AppDesk d;
    d.AddPicture("a.jpg");
    const std::string gone = d.At("gone/more");
    d.Start(gone);
    EXPECT_EQ(d.Status(), "Cannot set path to " + gone);
    EXPECT_EQ(d.c.FileListBox->Count(), 0);
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
    d.c.BeepAllSlideButton->trigger();
    d.c.ThumbSizeButton[5]->trigger();
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
    EXPECT_EQ(next.state.HistHigh, d.s.HistHigh);
}

TEST(End, QuitWritesNothing) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.Start();
    d.c.QuitButton->trigger();
    EXPECT_TRUE(d.events.ProgramEnds());
    EXPECT_FALSE(std::filesystem::exists(d.settingsFile));
}

TEST(End, SettingsAreSavedRemovedAndBackAtTheExit) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.Start();
    d.c.SaveSettingsButton->trigger();
    EXPECT_EQ(d.Said(), "Settings saved");
    d.c.RemoveRegButton->trigger();
    EXPECT_EQ(d.dialogs.shown.back(),
              "Tarn_View|Registry entries for Tarn_View have been removed.");
    EXPECT_FALSE(d.settings->Contains("main_width"));
    d.c.HelpContentsButton->trigger();
    d.c.Exit->trigger();
    EXPECT_TRUE(d.settings->Contains("main_width"));
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->isVisible()) << window->objectName().toStdString();
}

} // namespace
} // namespace tarn::testing
