// Help, logs and outside programs, from the menus of the whole window.
#include "AppDesk.h"

#include "app/help/HelpPages.h"
#include "desk/controls/Captions.h"

#include <QTextBrowser>

namespace tarn::testing {
namespace {

struct HelpDesk : AppDesk {
    HelpDesk() { Start(); }
    std::string Chosen() const {
        return In<QListWidget>("frmHelp", "HelpList")->currentItem()->text().toStdString();
    }
    QTextBrowser* Page() const { return In<QTextBrowser>("frmHelp", "HelpText"); }
    void Find(const char* text) {
        In<QLineEdit>("frmHelp", "HelpFind")->setText(QString::fromLatin1(text));
        QTest::keyClick(Up("frmHelp"), Qt::Key_F3);
    }
    void ShowPage(int page) {
        house.shell.ShowHelpPage(page);
        ASSERT_TRUE(QTest::qWaitForWindowActive(Up("frmHelp")));
    }
};

TEST(Help, EveryEntryAndNumberHasItsPage) {
    HelpDesk d;
    const MainControls& c = d.c;
    for (const auto& [entry, title] : std::vector<std::pair<QAction*, std::string>>{
             {c.HelpContentsButton, "Contents"},
             {c.HelpTourButton, "A First Evening"},
             {c.HelpNotesFolderButton, "Folders and Files"},
             {c.HelpPictureFileDateButton, "Picture File Date"},
             {c.HelpThumbFolderButton, "Thumbnail Sub Folder"},
             {c.HelpThumbSizeButton, "Thumbnail Image Sizes"},
             {c.HelpPrintCButton, "Print Thumbnail Pages Layouts"}}) {
        entry->trigger();
        EXPECT_EQ(d.Chosen(), title);
        EXPECT_EQ(d.Page()->documentTitle().toStdString(), title);
    }
    const char* const numbered[] = {"Picture Navigation", "Slides (Full Screen)", "Size Window",
                                    "Full Size 1:1", "Two and Four Pictures"};
    for (int page = 1; page <= 5; ++page) {
        d.house.shell.ShowHelpPage(page);
        EXPECT_EQ(d.Chosen(), numbered[page - 1]);
    }
}

TEST(Help, WordsAreFoundInAllPagesAndEscClosesTheHelpAlone) {
    HelpDesk d;
    d.ShowPage(kHelpSlides);
    d.Find("emptIES"); // not in the pages between
    EXPECT_EQ(d.Chosen(), "Thumbnail Sub Folder");
    EXPECT_EQ(d.Page()->textCursor().selectedText(), QStringLiteral("empties"));
    d.Find("no such word");
    EXPECT_EQ(d.In<QLabel>("frmHelp", "HelpFound")->text(),
              QStringLiteral("Not in the help: no such word"));
    EXPECT_EQ(d.Chosen(), "Thumbnail Sub Folder");
    d.Find("wastebasket");
    const std::string first = d.Chosen();
    for (int i = 0; i < 9 && d.Chosen() == first; ++i) d.Find("wastebasket");
    EXPECT_NE(d.Chosen(), first); // on through the pages
    QTest::keyClick(d.Up("frmHelp"), Qt::Key_Escape);
    EXPECT_FALSE(d.Up("frmHelp"));
    EXPECT_TRUE(d.house.window.isVisible());
    EXPECT_FALSE(d.events.ProgramEnds());
}

TEST(Help, TheKeyOfThePaneAndThePlace) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.s.HelpPlace = {3000, 1500, 0, 0};
    d.Start();
    d.s.HelpPlace = {3000, 1500, 0, 0};
    d.Key(Qt::Key_F1);
    QWidget* help = d.Up("frmHelp");
    ASSERT_TRUE(help);
    EXPECT_FALSE(help->isModal());
    EXPECT_EQ(help->pos(), QPoint(200, 100));
    help->move(120, 80);
    QCoreApplication::processEvents();
    EXPECT_EQ(d.s.HelpPlace.left, 1800);
    EXPECT_EQ(d.s.HelpPlace.top, 1200);
    d.c.Exit->trigger();
    EXPECT_EQ(d.settings->Read("lefthelp_position", ""), "1800");
}

struct LogsDesk : AppDesk {
    QListWidget* List() const { return In<QListWidget>("frmLogs", "LogsList"); }
    QPlainTextEdit* Text() const { return In<QPlainTextEdit>("frmLogs", "LogsText"); }
    QPushButton* More() const { return In<QPushButton>("frmLogs", "LogsMoreButton"); }
    std::string Told() const { return In<QLabel>("frmLogs", "LogsLabel")->text().toStdString(); }
    void Find(const char* text) {
        In<QLineEdit>("frmLogs", "LogsFind")->setText(QString::fromLatin1(text));
        QTest::keyClick(Up("frmLogs"), Qt::Key_F3);
    }
    void ShowLogs() {
        c.ShowLogsButton->trigger();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Up("frmLogs")));
    }
};

