// The notes manager.
#include "NotesDesk.h"

#include "widgets/FileListBox.h"

#include <filesystem>

namespace tarn::testing {
namespace {

constexpr char kWindow[] = "frmNotesFolder";

struct ManagerDesk : NotesDesk {
    void Open() {
        if (!s.FormLoadDone) Start();
        c.DisplayNotesFolderButton->trigger();
    }
    static FileListBox& List() { return *Control<FileListBox>(kWindow, "NotesFileListBox"); }
    static QPlainTextEdit& Box() { return *Control<QPlainTextEdit>(kWindow, "NotesFolderNoteBox"); }
    static std::string Text(const char* label) {
        return Control<QLabel>(kWindow, label)->text().toStdString();
    }
    static bool IsOn(const char* button) {
        return Control<QPushButton>(kWindow, button)->isEnabled();
    }
    static void Choose(const char* name) {
        List().UnselectAll();
        List().Select(List().RowOf(name));
    }
    static void Do(const char* button) { ClickOn(kWindow, button); }
};

TEST(NotesManager, OpensOnTheNoteOfThePicture) {
    ManagerDesk d;
    d.notes.Write("a.enf", "\"quoted\"\r\n");
    d.notes.Write("b.txt", "text of b");
    d.notes.Write("c.jpg", "no note");
    d.Open();
    EXPECT_EQ(d.List().Count(), 2);
    EXPECT_EQ(d.Text("NoteFileLabel"), "a.enf");
    EXPECT_EQ(d.Box().toPlainText(), QStringLiteral("\"quoted\"\n")); // with its marks
    EXPECT_TRUE(d.IsOn("UpdateButton"));
    EXPECT_TRUE(d.IsOn("DeleteButton"));
    EXPECT_EQ(Control<QLineEdit>(kWindow, "NotesFolderText")->text().toStdString(), d.notes.Path());
    d.Choose("b.txt");
    EXPECT_EQ(d.Text("NoteFileLabel"), "b.txt");
    std::filesystem::remove(d.At("a.enf"));
    d.Choose("a.enf"); // cannot be read: everything stays
    EXPECT_EQ(d.Text("NoteFileLabel"), "b.txt");
    EXPECT_EQ(d.Box().toPlainText(), QStringLiteral("text of b"));
}

TEST(NotesManager, AnEmptyFolderSaysSo) {
    ManagerDesk d;
    d.Open();
    EXPECT_EQ(d.Text("NoteFileLabel"), "Notes folder is empty");
    EXPECT_FALSE(d.IsOn("UpdateButton"));
    EXPECT_FALSE(d.IsOn("DeleteButton"));
    EXPECT_TRUE(d.Box().isReadOnly()); // a text would have no place to go
    EXPECT_EQ(Window(kWindow)->windowTitle(), QStringLiteral("Tarn View - Notes Folder"));
    d.c.ClearNotesFolderButton->trigger();
    EXPECT_FALSE(Window(kWindow)->isVisible());
}

TEST(NotesManager, AnotherFolderOrAnEmptiedOneLeavesNothingOfTheOld) {
    ManagerDesk d;
    TestFolder other;
    d.notes.Write("a.enf", "a");
    other.Write("z.enf", "z");
    d.Open();
    d.dialogs.answers = {other.Path()};
    d.c.SetNotesButton->trigger();
    EXPECT_FALSE(Window(kWindow)->isVisible());
    d.Open();
    EXPECT_EQ(Control<QLineEdit>(kWindow, "NotesFolderText")->text().toStdString(), other.Path());
    EXPECT_EQ(d.List().Count(), 1);
    EXPECT_EQ(d.Text("NoteFileLabel"), "");
    EXPECT_TRUE(d.Box().toPlainText().isEmpty());
    EXPECT_FALSE(d.IsOn("UpdateButton"));
    d.Choose("z.enf");
    std::filesystem::remove(other.Path() + "/z.enf");
    d.Open();
    EXPECT_EQ(d.Text("NoteFileLabel"), "Notes folder is empty");
    EXPECT_TRUE(d.Box().toPlainText().isEmpty());
    EXPECT_FALSE(d.IsOn("UpdateButton"));
    EXPECT_EQ(d.s.NoteText, "a"); // not reloaded, and saved into the new one
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Bytes("a.enf"), "a");
    EXPECT_EQ(BytesOf(other.Path() + "/a.enf"), "a");
}

TEST(NotesManager, ReopenedItKeepsWhatIsBeingEdited) {
    ManagerDesk d;
    d.notes.Write("a.enf", "a");
    d.notes.Write("b.enf", "b");
    d.Open();
    d.Box().insertPlainText(QStringLiteral("edited "));
    d.Key(Qt::Key_N);
    d.Open();
    EXPECT_EQ(d.Text("NoteFileLabel"), "a.enf");
    EXPECT_EQ(d.Box().toPlainText(), QStringLiteral("edited a"));
    d.Do("UpdateButton");
    EXPECT_EQ(d.Bytes("a.enf"), "edited a");
    d.notes.Write("a.enf", "changed");
    d.Open(); // on the note of the picture now shown
    EXPECT_EQ(d.Text("NoteFileLabel"), "b.enf");
    d.notes.Write("b.enf", "changed");
    d.Open();
    EXPECT_EQ(d.Box().toPlainText(), QStringLiteral("changed"));
}

TEST(NotesManager, UpdateShowsInTheMainWindow) {
    ManagerDesk d;
    d.notes.Write("a.enf", "a");
    d.Open();
    d.Box().setPlainText(QStringLiteral("anew\nx"));
    d.Do("UpdateButton");
    EXPECT_EQ(d.Text("NoteUpdateText"), "Updated - a.enf");
    EXPECT_EQ(d.Bytes("a.enf"), "anew\r\nx");
    EXPECT_EQ(d.s.NoteText, "anew\r\nx");
    d.Box().setPlainText(QString::fromUtf8("\xE2\x89\x88"));
    d.Do("UpdateButton");
    EXPECT_EQ(d.Bytes("a.enf"), "anew\r\nx");
    EXPECT_TRUE(d.Error().ends_with("'\xE2\x89\x88' has no place in a note")) << d.Error();
    d.Box().setPlainText(QStringLiteral("z"));
    d.Fail("write", "full");
    d.Do("UpdateButton");
    EXPECT_EQ(d.Text("NoteUpdateText"), "Updated - a.enf"); // as it was
    EXPECT_EQ(d.Error(), "Error saving to notes folder: " + d.notes.Path());
    EXPECT_EQ(d.Message(), "ERROR - full");
}

TEST(NotesManager, KnowsThePicturesNoteInAnyCase) {
    ManagerDesk d;
    d.notes.Write("A.ENF", "capital");
    d.notes.Write("z.enf", "z");
    d.Open();
    EXPECT_EQ(d.Text("NoteFileLabel"), "A.ENF");
    d.Box().setPlainText(QStringLiteral("anew"));
    d.Do("UpdateButton");
    EXPECT_EQ(d.s.NoteText, "anew");
}

TEST(NotesManager, FixTouchesTheBoxUntilUpdate) {
    ManagerDesk d;
    d.notes.Write("a.enf", "\"a\"\r\n");
    d.Open();
    QTest::keyClick(&d.List(), Qt::Key_F);
    EXPECT_EQ(d.Box().toPlainText(), QStringLiteral("a\n"));
    EXPECT_EQ(d.Text("NoteUpdateText"), "Press Update to change note.");
    EXPECT_EQ(d.Bytes("a.enf"), "\"a\"\r\n");
    d.Do("UpdateButton");
    EXPECT_EQ(d.Bytes("a.enf"), "a\r\n");
    d.Do("FixQButton"); // nothing left to fix
    EXPECT_EQ(d.Text("NoteUpdateText"), "Updated - a.enf");
}

TEST(NotesManager, AllAndConvertWorkThroughTheFolder) {
    ManagerDesk d;
    d.notes.Write("a.enf", "\"mgr a\"\r\n");
    d.notes.Write("b.txt", "\"b");
    d.notes.Write("Note_Formats.txt", "\"x\"");
    d.notes.Write("long.enf", "\"" + std::string(9000, 'x') + "\"");
    d.Open();
    d.Do("FixQallButton");
    EXPECT_EQ(d.Text("NoteUpdateText"), "Removed quotes from 3 notes.");
    EXPECT_EQ(d.Bytes("long.enf"), std::string(9000, 'x'));
    EXPECT_EQ(Trashed("b (replaced).txt"), "\"b");
    EXPECT_EQ(d.Box().toPlainText(), QStringLiteral("mgr a\n"));
    EXPECT_EQ(d.s.NoteText, "mgr a\r\n");
    EXPECT_FALSE(d.s.BatchRuns);
    d.Do("FixQallButton");
    EXPECT_EQ(d.Text("NoteUpdateText"), "Removed quotes from 0 notes.");
    d.Choose("b.txt");
    d.Do("CommandNew");
    EXPECT_EQ(d.Text("NoteUpdateText"), "1 notes renamed from *.txt to *.enf");
    EXPECT_EQ(d.Bytes("b.enf"), "b");
    EXPECT_EQ(d.Bytes("Note_Formats.txt"), "\"x\"");
    EXPECT_EQ(d.List().RowOf("b.txt"), -1);
    EXPECT_EQ(d.Text("NoteFileLabel"), "b.enf");
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.s.NoteText, "b");
}

