// Loading, clearing, restoring, stepping, deleting; the folder; marks and choice of the list.
#include "NotesDesk.h"

#include "widgets/FileListBox.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QMenu>

namespace tarn::testing {
namespace {

TEST(NotesPanel, EveryFileBringsItsNote) {
    NotesDesk d({"a.jpg", "b.jpg", "broken.jpg", "c.avi"});
    d.folder.Write("broken.jpg", "no picture");
    d.notes.Write("a.enf", "note a");
    d.notes.Write("broken.enf", "\"old form\"\r\n");
    d.notes.Write("c.enf", "of a clip");
    d.Start();
    EXPECT_EQ(d.s.NoteText, "note a");
    EXPECT_EQ(d.Caption(), "Notes for: a.jpg");
    EXPECT_TRUE(d.c.DeleteNotesButton->isEnabled());
    EXPECT_FALSE(d.c.RestoreNotesButton->isEnabled());
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.s.NoteText, "");
    EXPECT_EQ(d.Caption(), "Notes");
    EXPECT_FALSE(d.c.DeleteNotesButton->isEnabled());
    EXPECT_EQ(d.s.NotesSave, "note a");
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.s.NoteText, "old form");
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.s.NoteText, "of a clip");
    EXPECT_EQ(d.Caption(), "Notes for: c.avi");
    EXPECT_EQ(d.Message(), ""); // nothing unsaved was dropped
}

TEST(NotesPanel, SteppingDropsAnUnsavedTextIntoTheBufferAndSaysSo) {
    NotesDesk d;
    d.notes.Write("b.enf", "note b");
    d.Start();
    d.Type("half a thought");
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.s.NoteText, "note b");
    EXPECT_EQ(d.Message(), "Unsaved note of 'a.jpg' is in the restore buffer");
    EXPECT_EQ(d.s.NotesSave, "half a thought");
    d.c.NotesBox->undo(); // does not reach the picture before
    EXPECT_EQ(d.s.NoteText, "note b");
    d.Key(Qt::Key_P);
    d.c.RestoreNotesButton->click();
    EXPECT_EQ(d.s.NoteText, "note b"); // what the box held when it was last cleared
    d.c.NotesBox->undo();
    EXPECT_EQ(d.s.NoteText, "");
}

TEST(NotesPanel, TheSamePictureInAnotherSizeKeepsWhatIsBeingWritten) {
    NotesDesk d;
    d.notes.Write("a.enf", "note a");
    d.Start();
    d.Type("more ");
    d.c.TwoXcheck->click();
    EXPECT_EQ(d.s.NoteText, "more note a");
    d.notes.Write("a.enf", "changed on disk");
    d.c.TwoXcheck->click();
    EXPECT_EQ(d.s.NoteText, "changed on disk");
    EXPECT_EQ(d.s.NotesSave, "more note a");
}

TEST(NotesPanel, ClearAndRestoreAreEditsThatUndoTakesBack) {
    NotesDesk d;
    d.Start();
    d.Write("text");
    d.c.ClearNotesButton->click();
    EXPECT_EQ(d.s.NoteText, "");
    EXPECT_EQ(d.s.NotesSave, "text");
    EXPECT_EQ(d.house.window.focusWidget(), d.c.NotesBox);
    d.c.RestoreNotesButton->click();
    d.c.RestoreNotesButton->click();
    EXPECT_EQ(d.s.NoteText, "text");
    d.c.NotesBox->undo();
    d.c.NotesBox->undo();
    d.c.NotesBox->undo();
    EXPECT_EQ(d.s.NoteText, "text"); // before Clear
}

TEST(NotesPanel, SaveButtonsFollowFolderFileAndText) {
    NotesDesk d;
    d.Start();
    const auto on = [&] {
        EXPECT_EQ(d.c.SaveNotesButton->isEnabled(), d.c.SaveNotes2Button->isEnabled());
        EXPECT_EQ(d.c.SaveNotesButton->isEnabled(), d.c.SaveNotes3Button->isEnabled());
        return d.c.SaveNotesButton->isEnabled();
    };
    EXPECT_FALSE(on()); // rows, but no text
    d.Type("x");
    EXPECT_TRUE(on());
    QTest::keyClick(d.c.NotesBox, Qt::Key_Backspace);
    EXPECT_FALSE(on());
    d.Type("x");
    d.c.ClearNotesFolderButton->trigger();
    EXPECT_FALSE(on());
    d.Type("y"); // without a folder typing enables nothing
    EXPECT_FALSE(on());
    EXPECT_EQ(d.Caption(), "Notes");
    d.dialogs.answers = {d.notes.Path() + "/"};
    d.c.SetNotesButton->trigger();
    EXPECT_TRUE(on());
    TestFolder empty;
    d.house.Open(empty.Path()); // no file is selected
    EXPECT_FALSE(on());
}