TEST(Logs, TheFoldersLogAndTextFiles) {
    LogsDesk d;
    d.AddPicture("a.jpg");
    d.folder.Write("b.TXT", "gr\xFC\xDF\nseeing good\n");
    d.folder.Write("a.log", "first line\nlast line\n");
    d.folder.Write("c.html", "no");
    d.Start();
    d.ShowLogs();
    EXPECT_FALSE(d.Up("frmLogs")->isModal());
    ASSERT_EQ(d.List()->count(), 2);
    EXPECT_EQ(d.Text()->toPlainText(), QStringLiteral("first line\nlast line\n"));
    d.List()->setCurrentRow(1);
    EXPECT_EQ(d.Text()->toPlainText(), QStringLiteral("grüß\nseeing good\n")); // either coding
    d.Find("SEEING");
    EXPECT_EQ(d.Text()->textCursor().selectedText(), QStringLiteral("seeing"));
    d.Find("clouds");
    EXPECT_EQ(d.Told(), "Not in this file: clouds");
    d.folder.Write("b.TXT", "new");
    d.folder.Write("0.log", "newer");
    QTest::keyClick(d.Up("frmLogs"), Qt::Key_F5);
    EXPECT_EQ(d.List()->currentItem()->text(), QStringLiteral("b.TXT"));
    EXPECT_EQ(d.List()->count(), 3);
    EXPECT_EQ(d.Text()->toPlainText(), QStringLiteral("new"));
    std::filesystem::remove(d.At("0.log"));
    d.List()->setCurrentRow(0);
    EXPECT_EQ(d.Told(), "No such file or directory - " + d.At("0.log"));
    QTest::keyClick(d.Up("frmLogs"), Qt::Key_Escape);
    EXPECT_FALSE(d.Up("frmLogs"));
    TestFolder empty;
    d.house.Open(empty.Path());
    d.ShowLogs();
    EXPECT_EQ(d.Told(), "No log or text files in " + empty.Path());
}

TEST(Logs, ALargeFileComesInParts) {
    LogsDesk d;
    std::string text;
    for (int i = 0; text.size() < 3 * 1024 * 1024; ++i)
        text += "line " + std::to_string(i) + " of the night's log\n";
    d.folder.Write("big.log", text);
    d.Start();
    d.ShowLogs();
    EXPECT_TRUE(d.More()->isVisible());
    const auto shown = [&] { return d.Text()->toPlainText().toStdString(); };
    EXPECT_LE(shown().size(), std::size_t(1) << 20);
    EXPECT_GT(shown().size(), (std::size_t(1) << 20) - 100);
    EXPECT_EQ(shown().back(), '\n'); // whole lines
    d.More()->click();
    EXPECT_GT(shown().size(), (std::size_t(2) << 20) - 100);
    for (int part = 0; part < 2; ++part) d.More()->click();
    EXPECT_TRUE(shown() == text);
    EXPECT_FALSE(d.More()->isVisible());
}