TEST(NotesManager, ConvertTakesTheShownNoteAlong) {
    ManagerDesk d;
    d.notes.Write("a.enf", "stood there");
    d.notes.Write("a.txt", "of the text");
    d.Open();
    d.Do("CommandNew");
    EXPECT_EQ(d.Box().toPlainText(), QStringLiteral("of the text"));
    EXPECT_EQ(d.s.NoteText, "of the text");
    d.notes.Write("mgr_d.txt", "d");
    d.Open();
    d.Choose("mgr_d.txt");
    d.Box().insertPlainText(QStringLiteral("edited "));
    d.Do("CommandNew");
    EXPECT_EQ(d.Text("NoteFileLabel"), "mgr_d.enf");
    EXPECT_EQ(d.List().Text(d.List().CurrentRow()), "mgr_d.enf");
    d.Do("UpdateButton");
    EXPECT_EQ(d.Bytes("mgr_d.enf"), "edited d");
}

TEST(NotesManager, AllCanBeCancelledAndNothingElseActsMeanwhile) {
    ManagerDesk d;
    for (const char* name : {"a.enf", "b.enf"}) d.notes.Write(name, "\"q");
    d.Open();
    d.events.onPump = [&] {
        EXPECT_EQ(d.Message(), "Note 1 of 2");
        d.Key(Qt::Key_N);
        QTest::keyClick(Window(kWindow), Qt::Key_Escape);
    };
    d.Do("FixQallButton");
    d.events.onPump = nullptr;
    EXPECT_EQ(d.Text("NoteUpdateText"), "Removed quotes from 1 notes.");
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_TRUE(Window(kWindow)->isVisible());
    EXPECT_EQ(d.Bytes("b.enf"), "\"q");
}

