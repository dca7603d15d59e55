#include "support/RoomDesk.h"
#include "support/Trees.h"

#include "fileops/ImportExport.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

// Lets the test act at a chosen round.
struct ScriptedPump : EventPump {
    void Pump() override {
        if (onPump) onPump(++rounds);
    }
    void Sleep(int) override {}
    bool ProgramEnds() const override { return ends; }
    void EndProgram() override { ends = true; }
    void Later(std::function<void()> action) override { action(); }
    std::function<void(int)> onPump;
    int rounds = 0;
    bool ends = false;
};

struct BatchDesk : RoomDesk {
    TestFolder notesFolder;
    TestFolder other;
    ScriptedPump& pump = Scripted();
    RecordingNavigation navigation{calls};
    RecordingDisplay display{calls};
    RecordingInfo info{calls};
    Context context = Join(navigation, display, info);
    ImportExport room{context};

    BatchDesk() {
        room.ConnectControls();
        Connect(controls.BatchCancelButton, [this] { state.BatchCancelled = true; });
        state.NotesFolder = notesFolder.Path();
        controls.FileListBox->SetPattern("*.jpg;*.tif");
    }
    ScriptedPump& Scripted() {
        events = std::make_unique<ScriptedPump>();
        return static_cast<ScriptedPump&>(*events);
    }
    void Show() { controls.FileListBox->SetPath(folder.Path()); }
    std::string Said() const { return calls.empty() ? "" : calls.back(); }
};

const Tree kNight{{"M31.jpg", "galaxy"}, {"M42.tif", "nebula"}, {"sky.jpg", "sky"}};
const Tree kNightNotes{{"M31.enf", "near\r\n"}, {"M42.enf", "\x93orange\x94"}};

Tree Joined(Tree a, const Tree& b) {
    a.insert(b.begin(), b.end());
    return a;
}

TEST(ImportExport, AFolderGoesOutAndComesBackTheSame) {
    BatchDesk d;
    Fill(d.folder, kNight);
    Fill(d.notesFolder, kNightNotes);
    d.notesFolder.Write("elsewhere.enf", "not of this folder");
    d.Show();
    d.dialogs.answers = {d.other.Path()};
    d.controls.ExportFilesButton[1]->trigger();
    EXPECT_EQ(d.Said(), "message Exported 3 files and 2 notes to '" + d.other.Path() + "'");
    EXPECT_EQ(ReadTree(d.other.Path()), Joined(kNight, kNightNotes));

    BatchDesk e; // another folder and another notes folder, both empty
    e.Show();
    d.other.Write("readme.doc", "not of the listed types");
    e.dialogs.answers = {d.other.Path()};
    e.controls.ImportButton->trigger();
    EXPECT_EQ(ReadTree(e.folder.Path()), kNight);
    EXPECT_EQ(ReadTree(e.notesFolder.Path()), kNightNotes);
    EXPECT_EQ(e.Said(), "message Imported 3 files and 2 notes to '" + e.folder.Path() + "'");
    EXPECT_EQ(std::count(e.calls.begin(), e.calls.end(), "RefreshDir"), 1);
    EXPECT_TRUE(e.dialogs.shown.size() == 1); // nothing stood there: no question
}

TEST(ImportExport, EachEntryCopiesWhatItSays) {
    struct Case {
        std::function<QAction*(const MainControls&)> entry;
        Tree copied;
    };
    const std::vector<Case> cases{
        {[](const MainControls& c) { return c.CopySelectedNotesFilesButton; },
         {{"M42.enf", "\x93orange\x94"}}},
        {[](const MainControls& c) { return c.CopyNotesFilesButton; }, kNightNotes},
        {[](const MainControls& c) { return c.ExportFilesButton[0]; },
         {{"M42.tif", "nebula"}, {"M42.enf", "\x93orange\x94"}, {"sky.jpg", "sky"}}},
        {[](const MainControls& c) { return c.ExportFilesButton[2]; },
         {{"M42.tif", "nebula"}, {"sky.jpg", "sky"}}},
        {[](const MainControls& c) { return c.ExportFilesButton[3]; }, kNight},
        {[](const MainControls& c) { return c.ExportNotesFormat; },
         {{"Note_Formats.txt", "#formats"}}},
    };
    for (const Case& each : cases) {
        BatchDesk d;
        Fill(d.folder, kNight);
        Fill(d.notesFolder, kNightNotes);
        d.notesFolder.Write("Note_Formats.txt", "#formats");
        d.Show();
        d.controls.FileListBox->Select(1);
        d.controls.FileListBox->Select(2);
        d.dialogs.answers = {d.other.Path()};
        each.entry(d.controls)->trigger();
        EXPECT_EQ(ReadTree(d.other.Path()), each.copied) << d.Said();
    }
}