bool NoteRowIsEnabled(const NotesDesk& d, int row) {
    const QAbstractItemModel& rows = *d.c.NoteFilterCombo->model();
    return rows.flags(rows.index(row, 0)) & Qt::ItemIsEnabled;
}

TEST(NotesPanel, TheFolderIsSetClearedAndShown) {
    NotesDesk d;
    d.settings->Write("notes_folder", "");
    d.notes.Write("b.enf", "of b");
    d.Start();
    const auto commands = [&](bool on) {
        EXPECT_EQ(d.c.DisplayNotesFolderButton->isEnabled(), on);
        EXPECT_EQ(d.c.CommandNotesNew->isEnabled(), on);
        EXPECT_EQ(d.c.NotesOnlyMenu->isEnabled(), on);
        EXPECT_EQ(d.c.FilesNotesMenu->isEnabled(), on);
        EXPECT_EQ(NoteRowIsEnabled(d, 1), on);
        EXPECT_EQ(NoteRowIsEnabled(d, 2), on);
    };
    commands(false);
    d.c.SetNotesButton->trigger(); // cancelled
    EXPECT_EQ(d.s.NotesFolder, "");
    d.dialogs.answers = {d.notes.Path() + "/"};
    d.c.SetNotesButton->trigger();
    EXPECT_EQ(d.dialogs.shown.back(), "Set Folder were Notes data will be kept");
    EXPECT_EQ(d.s.NotesFolder, d.notes.Path());
    EXPECT_EQ(d.Message(), "Notes folder set to '" + d.notes.Path() + "'");
    EXPECT_EQ(d.c.NotesFrame->toolTip().toStdString(), d.notes.Path());
    commands(true);
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.s.NoteText, "of b");
    d.c.ClearNotesFolderButton->trigger();
    EXPECT_EQ(d.Message(), "Notes folder cleared, no files were deleted");
    commands(false);
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.s.NoteText, ""); // not the last one that was loaded
    d.c.EditNoteSettingsFileButton->trigger();
    EXPECT_EQ(d.Message(), "Notes folder has not been set");
    d.s.NotesFolder = d.notes.Path();
    d.c.EditNoteSettingsFileButton->trigger();
    EXPECT_EQ(d.calls.back(), "edit " + d.At("Note_Formats.txt"));
    EXPECT_NE(d.Bytes("Note_Formats.txt"), "(none)"); // there is one to edit
}

TEST(NotesPanel, DeleteGoesToTheWastebasketAndRestoreBringsItBack) {
    NotesDesk d({"panel_del.jpg", "z.jpg"});
    d.notes.Write("panel_del.ENF", "to go");
    d.Start();
    d.c.DeleteNotesButton->click();
    EXPECT_EQ(d.Message(), "Notes file deleted");
    EXPECT_EQ(d.Caption(), "Notes:");
    EXPECT_EQ(d.s.NoteText, "");
    EXPECT_FALSE(d.c.DeleteNotesButton->isEnabled());
    EXPECT_EQ(Trashed("panel_del.ENF"), "to go");
    d.c.RestoreNotesButton->click();
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Bytes("panel_del.enf"), "to go");
    EXPECT_EQ(d.Caption(), "Notes for: panel_del.jpg");
    d.Fail("trash", "no");
    d.c.DeleteNotesButton->click();
    EXPECT_EQ(d.Error(), "Error deleting notes file '" + d.At("panel_del.enf") + "'");
    EXPECT_EQ(d.s.NoteText, "to go");
    EXPECT_EQ(d.Bytes("panel_del.enf"), "to go");
}

TEST(NotesPanel, TheNextRunOffersWhatWasNotSaved) {
    NotesDesk d;
    d.Start();
    d.Type("dropped");
    d.Key(Qt::Key_N);
    d.Type("in the box");
    QTest::qWait(500); // and then a crash
    {
        QuickPump events;
        House next({d.files, *d.settings, events, d.dialogs, d.sound, d.desktop, *d.clipboard,
                    d.printing});
        ASSERT_TRUE(next.Start(d.folder.Path(), {}));
        EXPECT_EQ(next.state.NotesSave, "in the box");
        EXPECT_EQ(next.controls.FileDateText->text().toStdString(),
                  "Unsaved note of 'b.jpg' is in the restore buffer; kept until shown: 'a.jpg'");
        const auto key = [&next](int code) {
            for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent event(type, code, Qt::NoModifier);
                QApplication::sendEvent(next.controls.Picture1, &event);
            }
        };
        key(Qt::Key_N); // each comes up with its own picture
        next.controls.RestoreNotesButton->click();
        next.controls.SaveNotesButton->click();
        EXPECT_EQ(BytesOf(d.At("b.enf")), "in the box");
        QTest::keyClicks(next.controls.NotesBox, QStringLiteral(", new"));
        key(Qt::Key_P); // a text that is dropped now comes first
        EXPECT_EQ(next.state.NotesSave, "in the box, new");
        key(Qt::Key_N);
        key(Qt::Key_P);
        EXPECT_EQ(next.state.NotesSave, "dropped");
        next.controls.RestoreNotesButton->click();
        next.controls.SaveNotesButton->click();
        EXPECT_EQ(BytesOf(d.At("a.enf")), "dropped");
        next.controls.Exit->trigger();
    }
    QuickPump events;
    House last(
        {d.files, *d.settings, events, d.dialogs, d.sound, d.desktop, *d.clipboard, d.printing});
    ASSERT_TRUE(last.Start(d.folder.Path(), {}));
    EXPECT_EQ(last.state.NotesSave, "in the box, new"); // never saved
}

