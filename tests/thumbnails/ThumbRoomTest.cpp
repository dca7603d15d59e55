// The room's commands with real list and files; the other rooms write down what they are asked.
#include "PictureFiles.h"
#include "support/RoomDesk.h"
#include "support/Trees.h"

#include "thumbnails/ThumbRoom.h"
#include "thumbnails/frmThumbFolder.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

#include <filesystem>

namespace tarn::testing {
namespace {

namespace fs = std::filesystem;

struct ListNavigation : RecordingNavigation {
    ListNavigation(Calls& written, MainControls& c) : RecordingNavigation(written), controls(c) {}
    void SelectRow(int row, const PictureRequest&) override { controls.FileListBox->Select(row); }
    MainControls& controls;
};

struct ThumbDesk : RoomDesk {
    ListNavigation navigation{calls, controls};
    RecordingDisplay display{calls};
    RecordingInfo info{calls};
    Context context = Join(navigation, display, info);
    ThumbRoom room{context};

    ThumbDesk() {
        state.PictureTypes = "*.jpg;*.tif";
        state.VideoTypes = "*.avi";
        state.WebTypes = "*.html";
        state.ThumbSize = 120;
        state.FileTypes = "*.jpg;*.tif;*.avi";
        state.ThumbCreateNotes = false;
        for (const char* name : {"a.jpg", "b.jpg"}) folder.Write(name, JpegBytes(TellTale(60, 40)));
        folder.Write("film.avi", "no film");
        controls.GenerateThumbButton->setProperty("baseCaption", "Create in .../");
        room.ConnectControls();
        for (QCheckBox* box : {controls.PCheck, controls.VCheck, controls.FCheck})
            box->setChecked(true);
        controls.FileListBox->SetPath(folder.Path());
        controls.FileListBox->SetPattern(state.FileTypes);
        Select("b.jpg");
    }
    void Select(const std::string& name) {
        controls.FileListBox->Select(controls.FileListBox->RowOf(name));
        state.FileNameOnly = name;
    }
    std::string Current() const {
        const FileListBox& list = *controls.FileListBox;
        return list.CurrentRow() < 0 ? "none" : list.Text(list.CurrentRow());
    }
    std::string Boxes() const {
        std::string ticked;
        for (const QCheckBox* box :
             {controls.PCheck, controls.VCheck, controls.WCheck, controls.FCheck, controls.CCheck})
            ticked += box->isChecked() ? '1' : '0';
        return ticked;
    }
    std::string Said() const {
        for (auto call = calls.rbegin(); call != calls.rend(); ++call)
            if (call->starts_with("message ")) return call->substr(8);
        return {};
    }
    std::string Thumbs() const {
        std::string names;
        for (const auto& [name, bytes] : ReadTree(folder.Path() + "/thumbnails"))
            names += name + " ";
        return names;
    }
};

constexpr char kTwoMade[] = "2 thumbnails, sized 120 pixels created in ...\\thumbnails sub folder";

TEST(ThumbRoom, RunsOverPicturesAndPutsFilterAndRowBack) {
    ThumbDesk d;
    Calls told;
    std::string during;
    d.Select("film.avi");
    const Outcome made = d.room.GenerateThumbnails(
        false,
        [&](const std::string& text) {
            told.push_back(text);
            if (during.empty()) during = d.Boxes() + " " + d.controls.FileListBox->Pattern();
        },
        nullptr);
    EXPECT_EQ(during, "10000 *.jpg;*.tif");
    EXPECT_EQ(told, (Calls{"Generating thumbnail 1 ...\\thumbnails\\T120_a.jpg",
                           "Generating thumbnail 2 ...\\thumbnails\\T120_b.jpg"}));
    EXPECT_TRUE(made);
    EXPECT_EQ(made.text, kTwoMade);
    EXPECT_EQ(d.Boxes(), "11010");
    EXPECT_EQ(d.state.FileTypes, "*.jpg;*.tif;*.avi");
    EXPECT_EQ(d.controls.FileListBox->Pattern(), "*.jpg;*.tif;*.avi");
    EXPECT_EQ(d.Current(), "film.avi");
    EXPECT_EQ(d.Thumbs(), "T120_a.jpg T120_b.jpg ");
    EXPECT_FALSE(d.state.BatchRuns);
}

TEST(ThumbRoom, AsksBeforeItOverwrites) {
    ThumbDesk d;
    d.folder.Write("thumbnails.txt", "");
    fs::create_directory(d.folder.Path() + "/thumbnails");
    d.folder.Write("thumbnails/T064_z.jpg", "old");
    d.state.ThumbClear = false;
    d.controls.GenerateThumbButton->trigger(); // cancelled
    EXPECT_EQ(d.dialogs.shown, (Calls{"Confirm Thumbnail Folder Overwrite|folder 'thumbnails'\n"
                                      "Will be overwritten!"}));
    EXPECT_EQ(d.Thumbs(), "T064_z.jpg ");
    EXPECT_EQ(d.Boxes(), "10000"); // as the first step left it, and it is said
    EXPECT_EQ(d.Said(), "No thumbnails created, the list shows pictures only");
    EXPECT_EQ(d.Current(), "b.jpg");
    d.dialogs.answers = {"OK"};
    d.controls.GenerateThumbButton->trigger();
    EXPECT_EQ(d.Thumbs(), "T120_a.jpg T120_b.jpg ");
    d.state.ThumbClear = true;
    d.folder.Write("thumbnails/T064_z.jpg", "old");
    d.controls.GenerateThumbButton->trigger();
    EXPECT_EQ(d.dialogs.shown.size(), 2U);
    EXPECT_EQ(d.Thumbs(), "T120_a.jpg T120_b.jpg ");
}

TEST(ThumbRoom, ACustomFilterIsWalkedAsItStands) {
    ThumbDesk d;
    d.state.FilterIsCustom = true;
    for (const char* name : {"b.txt", "b.html"}) d.folder.Write(name, "no picture");
    d.controls.FileListBox->SetPattern("b*;film*");
    d.Select("b.jpg");
    d.controls.GenerateThumbButton->trigger();
    EXPECT_EQ(d.Thumbs(), "T120_b.jpg ");
    EXPECT_EQ(d.Said(), "1 thumbnails, sized 120 pixels created in ...\\thumbnails sub folder");
    EXPECT_EQ(d.Boxes(), "11010");
    EXPECT_EQ(d.controls.FileListBox->Pattern(), "b*;film*");
}

TEST(ThumbRoom, AnEmptyListMakesTheFolderAndAnUpdateDoesNot) {
    ThumbDesk d;
    for (const char* name : {"a.jpg", "b.jpg"}) fs::remove(d.folder.Path() + "/" + name);
    EXPECT_TRUE(d.room.GenerateThumbnails(true, {}, nullptr));
    EXPECT_FALSE(fs::exists(d.folder.Path() + "/thumbnails"));
    d.controls.GenerateThumbButton->trigger();
    EXPECT_TRUE(fs::is_directory(d.folder.Path() + "/thumbnails"));
    EXPECT_EQ(d.Said(), "0 thumbnails, sized 120 pixels created in ...\\thumbnails sub folder");
}

TEST(ThumbRoom, AnUpdateKeepsWhatStandsInAnyCase) {
    ThumbDesk d;
    d.folder.Write("A.jpg", JpegBytes(TellTale(60, 40)));
    fs::create_directory(d.folder.Path() + "/thumbnails");
    d.folder.Write("thumbnails/T120_a.jpg", "kept");
    d.folder.Write("thumbnails/t120_B.JPG", "kept, too");
    d.folder.Write("thumbnails/T064_a.jpg", "another size");
    for (const char* made : {"1 thumbnails,", "0 thumbnails,"}) {
        EXPECT_EQ(d.room.GenerateThumbnails(true, {}, nullptr).text.substr(0, 13), made);
    }
    EXPECT_EQ(d.Thumbs(), "T064_a.jpg T120_A.jpg T120_a.jpg t120_B.JPG ");
    EXPECT_EQ(ReadTree(d.folder.Path() + "/thumbnails").at("T120_a.jpg"), "kept");
    EXPECT_FALSE(d.state.ThumbUpdate);
}

TEST(ThumbRoom, OnePictureLeavesFolderAndListAlone) {
    ThumbDesk d;
    fs::create_directory(d.folder.Path() + "/thumbnails");
    d.folder.Write("thumbnails/T064_z.jpg", "old");
    d.room.GenerateThumbCButton_Click();
    EXPECT_EQ(d.Thumbs(), "T064_z.jpg T120_b.jpg ");
    EXPECT_EQ(d.Said(), "1 thumbnails, sized 120 pixels created in ...\\thumbnails sub folder");
    EXPECT_EQ(d.Boxes(), "11010");
    EXPECT_TRUE(d.dialogs.shown.empty());
}

TEST(ThumbRoom, CancelStopsAndPutsBack) {
    ThumbDesk d;
    const std::string picture = JpegBytes(TellTale(60, 40));
    for (int i = 0; i < 200; ++i) // more than are made ahead
        d.folder.Write("c" + std::to_string(i) + ".jpg", picture);
    const Outcome made = d.room.GenerateThumbnails(
        false, [&](const std::string&) { d.state.BatchCancelled = true; }, nullptr);
    EXPECT_FALSE(made);
    EXPECT_EQ(d.Thumbs(), "T120_a.jpg ");
    EXPECT_EQ(made.text.substr(0, 25), "CANCELLED - 1 thumbnails,");
    EXPECT_EQ(d.Boxes(), "11010");
    EXPECT_EQ(d.Current(), "b.jpg");
}

TEST(ThumbRoom, AnUnsavedNoteThatWasPassedOverIsInTheRestoreBuffer) {
    ThumbDesk d;
    d.state.NoteText = d.notes.unsaved = "half a thought";
    d.notes.note = "M 31 \"Andromeda\" \u2019\r\n";
    d.state.ThumbCreateNotes = true;
    const TestFolder notes;
    d.state.NotesFolder = notes.Path();
    const auto passedOver = [&](const std::string& text) {
        if (text.starts_with("Generating")) d.state.NoteText = d.state.NotesSave = "another's";
    };
    const Outcome made = d.room.GenerateThumbnails(false, passedOver, nullptr);
    EXPECT_EQ(d.state.NotesSave, "half a thought");
    EXPECT_EQ(made.text,
              std::string(kTwoMade) + "; Unsaved note of 'b.jpg' is in the restore buffer");
    EXPECT_EQ(ReadTree(notes.Path()).at("T120_b.enf"), "\"M 31 \"Andromeda\" \x92\r\n\"\r\n");
}

TEST(ThumbRoom, NoNameLeadsToTheOriginals) {
    ThumbDesk d;
    const auto before = ReadTree(d.folder.Path());
    fs::create_directory_symlink(d.folder.Path(), d.folder.Path() + "/link");
    for (const std::string& name : {std::string("."), std::string(".."), d.folder.Path(),
                                    std::string("link"), std::string()}) {
        d.state.ThumbSubFolder = name;
        d.dialogs.answers = {"OK"};
        d.calls.clear();
        d.controls.GenerateThumbButton->trigger();
        EXPECT_EQ(d.Said(), "Sub folder name is not valid") << name;
        d.controls.ThumbFolderDeleteButton->trigger();
        d.room.GenerateThumbCButton_Click();
        EXPECT_TRUE(d.dialogs.shown.empty());
    }
    fs::remove(d.folder.Path() + "/link");
    EXPECT_EQ(ReadTree(d.folder.Path()), before);
}

TEST(ThumbRoom, TheNameOfTheFolderIsAskedFor) {
    ThumbDesk d;
    d.controls.ThumbFolderButton->trigger();
    frmThumbFolder& window = *d.room.Folder();
    auto* text = window.findChild<QLineEdit*>("ThumbFolderText");
    auto* set = window.findChild<QPushButton*>("SetThumbFolderButton");
    auto* label = window.findChild<QLabel*>("ThumbNotValidLabel");
    EXPECT_EQ(text->text(), "thumbnails");
    for (const QString& bad : {QString(), QString("."), QString("/tmp")}) {
        text->setText(bad);
        set->click();
        EXPECT_TRUE(window.isVisible());
        EXPECT_TRUE(label->isVisible());
    }
    text->setText("small & neat");
    set->click();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(d.state.ThumbSubFolder, "small & neat");
    EXPECT_EQ(d.Said(), "Thumbnail sub folder set to '...\\small & neat'");
    EXPECT_EQ(d.controls.GenerateThumbButton->text(), "Create in .../small && neat");
}

TEST(ThumbRoom, DeletesTheFolderAndPagesAfterAQuestion) {
    ThumbDesk d;
    d.folder.Write("ImageT001.html", "page");
    d.controls.ThumbFolderDeleteButton->trigger(); // no folder: no question, and pages stay
    const std::string at = d.folder.Path() + "/thumbnails";
    EXPECT_EQ(d.dialogs.shown, (Calls{"RmDir error|Error deleting folder\n" + at +
                                      "\n\nError 2, No such file or directory"}));
    EXPECT_EQ(d.Said(), "ERROR - Cannot delete '" + at + "'");
    EXPECT_TRUE(fs::exists(d.folder.Path() + "/ImageT001.html"));
    d.controls.GenerateThumbButton->trigger();
    d.dialogs.shown.clear();
    d.controls.ThumbFolderDeleteButton->trigger(); // cancelled
    EXPECT_EQ(d.dialogs.shown,
              (Calls{"Confirm Thumbnail Folder & HTML Delete|Sub folder 'thumbnails'\nand "
                     "'Image*.html' files in current folder\nWill be deleted!"}));
    EXPECT_EQ(d.Thumbs(), "T120_a.jpg T120_b.jpg ");
    d.dialogs.answers = {"OK"};
    d.controls.ThumbFolderDeleteButton->trigger();
    EXPECT_EQ(d.Said(), "Deleted '" + at + "'");
    EXPECT_FALSE(fs::exists(at));
    EXPECT_FALSE(fs::exists(d.folder.Path() + "/ImageT001.html"));
    EXPECT_TRUE(fs::exists(d.folder.Path() + "/a.jpg"));
}

} // namespace
} // namespace tarn::testing
