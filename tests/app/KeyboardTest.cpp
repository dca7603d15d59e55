// The whole window by keys alone: letters of the menus, the files' keys, the note's keys, the order
// of the Tab key, and the page that lists them all.
#include "FilesDesk.h"

#include "app/help/HelpPages.h"
#include "app/help/frmHelp.h"
#include "app/logs/frmLogs.h"
#include "desk/controls/Captions.h"
#include "display/FrmPic.h"
#include "display/frmOnetoOne.h"
#include "navigation/FindInList.h"
#include "navigation/HistoryList.h"
#include "navigation/PaneKeyTable.h"
#include "navigation/frmFilter.h"
#include "print/frmPrintPreview.h"
#include "slides/SlideKeys.h"
#include "widgets/FolderTreeview.h"

#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QTextBrowser>

#include <set>

namespace tarn::testing {
namespace {

QChar LetterOf(const QAction& entry) {
    QString text = entry.text();
    text.replace(QLatin1String("&&"), QLatin1String("  "));
    const qsizetype mark = text.indexOf(QLatin1Char('&'));
    return mark < 0 ? QChar() : text.at(mark + 1).toLower();
}

TEST(Letters, EveryMenuAndEntryHasOneOfItsOwnAsFarAsTheyGo) {
    AppDesk d;
    std::vector<QWidget*> menus{d.house.window.menuBar()};
    for (QMenu* menu : d.house.window.menuBar()->findChildren<QMenu*>()) menus.push_back(menu);
    for (QMenu* popup : {d.c.PopupPic, d.c.PopupList, d.c.PopupTree}) menus.push_back(popup);
    for (const QWidget* menu : menus) {
        std::set<QChar> letters;
        for (const QAction* entry : menu->actions()) {
            const QChar letter = LetterOf(*entry);
            if (letter.isNull()) continue;
            EXPECT_TRUE(letters.insert(letter).second) << entry->text().toStdString();
        }
        for (const QAction* entry : menu->actions()) {
            if (entry->isSeparator() || !LetterOf(*entry).isNull()) continue;
            for (const QChar letter : CaptionOf(*entry).toLower())
                EXPECT_TRUE(!letter.isLetterOrNumber() || letters.count(letter))
                    << CaptionOf(*entry).toStdString() << ": " << char(letter.toLatin1());
        }
    }
    for (const QAction* entry : d.house.window.menuBar()->actions())
        EXPECT_FALSE(LetterOf(*entry).isNull()) << entry->text().toStdString();
}

TEST(Letters, TheCaptionsAreWhatTheyWere) {
    AppDesk d;
    const MainControls& c = d.c;
    for (const auto& [entry, caption] : std::vector<std::pair<QAction*, const char*>>{
             {c.SelectAllButton, "  Select_All"},
             {c.PasteButton, "Paste  "},
             {c.menuEdit->menuAction(), "  Clipboard  "},
             {c.DuplicateButton, "Duplicate Picture & Note..."},
             {c.RenameButton, "Rename Picture"},
             {c.SlideTextButton[3], "Times New Roman"},
             {c.SlideBackgroundButton[3], "50% - Gray"},
             {c.ThumbSizeButton[12], "600"}})
        EXPECT_EQ(CaptionOf(*entry).toStdString(), caption);
    c.SlideTextButton[3]->trigger();
    c.SlideTextSizeButton[3]->trigger();
    c.ThumbSizeButton[12]->trigger();
    EXPECT_EQ(d.s.SlideFont, "Times New Roman");
    EXPECT_EQ(d.s.SlideFontSize, "10");
    EXPECT_EQ(d.s.ThumbSize, 600);
}

struct KeyboardDesk : FilesDesk {
    void Start() {
        FilesDesk::Start();
        house.window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&house.window));
    }
    void Press(QWidget* in, Qt::Key key, Qt::KeyboardModifiers with = {}) {
        in->setFocus();
        QTest::keyClick(in, key, with);
    }
    std::string Note() const { return c.NotesBox->toPlainText().toStdString(); }
};