TEST(ImportExport, NotesAloneAndTheFormatFileComeIntoTheNotesFolder) {
    BatchDesk d;
    d.Show();
    Fill(d.other, Joined(kNight, kNightNotes));
    d.dialogs.answers = {d.other.Path()};
    d.controls.ImportNotesFilesButton->trigger();
    EXPECT_EQ(ReadTree(d.notesFolder.Path()), kNightNotes);
    EXPECT_EQ(std::count(d.calls.begin(), d.calls.end(), "NoteFilesChanged"), 1);
    EXPECT_EQ(d.Said(), "message Imported 2 notes to '" + d.notesFolder.Path() + "'");
    EXPECT_TRUE(ReadTree(d.folder.Path()).empty());
    d.dialogs.answers = {d.other.Write("mine.txt", "#mine")};
    d.controls.ImportNotesFormat->trigger();
    EXPECT_EQ(ReadTree(d.notesFolder.Path())["Note_Formats.txt"], "#mine");

    // Without a notes folder nothing is asked and nothing copied, least of all to the working
    // folder.
    d.state.NotesFolder.clear();
    const std::size_t asked = d.dialogs.shown.size();
    for (QAction* entry : {d.controls.ImportNotesFilesButton, d.controls.ImportNotesFormat,
                           d.controls.ExportNotesFormat}) {
        entry->trigger();
        EXPECT_EQ(d.Said(), "message Notes folder has not been set");
    }
    EXPECT_EQ(d.dialogs.shown.size(), asked);
}

TEST(ImportExport, OneQuestionARun) {
    const auto after = [](const std::string& answer, Calls& shown, std::string& said) {
        BatchDesk d;
        Fill(d.other, {{"a.jpg", "new"}, {"a.enf", "new note"}, {"b.jpg", "b"}});
        Fill(d.folder, {{"a.jpg", "old"}, {"b.jpg", "old b"}});
        Fill(d.notesFolder, {{"a.enf", "old note"}});
        d.Show();
        d.dialogs.answers = {d.other.Path(), answer};
        d.controls.ImportButton->trigger();
        shown = d.dialogs.shown;
        said = d.Said();
        return Joined(ReadTree(d.folder.Path()), ReadTree(d.notesFolder.Path()));
    };
    Calls shown;
    std::string said;
    const Tree old{{"a.jpg", "old"}, {"b.jpg", "old b"}, {"a.enf", "old note"}};
    EXPECT_EQ(after("Skip", shown, said), old);
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[1].find("Tarn_View - Import|3 of 3 files are there already"), 0U) << shown[1];
    EXPECT_NE(said.find("Imported nothing to"), std::string::npos);
    EXPECT_NE(said.find(", 3 skipped"), std::string::npos);
    EXPECT_EQ(after("Overwrite", shown, said),
              (Tree{{"a.jpg", "new"}, {"b.jpg", "b"}, {"a.enf", "new note"}}));
    EXPECT_EQ(after("Keep both", shown, said),
              Joined(old, {{"a (2).jpg", "new"}, {"a (2).enf", "new note"}, {"b (2).jpg", "b"}}));
    EXPECT_EQ(after("Cancel", shown, said), old);
    EXPECT_EQ(said, "message Cancelled, nothing was copied");
}