TEST(Outside, ProgramsGetThePathAsItIs) {
    AppDesk d;
    d.AddPicture("a b;$(x).jpg");
    d.folder.Write("note.txt", "x");
    d.Start();
    const MainControls& c = d.c;
    const std::string picture = d.At("a b;$(x).jpg");
    const auto does = [&](auto* command) {
        d.calls.clear();
        if constexpr (std::is_same_v<decltype(command), QAction*>)
            command->trigger();
        else
            command->click();
        return d.calls.empty() ? std::string() : d.calls.back();
    };
    EXPECT_EQ(does(c.OpenWindowsExplorerButton), "manager " + d.folder.Path() + " " + picture);
    EXPECT_EQ(does(c.OpenNotepadButton), "edit "); // a picture is no text
    EXPECT_EQ(does(c.PopupOpenButton), "open " + picture);
    EXPECT_EQ(does(c.EditButton2), "open " + picture);
    EXPECT_FALSE(c.OpenButton->isVisible());
    EXPECT_TRUE(c.OpenButtonF->isHidden());
    d.dialogs.answers = {"/usr/bin/stacker", "/opt/paint & draw", "/opt/plus"};
    does(c.SetOpenButton);
    EXPECT_EQ(CaptionOf(*c.OpenButton), QStringLiteral("Folder to stacker"));
    EXPECT_EQ(CaptionOf(*c.OpenButton2), QStringLiteral("Picture to stacker"));
    EXPECT_EQ(c.OpenButtonF->text(), QStringLiteral("Open stacker"));
    EXPECT_FALSE(c.OpenButtonF->isHidden());
    EXPECT_EQ(does(c.OpenButton), "start /usr/bin/stacker " + d.folder.Path());
    EXPECT_EQ(does(c.OpenButton2), "start /usr/bin/stacker " + picture);
    EXPECT_EQ(does(c.OpenButtonF), "start /usr/bin/stacker " + picture);
    does(c.FindImageEditCustomButton);
    EXPECT_EQ(does(c.EditButton2), "start /opt/paint & draw " + picture);
    EXPECT_EQ(does(c.PopupOpenButton), "open " + picture);
    does(c.FindImagesPlusButton);
    EXPECT_EQ(does(c.OpenImagesPlusButton), "start /opt/plus " + picture);
    does(c.SetOpenButton); // no program chosen
    EXPECT_EQ(d.s.OpenIn, "/usr/bin/stacker");
    d.s.ImageLoaded = true;
    d.Key(Qt::Key_E);
    EXPECT_EQ(d.calls.back(), "open " + picture);
    does(c.ClearOpenButton);
    EXPECT_FALSE(c.OpenButton2->isVisible());
    EXPECT_TRUE(c.OpenButtonF->isHidden());
    d.c.Exit->trigger();
    EXPECT_EQ(d.settings->Read("open_in", "none"), "");
    EXPECT_EQ(d.settings->Read("ImagesPlusExp", ""), "/opt/paint & draw");
}

TEST(Outside, WhatCannotBeDoneIsSaid) {
    AppDesk d;
    const std::string picture = d.AddPicture("a.jpg");
    const std::string text = d.folder.Write("b.txt", "x");
    d.Start();
    const MainControls& c = d.c;
    d.desktop.failure = "'/opt/none' is not installed";
    d.s.ImagesPlus = "/opt/none";
    c.OpenImagesPlusButton->trigger();
    EXPECT_EQ(d.Said(), "ERROR - '/opt/none' is not installed");
    d.s.ImagesPlus.clear();
    c.OpenImagesPlusButton->trigger();
    EXPECT_EQ(d.Said(), "ImagesPlus program not set, use Control menu to set program");
    d.desktop.failure.clear();
    d.Key(Qt::Key_N); // the text file
    c.OpenNotepadButton->trigger();
    EXPECT_EQ(d.calls.back(), "edit " + text);
    d.Key(Qt::Key_N);
    std::filesystem::remove(picture);
    d.calls.clear();
    c.PopupOpenButton->trigger();
    EXPECT_TRUE(d.calls.empty());
    EXPECT_EQ(d.Said(), "'" + picture + "' does not exist");
}

} // namespace
} // namespace tarn::testing