TEST(NotesPanel, NoNoteStandsBesideAFileThatHasGone) {
    NotesDesk d;
    d.notes.Write("a.enf", "note a");
    d.Start();
    EXPECT_EQ(d.s.NoteText, "note a");
    std::filesystem::rename(d.folder.Path() + "/b.jpg", d.folder.Path() + "/away");
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.s.NoteText, "");
    d.Type("for b");
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.Bytes("a.enf"), "note a");
    EXPECT_EQ(d.Bytes("b.enf"), "for b");
}

TEST(NotesPanel, ANoteThatCameFromElsewhereIsShownUnlessOneIsWritten) {
    NotesDesk d;
    d.Start();
    d.notes.Write("a.enf", "imported");
    d.house.notes.NoteFilesChanged();
    EXPECT_EQ(d.s.NoteText, "imported");
    d.Type("my own ");
    const std::string mine = d.s.NoteText;
    d.notes.Write("a.enf", "another");
    d.house.notes.NoteFilesChanged();
    EXPECT_EQ(d.s.NoteText, mine);
}

QIcon Mark(const NotesDesk& d, int row) {
    const QAbstractItemModel* model = d.c.FileListBox->model();
    return model->data(model->index(row, 0), Qt::DecorationRole).value<QIcon>();
}

bool IsMarked(const NotesDesk& d, int row) {
    const QImage image = Mark(d, row).pixmap(16, 16).toImage();
    return !image.isNull() && qAlpha(image.pixel(8, 8)) > 0;
}

TEST(NoteMarks, FollowTheProgramsOwnSaves) {
    NotesDesk d;
    d.notes.Write("B.enf", "in another case");
    d.Start();
    EXPECT_FALSE(IsMarked(d, 0));
    EXPECT_TRUE(IsMarked(d, 1));
    d.Type("x");
    d.c.SaveNotesButton->click();
    EXPECT_TRUE(IsMarked(d, 0));
    d.c.DeleteNotesButton->click();
    EXPECT_FALSE(IsMarked(d, 0));
    d.notes.Write("c.enf", "by another program");
    EXPECT_FALSE(IsMarked(d, 2));
    d.Key(Qt::Key_F5);
    EXPECT_TRUE(IsMarked(d, 2));
    d.c.ClearNotesFolderButton->trigger();
    EXPECT_TRUE(Mark(d, 1).isNull());
}

TEST(NoteMarks, TheChoiceListsWithAndWithout) {
    NotesDesk d;
    d.notes.Write("b.enf", "");
    d.Start();
    d.Key(Qt::Key_N);
    const auto choose = [&](int choice) {
        d.c.NoteFilterCombo->setCurrentIndex(choice);
        emit d.c.NoteFilterCombo->activated(choice);
        std::string names;
        for (int row = 0; row < d.c.FileListBox->Count(); ++row)
            names += d.c.FileListBox->Text(row) + " ";
        return names;
    };
    EXPECT_EQ(choose(1), "b.jpg ");
    EXPECT_EQ(d.Current(), "b.jpg"); // still the same file
    EXPECT_EQ(d.s.FileIndex, 0);
    EXPECT_EQ(d.s.TextNumOf, "1 of 1");
    EXPECT_EQ(choose(2), "a.jpg c.jpg ");
    EXPECT_EQ(d.Current(), "a.jpg"); // b.jpg is gone
    d.Type("x");
    d.c.SaveNotesButton->click();
    EXPECT_EQ(d.c.FileListBox->Count(), 2); // a snapshot until refreshed
    d.Key(Qt::Key_F5);
    EXPECT_EQ(d.c.FileListBox->Count(), 1);
    EXPECT_EQ(choose(0), "a.jpg b.jpg c.jpg ");
    d.c.FileListBox->Select(2);
    EXPECT_EQ(choose(1), "a.jpg b.jpg ");
    d.c.ClearNotesFolderButton->trigger(); // nothing to choose by
    EXPECT_EQ(d.c.FileListBox->Count(), 3);
    EXPECT_EQ(d.c.NoteFilterCombo->currentIndex(), 0);
}

} // namespace
} // namespace tarn::testing