TEST(ImportExport, OurOwnFoldersAreRefused) {
    BatchDesk d;
    Fill(d.folder, kNight);
    Fill(d.notesFolder, kNightNotes);
    d.Show();
    const std::string link = d.other.Path() + "/link";
    std::filesystem::create_directory_symlink(d.folder.Path(), link);
    for (const std::string& folder :
         {d.folder.Path(), d.folder.Path() + "/", link, d.notesFolder.Path()})
        for (QAction* entry : {d.controls.CopyNotesFilesButton, d.controls.ExportFilesButton[1],
                               d.controls.ExportFilesButton[3], d.controls.ExportNotesFormat,
                               d.controls.ImportButton, d.controls.ImportNotesFilesButton}) {
            d.dialogs.answers = {folder};
            entry->trigger();
            const bool notesFromShown = entry == d.controls.ImportNotesFilesButton &&
                                        folder != d.notesFolder.Path(); // they may lie there
            EXPECT_EQ(d.Said().find("message ERROR - the ") == 0, !notesFromShown) << d.Said();
            d.calls.clear();
        }
    EXPECT_EQ(ReadTree(d.folder.Path()), kNight);
    EXPECT_EQ(ReadTree(d.notesFolder.Path()), kNightNotes);
    d.controls.ExportFilesButton[1]->trigger(); // no folder chosen
    EXPECT_TRUE(d.calls.empty());
    d.controls.ExportFilesButton[0]->trigger();
    EXPECT_EQ(d.Said(), "message No files to export"); // none is selected
}

TEST(ImportExport, CancelStopsAfterTheFileInHand) {
    BatchDesk d;
    Fill(d.folder, kNight);
    Fill(d.notesFolder, kNightNotes);
    d.Show();
    d.window.show();
    int otherClicks = 0;
    Connect(d.controls.NextButton, [&] { ++otherClicks; });
    d.pump.onPump = [&](int round) {
        EXPECT_TRUE(d.state.BatchRuns);
        EXPECT_TRUE(d.controls.BatchCancelButton->isVisible());
        QTest::mouseClick(d.controls.NextButton, Qt::LeftButton);
        QTest::keyClick(d.controls.FileListBox, Qt::Key_Down);
        if (round == 2) QTest::mouseClick(d.controls.BatchCancelButton, Qt::LeftButton);
    };
    d.dialogs.answers = {d.other.Path()};
    d.controls.ExportFilesButton[1]->trigger();
    EXPECT_EQ(ReadTree(d.other.Path()), (Tree{{"M31.jpg", "galaxy"}, {"M31.enf", "near\r\n"}}));
    EXPECT_EQ(d.Said(),
              "message CANCELLED - Exported 1 file and 1 note to '" + d.other.Path() + "'");
    EXPECT_EQ(d.calls[1], "message Exporting 2 of 3 - M42.tif");
    EXPECT_EQ(otherClicks, 0); // only cancel acts
    EXPECT_FALSE(d.state.BatchRuns);
    EXPECT_FALSE(d.controls.BatchCancelButton->isVisible());
    QTest::mouseClick(d.controls.NextButton, Qt::LeftButton);
    EXPECT_EQ(otherClicks, 1);
}

TEST(ImportExport, EscAndTheEndOfTheProgramStopItToo) {
    for (const bool esc : {true, false}) {
        BatchDesk d;
        Fill(d.folder, kNight);
        d.Show();
        d.pump.onPump = [&](int) {
            if (esc)
                QTest::keyClick(d.controls.FileListBox, Qt::Key_Escape);
            else
                d.pump.ends = true;
        };
        d.dialogs.answers = {d.other.Path()};
        d.controls.ExportFilesButton[3]->trigger();
        EXPECT_TRUE(ReadTree(d.other.Path()).empty());
        EXPECT_EQ(d.Said(), "message CANCELLED - Exported nothing to '" + d.other.Path() + "'");
    }
}

TEST(ImportExport, AMissingNotesFolderIsSaid) {
    BatchDesk d;
    Fill(d.folder, kNight);
    d.Show();
    d.state.NotesFolder += "/gone";
    d.dialogs.answers = {d.other.Path()};
    d.controls.CopyNotesFilesButton->trigger();
    EXPECT_EQ(d.Said(), "message ERROR - a folder cannot be read: No such file or directory");
}

} // namespace
} // namespace tarn::testing