TEST(FileKeys, CopyCutPasteAndAllInListAndPicture) {
    KeyboardDesk d;
    TestFolder target;
    d.Start();
    d.Press(d.c.FileListBox, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(d.c.FileListBox->SelectedRows(), (std::vector<int>{0, 1, 2}));
    d.Press(d.c.FileListBox, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(d.Said(), "3 files selected for copy");
    d.house.navigation.OpenFolder(target.Path(), {});
    d.Press(d.c.Picture1, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(FilesDesk::NamesOf(ReadTree(target.Path())), "a.jpg b.jpg c.jpg ");
    EXPECT_EQ(d.Names(), "a.jpg b.jpg c.jpg ");
    d.Press(d.c.Picture1, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(d.Said(), "1 files selected for cut");
    for (const QAction* entry : {d.c.PopupCopyButton, d.c.PopupCutButton, d.c.PopupPasteButton})
        EXPECT_TRUE(entry->text().contains(QLatin1String("\tCtrl+")))
            << CaptionOf(*entry).toStdString();
}

TEST(FileKeys, InATextTheyAreTheTexts) {
    KeyboardDesk d;
    d.Start();
    const std::string before = d.Said();
    d.c.NotesBox->setPlainText(QStringLiteral("seeing"));
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_X})
        d.Press(d.c.NotesBox, key, Qt::ControlModifier);
    EXPECT_EQ(d.Note(), "");
    d.Press(d.c.NotesBox, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(d.Note(), "seeing");
    for (QWidget* other : std::initializer_list<QWidget*>{d.c.List1, d.c.FolderTreeview1})
        for (const Qt::Key key : {Qt::Key_X, Qt::Key_V}) d.Press(other, key, Qt::ControlModifier);
    EXPECT_EQ(d.Said(), before); // no file was meant
    EXPECT_EQ(d.c.FileListBox->SelectedRows(), (std::vector<int>{0}));
}

TEST(ShowKeys, F11BeginsTheFullScreenShowAndEndsIt) {
    KeyboardDesk d;
    d.Start();
    bool shown = false;
    d.events.onPump = [&] {
        if (!d.house.slides.Signals() || !d.house.slides.Signals()->Slideloop) return;
        shown = true;
        QTest::keyClick(d.house.slides.Window(), Qt::Key_F11);
    };
    d.Press(d.c.NotesBox, Qt::Key_F11);
    d.events.onPump = nullptr;
    EXPECT_TRUE(shown);
    EXPECT_EQ(d.house.slides.Window(), nullptr);
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(NoteKeys, SaveAndStepBothWaysAndLeaveForThePicture) {
    KeyboardDesk d;
    d.Start();
    d.c.NotesBox->setPlainText(QStringLiteral("first"));
    d.Press(d.c.NotesBox, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(BytesOf(d.notes.Path() + "/a.enf"), "first");
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.house.window.focusWidget(), d.c.NotesBox);
    d.c.NotesBox->setPlainText(QStringLiteral("second"));
    d.Press(d.c.NotesBox, Qt::Key_Enter,
            Qt::ControlModifier | Qt::ShiftModifier | Qt::KeypadModifier);
    EXPECT_EQ(BytesOf(d.notes.Path() + "/b.enf"), "second");
    EXPECT_EQ(d.Current(), "a.jpg");
    d.Press(d.c.NotesBox, Qt::Key_Escape);
    EXPECT_EQ(d.house.window.focusWidget(), d.c.Picture1);
    EXPECT_EQ(d.Note(), "first");
    d.c.NotesBox->clear();
    d.Press(d.c.NotesBox, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(d.Said(), "There is no text to save");
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(NoteKeys, WithoutANotesFolderSaveAsksForOne) {
    KeyboardDesk d;
    d.settings->Write("notes_folder", "");
    d.Start();
    d.c.NotesBox->setPlainText(QStringLiteral("text"));
    d.Press(d.c.NotesBox, Qt::Key_S, Qt::ControlModifier); // declined
    EXPECT_EQ(d.Said(), "Notes folder has not been set");
    EXPECT_EQ(d.dialogs.shown, (Calls{"Set Folder were Notes data will be kept"}));
    d.dialogs.answers = {d.notes.Path()};
    d.Press(d.c.NotesBox, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(BytesOf(d.notes.Path() + "/a.enf"), "text");
    EXPECT_EQ(d.Said(), "SAVED - " + d.notes.Path() + "/a.enf");
}

TEST(NoteKeys, AltNeverTypes) {
    KeyboardDesk d;
    d.Start();
    d.c.NotesBox->setFocus();
    QTest::keyClick(d.c.NotesBox, 'z', Qt::AltModifier); // no menu's letter
    QTest::keyClick(d.c.NotesBox, 'k', Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(d.Note(), "");
    QTest::keyClick(d.c.NotesBox, 'z');
    EXPECT_EQ(d.Note(), "z");
    d.c.FindButton->trigger();
    QTest::keyClick(d.c.FindLine, 'z', Qt::AltModifier);
    EXPECT_EQ(d.c.FindLine->text(), QString());
}

TEST(TabKey, GoesFromTheListToThePictureTheNoteAndTheButtons) {
    KeyboardDesk d;
    d.Start();
    d.c.NotesBox->setPlainText(QStringLiteral("text")); // its buttons are on
    d.c.FileListBox->setFocus();
    std::vector<QWidget*> way;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(d.house.window.focusWidget(), Qt::Key_Tab);
        QTest::qWait(20); // or it counts as held
        QCoreApplication::processEvents();
        way.push_back(d.house.window.focusWidget());
    }
    EXPECT_EQ(way, (std::vector<QWidget*>{d.c.Picture1, d.c.NotesBox, d.c.SaveNotesButton}));
}

struct KeysDesk : KeyboardDesk {
    std::string Text() const {
        return In<QTextBrowser>("frmHelp", "HelpText")->toPlainText().toStdString();
    }
    std::string Page() {
        c.HelpKeysButton->trigger();
        return "\n" + Text();
    }
};

TEST(KeysPage, HasEveryLiveShortcutAndEveryRowOfTheTables) {
    KeysDesk d;
    d.Start();
    const std::string page = d.Page();
    const auto has = [&](const std::string& keys, const std::string& action) {
        EXPECT_NE(page.find("\n" + keys + "\n" + action), std::string::npos)
            << keys << ": " << action;
    };
    for (const QAction* entry : d.house.window.findChildren<QAction*>()) {
        if (entry->shortcut().isEmpty() || entry->menu()) continue;
        const std::string keys = entry->shortcut().toString().toStdString();
        const std::string caption = CaptionOf(*entry).trimmed().toStdString();
        bool found = false;
        for (std::size_t at = 0; (at = page.find("\n" + keys, at)) != std::string::npos; ++at) {
            const std::size_t next = page.find('\n', at + 1);
            const std::string action = page.substr(next + 1, page.find('\n', next + 1) - next - 1);
            found = found || action.ends_with(caption);
        }
        EXPECT_TRUE(found) << keys << " " << caption;
    }
    for (const QShortcut* key : d.house.window.findChildren<QShortcut*>())
        EXPECT_NE(page.find(key->key().toString().toStdString()), std::string::npos)
            << key->key().toString().toStdString();
    std::vector<std::vector<keys::KeyLine>> tables{
        FullKeyLines(false),         ManyKeyLines(),          NotesRoom::KeyLines(),
        VideoRoom::KeyLines(),       FrmPic::KeyLines(),      frmOnetoOne::KeyLines(),
        FindInList::KeyLines(),      HistoryList::KeyLines(), frmFilter::KeyLines(),
        frmPrintPreview::KeyLines(), frmHelp::KeyLines(),     frmLogs::KeyLines()};
    for (const KeyPane pane : {KeyPane::Picture, KeyPane::Clip, KeyPane::Text, KeyPane::Lists})
        tables.push_back(PaneKeyLines(pane));
    for (const auto& table : tables) {
        EXPECT_FALSE(table.empty());
        for (const keys::KeyLine& line : table) has(line.keys, line.action);
    }
    has("N, Space, Down", "next file");
    has("Esc, X, F11", "end of the show");
    d.c.SlideNavArrowKeys->trigger();
    EXPECT_NE(d.Page(), page); // made anew
}

TEST(KeysPage, IsFoundAndLeftLikeEveryPage) {
    KeysDesk d;
    d.Start();
    d.house.shell.ShowHelpPage(kHelpContents);
    ASSERT_TRUE(QTest::qWaitForWindowActive(d.Up("frmHelp")));
    d.In<QLineEdit>("frmHelp", "HelpFind")->setText(QStringLiteral("upside down"));
    auto* list = d.In<QListWidget>("frmHelp", "HelpList");
    std::set<std::string> pages;
    for (int i = 0; i < 6; ++i) {
        QTest::keyClick(d.Up("frmHelp"), Qt::Key_F3);
        pages.insert(list->currentItem()->text().toStdString());
    }
    EXPECT_TRUE(pages.count("Keys"));
    EXPECT_TRUE(pages.count("Slides (Full Screen)"));
    QTest::keyClick(d.Up("frmHelp"), Qt::Key_Escape);
    EXPECT_FALSE(d.Up("frmHelp"));
}

} // namespace
} // namespace tarn::testing