TEST(NotesManager, DeleteGoesOnToTheNextRow) {
    ManagerDesk d;
    for (const char* name : {"a.enf", "mgr_b.enf", "mgr_c.enf"}) d.notes.Write(name, name);
    d.Open();
    d.Choose("mgr_b.enf");
    d.Do("DeleteButton");
    EXPECT_EQ(d.Text("NoteUpdateText"), "Deleted - mgr_b.enf");
    EXPECT_EQ(d.Text("NoteFileLabel"), "mgr_c.enf");
    EXPECT_EQ(Trashed("mgr_b.enf"), "mgr_b.enf");
    d.Do("DeleteButton");
    EXPECT_EQ(d.Text("NoteFileLabel"), "a.enf"); // the last row
    d.Fail("trash", "no");
    d.Do("DeleteButton");
    EXPECT_EQ(d.Error(), "Error deleting notes file '" + d.At("a.enf") + "'");
    EXPECT_EQ(d.Message(), "ERROR - no");
    d.files.onChange = nullptr;
    d.Do("DeleteButton");
    EXPECT_EQ(d.Error(), "");
    EXPECT_EQ(d.s.NoteText, ""); // the picture on show had it
    EXPECT_EQ(d.Text("NoteFileLabel"), "Notes folder is empty");
    EXPECT_FALSE(d.IsOn("DeleteButton"));
}

} // namespace
} // namespace tarn::testing
