// From the box to the note's bytes, and what happens when they cannot be written.
#include "NotesDesk.h"

#include <QCheckBox>

#include <filesystem>

namespace tarn::testing {
namespace {

std::string AllBytes() {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    return bytes;
}

TEST(NoteBytes, UneditedTextIsWrittenBackAsLoaded) {
    const std::string every = AllBytes() + "\r\n\n\r";
    NotesDesk d;
    d.notes.Write("a.enf", every);
    d.Start();
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Bytes("a.enf"), every);
    EXPECT_EQ(d.Error(), "");
}

// Line ends are CR LF once a text was edited; every other byte stays what it was.
TEST(NoteBytes, EveryByteSurvivesAnEdit) {
    NotesDesk d;
    d.notes.Write("a.enf", AllBytes());
    d.Start();
    d.c.NotesBox->moveCursor(QTextCursor::End);
    d.Type("+");
    d.c.SaveNotesButton->click();
    std::string expected = AllBytes() + "+";
    expected.replace(expected.find('\r'), 1, "\r\n");
    expected.replace(expected.find('\n'), 1, "\r\n"); // the bare one, which comes first
    EXPECT_EQ(d.Bytes("a.enf"), expected);
    EXPECT_EQ(d.s.NoteText.find("\xC2\xA0") != std::string::npos, true); // no-break blank
}

TEST(NoteBytes, TypedLinesEndInCrLfWithoutAClosingOne) {
    NotesDesk d;
    d.Start();
    d.Type("one");
    QTest::keyClick(d.c.NotesBox, Qt::Key_Return);
    d.Type("two");
    QTest::keyClick(d.c.NotesBox, Qt::Key_Return, Qt::ShiftModifier);
    d.Write("one\ntwo\xC2\xA0\xE2\x82\xAC");
    d.house.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&d.house.window));
    QTest::keyClick(d.c.NotesBox, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(d.Bytes("a.enf"), "one\r\ntwo\xA0\x80");
    EXPECT_EQ(d.Message(), "SAVED - " + d.At("a.enf"));
    EXPECT_EQ(d.Caption(), "Notes for: a.jpg");
    EXPECT_TRUE(d.c.DeleteNotesButton->isEnabled());
}

TEST(NoteBytes, ANoteOf9000IsSavedWholeAndReadBackAs8000) {
    NotesDesk d({"cut9.jpg", "other.jpg"});
    d.Start();
    d.Write(std::string(9000, 'x'));
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Bytes("cut9.enf").size(), 9000U);
    d.Key(Qt::Key_N);
    d.Key(Qt::Key_P);
    EXPECT_EQ(d.s.NoteText.size(), 8000U);
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Bytes("cut9.enf").size(), 8000U);
    EXPECT_EQ(Trashed("cut9 (replaced).enf").size(), 9000U);
}

TEST(NoteBytes, TheOlderFormIsNeverWritten) {
    NotesDesk d;
    d.notes.Write("a.enf", "\"Hello\"\r\n");
    d.Start();
    EXPECT_EQ(d.s.NoteText, "Hello");
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Bytes("a.enf"), "Hello");
    d.Write("\"mine\"\n"); // marks of the user's own stay, however often it is saved
    for (int i = 0; i < 2; ++i) d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Bytes("a.enf"), "\"mine\"\r\n");
}

TEST(NoteBytes, ACharacterWithoutAPlaceStopsTheSave) {
    NotesDesk d;
    d.notes.Write("a.enf", "old");
    d.Start();
    d.Write("x \xE2\x89\x88 y");
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Error(), "Error saving to notes folder: " + d.notes.Path() +
                             " - the character '\xE2\x89\x88' has no place in a note");
    EXPECT_EQ(d.Bytes("a.enf"), "old");
    EXPECT_EQ(d.s.NoteText, "x \xE2\x89\x88 y");
    d.Write("x");
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Error(), "");
}

TEST(NoteSaving, PlusCarriesTheTextAlongUnlessItIsCleared) {
    NotesDesk d;
    d.notes.Write("c.enf", "note c");
    d.Start();
    EXPECT_EQ(d.c.SaveNotes2Button->toolTip(),
              QStringLiteral("Save notes, no clear; advance to next picture"));
    d.Write("travels");
    d.c.SaveNotes2Button->click();
    EXPECT_EQ(d.Bytes("a.enf"), "travels");
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.s.NoteText, "travels");
    EXPECT_EQ(d.Caption(), "Notes");
    EXPECT_EQ(d.Bytes("b.enf"), "(none)"); // until Save is pressed
    EXPECT_EQ(d.house.window.focusWidget(), d.c.NotesBox);
    d.c.SaveNotes2Button->click();
    EXPECT_EQ(d.Bytes("b.enf"), "travels");
    EXPECT_EQ(d.s.NoteText, "note c"); // a picture with a note keeps it

    d.c.clearNotesSaveButton->click();
    EXPECT_EQ(d.c.SaveNotes3Button->toolTip(),
              QStringLiteral("Save notes, clear; advance to previous picture"));
    std::filesystem::remove(d.At("b.enf"));
    d.c.SaveNotes3Button->click();
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.s.NoteText, "");
    d.c.RestoreNotesButton->click();
    EXPECT_EQ(d.s.NoteText, "note c");
    d.house.controls.Exit->trigger();
    EXPECT_EQ(d.settings->Read("clear_notes_saveplus", ""), "1");
}

TEST(NoteSaving, ATravellingTextIsNotUnsaved) {
    NotesDesk d;
    d.Start();
    d.Write("travels");
    d.c.SaveNotes2Button->click();
    d.Key(Qt::Key_N); // without saving it for b.jpg
    EXPECT_EQ(d.Message().find("Unsaved"), std::string::npos) << d.Message();
}

TEST(NoteSaving, FailuresKeepTextAndStandStill) {
    NotesDesk d;
    d.notes.Write("a.enf", "old");
    d.Start();
    d.Write("new");
    const std::string quoted = "Error saving to notes folder: " + d.notes.Path();
    d.Fail("write", "No space left on device");
    for (QPushButton* button : {d.c.SaveNotesButton, d.c.SaveNotes2Button, d.c.SaveNotes3Button}) {
        button->click();
        EXPECT_EQ(d.Error(), quoted);
        EXPECT_EQ(d.Message(), "ERROR - No space left on device");
        EXPECT_EQ(d.Current(), "a.jpg");
        EXPECT_EQ(d.s.NoteText, "new");
        EXPECT_EQ(d.Bytes("a.enf"), "old");
    }
    d.files.onChange = nullptr;
    std::filesystem::remove_all(d.notes.Path()); // the folder has gone
    d.c.SaveNotes2Button->click();
    EXPECT_EQ(d.Error(), quoted);
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_EQ(d.s.NoteText, "new");
    std::filesystem::create_directory(d.notes.Path());
    d.c.SaveNotes2Button->click();
    EXPECT_EQ(d.Error(), "");
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.Bytes("a.enf"), "new");
}

TEST(NoteSaving, SavingNothingNeverReplacesDeleting) {
    NotesDesk d;
    d.notes.Write("a.enf", "old");
    d.Start();
    d.Write("");
    EXPECT_FALSE(d.house.notes.SaveNote());
    EXPECT_EQ(d.Bytes("a.enf"), "old");
    d.Write("x");
    d.s.NotesFolder.clear();
    EXPECT_FALSE(d.house.notes.SaveNote());
    EXPECT_EQ(d.s.NotesFilename, "/a.enf");
    EXPECT_EQ(BytesOf("/a.enf"), "(none)");
}

} // namespace
} // namespace tarn::testing
