#include "NavDesk.h"

#include "desk/batch/KeptNote.h"
#include "desk/controls/SlideButtons.h"
#include "navigation/FolderHistory.h"
#include "platform/QtText.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

TEST(Selection, APictureRunsTheWholeRoadInOrder) {
    NavDesk d;
    d.FillWithPictures(3);
    d.room.SelectRow(1);
    EXPECT_EQ(d.calls, (Calls{"status " + d.folder.Path() + "/p01.jpg", "CloseVideoClip",
                              "shown as 0", "commands on", "DisplayPicture"}));
    EXPECT_EQ(d.state.FileType, ".JPG");
    EXPECT_EQ(d.state.TextNumOf, "2 of 3");
    EXPECT_FALSE(d.state.FileModifiedText.empty());
    EXPECT_EQ(d.state.HistFileIndex[1], 1); // the row shown last in this folder's entry
}

TEST(Selection, TheTypeDecidesWhoTakesOver) {
    NavDesk d;
    d.folder.Write("a.AVI", "x");
    d.folder.Write("b.html", "x");
    d.folder.Write("c.log", "x");
    d.folder.Write("d.txt", "x");
    d.folder.Write("e.fits", "x");
    d.Enter();
    const auto last = [&](int row) {
        d.calls.clear();
        d.room.SelectRow(row);
        return d.calls.back();
    };
    const auto slides = SlideButtons(d.controls);
    const auto enabled = [&] {
        return std::count_if(slides.begin(), slides.end(), [](auto* b) { return b->isEnabled(); });
    };
    for (QPushButton* button : slides) Connect(button, [] {});
    QWidget* const over[] = {d.controls.PreviewLabel, d.controls.DeletePicButton,
                             d.controls.DeleteFitsButton, d.controls.QTplayButton};
    for (QWidget* each : over) each->show();
    EXPECT_EQ(last(0), "ShowVideoFile");
    EXPECT_TRUE(d.state.VideoImage());
    for (QWidget* each : over) EXPECT_TRUE(each->isHidden());
    EXPECT_EQ(enabled(), 0);
    d.state.EditCaption = "Web";
    EXPECT_EQ(last(1), "Load_web"); // found by three characters: "TML"
    EXPECT_EQ(last(2), "ShowVideoFile");
    EXPECT_EQ(last(3), "Load_web");
    EXPECT_FALSE(d.state.VideoImage());
    EXPECT_EQ(last(4), "DisplayPicture");
    EXPECT_EQ(d.state.FileType, "FITS");
    EXPECT_EQ(enabled(), 7);
    EXPECT_EQ(d.state.EditCaption, "Edit");
}

TEST(Selection, AFileThatWentAwayIsNamedBesideTheOneBefore) {
    NavDesk d;
    d.FillWithPictures(2);
    d.state.FileNameOnly = "p00.jpg";
    std::remove((d.folder.Path() + "/p01.jpg").c_str());
    d.room.SelectRow(1);
    // Neither picture nor note of another file stands under the name of this one.
    EXPECT_EQ(Calls(d.calls.end() - 4, d.calls.end()),
              (Calls{"error No such file or directory - p00.jpg",
                     "message 'p01.jpg' - No such file or directory", "ShowNothing", "told"}));
    EXPECT_EQ(d.state.FileNameOnly, "p01.jpg");
    EXPECT_EQ(d.state.FileIndex, 1);
    EXPECT_EQ(d.state.FileModifiedText, "");
}

TEST(Selection, SelectAllThenStepLeavesOneRow) {
    NavDesk d;
    d.FillWithPictures(5);
    d.room.SelectAllButton_Click();
    EXPECT_EQ(d.calls, (Calls{"message All files selected 5"}));
    EXPECT_EQ(d.controls.FileListBox->SelectedRows().size(), 5U);
    d.room.ClearMultiselect();
    EXPECT_EQ(d.Row(), 0); // the current row survives
    d.room.SelectAllButton_Click();
    d.room.NextButton_Click();
    EXPECT_EQ(d.controls.FileListBox->SelectedRows(), (std::vector<int>{1}));
}

TEST(Selection, StepsInAnEmptyListSelectNothingAndGiveTheFocus) {
    NavDesk d;
    d.Enter();
    d.room.NextButton_Click();
    d.room.PrevButton_Click();
    EXPECT_EQ(d.calls, (Calls{"FocusPane", "FocusPane"}));
    EXPECT_TRUE(d.controls.TextNumOf->isHidden());
}

TEST(Selection, BackAndForwardWalkTheViews) {
    NavDesk d;
    d.FillWithPictures(5);                                 // row 0 is the first view
    for (const int row : {3, 3, 1}) d.room.SelectRow(row); // the same again is no new view
    EXPECT_TRUE(d.controls.FileBackButton->isEnabled());
    const auto click = [](QPushButton* button) { button->click(); };
    click(d.controls.FileBackButton);
    EXPECT_EQ(d.Row(), 3);
    click(d.controls.FileBackButton);
    EXPECT_EQ(d.Row(), 0);
    EXPECT_FALSE(d.controls.FileBackButton->isEnabled());
    click(d.controls.FileFwdButton);
    EXPECT_EQ(d.Row(), 3);
    d.room.SelectRow(4); // appended behind all, the cursor with it
    d.room.FileFwdButton_Click();
    EXPECT_EQ(d.Row(), 4); // an entry not yet used
    click(d.controls.FileBackButton);
    EXPECT_EQ(d.Row(), 1);
    d.room.ResetFileHistory(true);
    EXPECT_FALSE(d.controls.FileBackButton->isEnabled());
    EXPECT_FALSE(d.controls.FileFwdButton->isEnabled());
}

TEST(Selection, AShowRecordsNoViewButTheFoldersRow) {
    NavDesk d;
    d.FillWithPictures(4);
    const int views = d.room.Views().Count();
    d.room.SelectRow(2, InPassing());
    EXPECT_EQ(d.room.Views().Count(), views);
    EXPECT_EQ(d.state.HistFileIndex[1], 2);
}

TEST(Selection, SheetCaptionsCountPages) {
    NavDesk d;
    const MainControls& c = d.controls;
    for (QAction* sheet : {c.Printc4Button, c.PrintCButton, c.PrintCMButton, c.PrintCSButton})
        sheet->setProperty("baseCaption", "Sheet");
    d.FillWithPictures(24);
    EXPECT_EQ(c.Printc4Button->text(), "Sheet  (6 pages)");
    EXPECT_EQ(c.PrintCButton->text(), "Sheet  (2 pages)");
    EXPECT_EQ(c.PrintCMButton->text(), "Sheet  (1 pages)");
    EXPECT_EQ(c.PrintCSButton->text(), "Sheet  (1 pages)");
}

struct FindDesk : NavDesk {
    FindDesk() {
        for (const char* name : {"m31_a.jpg", "m33.jpg", "moon.jpg", "m31_b.jpg"})
            folder.Write(name, "x");
        notes.note = "Clear night"; // of every picture
        Enter();
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        controls.FindButton->trigger();
    }
    void Type(const char* text) { QTest::keyClicks(controls.FindLine, QString::fromLatin1(text)); }
    void Key(Qt::Key key) { QTest::keyClick(controls.FindLine, key); }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (int row = 0; row < controls.FileListBox->Count(); ++row)
            names.push_back(controls.FileListBox->Text(row));
        return names;
    }
    std::string Current() const { return Row() < 0 ? "none" : controls.FileListBox->Text(Row()); }
};

TEST(Find, LettersNarrowTheListAndEscGivesItBack) {
    FindDesk d;
    EXPECT_FALSE(d.controls.FindLine->isHidden());
    d.calls.clear();
    d.Type("M3");
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"m31_a.jpg", "m31_b.jpg", "m33.jpg"}));
    EXPECT_EQ(d.Current(), "m31_a.jpg");
    EXPECT_EQ(d.state.TextNumOf, "1 of 3");
    d.Type("3");
    EXPECT_EQ(d.Current(), "none");
    const auto& calls = d.calls;
    EXPECT_EQ(std::find(calls.begin(), calls.end(), "DisplayPicture"), calls.end());
    d.Key(Qt::Key_Escape);
    EXPECT_TRUE(d.controls.FindLine->isHidden());
    EXPECT_EQ(d.Names().size(), 4U);
    EXPECT_EQ(d.Current(), "m31_a.jpg");
    EXPECT_EQ(d.state.FileIndex, 0);
}

TEST(Find, ReturnStaysOnTheFileFound) {
    FindDesk d;
    d.Type("m3");
    d.Key(Qt::Key_Down);
    EXPECT_EQ(d.state.FileNameOnly, "m31_b.jpg");
    d.Key(Qt::Key_Down);
    d.Key(Qt::Key_Return);
    EXPECT_EQ(d.Current(), "m33.jpg");
    EXPECT_EQ(d.state.FileIndex, 2);
    EXPECT_EQ(d.state.TextNumOf, "3 of 4");
    d.controls.FindButton->trigger();
    d.Type("oo");
    d.Key(Qt::Key_Return);
    EXPECT_EQ(d.state.FileNameOnly, "moon.jpg");
    d.room.NextButton_Click(); // from its row in the whole list
    EXPECT_EQ(d.state.FileNameOnly, "m31_a.jpg");
}

TEST(Find, NotesAreFoundAndNothingFoundIsSaid) {
    FindDesk d;
    d.Type("clear NIGHT");
    EXPECT_EQ(d.Names().size(), 4U);
    d.Type("x");
    EXPECT_EQ(d.Names(), (std::vector<std::string>{}));
    EXPECT_EQ(d.calls.back(), "message No name or note has 'clear NIGHTx'");
    d.Key(Qt::Key_Return); // nothing to stay on
    EXPECT_FALSE(d.controls.FindLine->isHidden());
    TestFolder other;
    other.Write("a.jpg", "x");
    d.controls.FolderTreeview1->SetSelectedPath(other.Path()); // another folder is shown whole
    EXPECT_TRUE(d.controls.FindLine->isHidden());
    EXPECT_EQ(d.Current(), "a.jpg");
}

JudgedFrame WithHfr(double hfr) {
    JudgedFrame frame;
    frame.isMeasured = true;
    frame.measures.hfr = hfr;
    return frame;
}

TEST(Find, TermsOfMeasuresAreFoundAsTheyComeIn) {
    FindDesk d;
    d.night.frames[d.folder.Path() + "/m33.jpg"] = WithHfr(3.5);
    d.night.said = "1 of 4 measured";
    d.Type("hfr>3");
    EXPECT_FALSE(d.night.wanting.empty());
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"m33.jpg"}));
    EXPECT_EQ(d.calls.back(), "message Found so far - 1 of 4 measured");
    d.night.frames[d.folder.Path() + "/moon.jpg"] = WithHfr(4);
    d.night.said.clear();
    d.night.Tell();
    EXPECT_TRUE(QTest::qWaitFor([&] { return d.Names().size() == 2; }, 5000));
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"m33.jpg", "moon.jpg"}));
    d.Key(Qt::Key_Escape);
    EXPECT_TRUE(d.night.wanting.empty());
    EXPECT_EQ(d.Names().size(), 4U);
}

TEST(Sorting, ByMeasuresMovesTheRowsOnceAllAreMeasured) {
    FindDesk d;
    const std::vector<std::string> byName = d.Names();
    const int hfr = d.controls.SortCombo->findText(QStringLiteral("HFR"));
    d.night.said = "0 of 4 measured";
    d.controls.SortCombo->setCurrentIndex(hfr);
    emit d.controls.SortCombo->activated(hfr);
    d.night.frames[d.folder.Path() + "/moon.jpg"] = WithHfr(2);
    d.night.Tell();
    EXPECT_EQ(d.Names(), byName);
    d.night.frames[d.folder.Path() + "/m33.jpg"] = WithHfr(1.5);
    d.night.said.clear();
    d.night.Tell();
    EXPECT_EQ(d.Names(),
              (std::vector<std::string>{"m33.jpg", "moon.jpg", "m31_a.jpg", "m31_b.jpg"}));
    d.controls.SortCombo->setCurrentIndex(0);
    emit d.controls.SortCombo->activated(0);
    EXPECT_EQ(d.Names(), byName);
    EXPECT_TRUE(d.night.wanting.empty());
}

TEST(Folders, TheTreeRecordsEntersAndSelectsTheFirstRow) {
    NavDesk d;
    d.FillWithPictures(2);
    EXPECT_EQ(d.state.HistCur, 1);
    EXPECT_EQ(d.state.HistFolderPath[1], d.folder.Path());
    d.controls.FolderTreeview1->SetSelectedPath(d.folder.Path() + "/gone");
    EXPECT_EQ(d.controls.FileListBox->Path(), d.folder.Path()); // the list keeps its folder
    EXPECT_EQ(d.state.HistCur, 1);
    EXPECT_EQ(d.calls.back(), "status Nothing to display in current folder.");
    TestFolder empty;
    d.calls.clear();
    d.controls.FolderTreeview1->SetSelectedPath(empty.Path() + "/");
    EXPECT_EQ(d.calls, (Calls{"status Nothing to display in current folder.", "list off"}));
    EXPECT_EQ(d.state.HistFolderPath[2], empty.Path());
    d.room.FolderBackButton_Click();
    EXPECT_EQ(d.controls.FileListBox->Path(), d.folder.Path());
    EXPECT_EQ(d.state.HistCur, 1);
    EXPECT_EQ(d.Row(), 0);
    d.room.FolderUpButton_Click();
    EXPECT_EQ(d.state.HistCur, 2); // put in behind the present entry, what lay ahead is kept
    EXPECT_EQ(d.state.HistFolderPath[3], empty.Path());
}

TEST(Folders, AFullHistoryStaysInsideItsArrays) {
    SelectionState s;
    s.HistCur = 5;
    s.HistHigh = kHistoryLimit;
    s.HistFolderPath[6] = "/six";
    EXPECT_TRUE(RecordFolder(s, "/new"));
    EXPECT_EQ(s.HistHigh, kHistoryLimit);
    EXPECT_EQ(s.HistFolderPath[6], "/new");
    EXPECT_EQ(s.HistFolderPath[7], "/six");
    s.HistCur = kHistoryLimit - 2;
    EXPECT_TRUE(RecordFolder(s, "/last"));
    for (int i = 0; i < 5; ++i) EXPECT_FALSE(RecordFolder(s, "/beyond"));
    NavDesk d;
    d.FillWithPictures(1);
    d.state.HistHigh = 1;
    d.state.HistCur = kHistoryLimit + 1;
    const KeptNote kept(d.context);
    EXPECT_EQ(d.state.BatchRow, 0);
    d.controls.FolderTreeview1->SetSelectedPath(d.folder.Path());
    EXPECT_EQ(d.controls.FolderBackButton->toolTip(), ToToolTip(d.folder.Path()));
    d.room.FolderBackButton_Click(); // back to the last entry there is
    EXPECT_EQ(d.state.HistCur, 1);
    EXPECT_EQ(d.controls.FileListBox->Path(), d.folder.Path());
}

TEST(Folders, TheTreeGoesBackFromACopyFolderThatHasGone) {
    NavDesk d;
    d.FillWithPictures(1);
    d.room.GotoCopyFolderButton_Click();
    EXPECT_EQ(d.calls.back(), "message 'Copy to' folder not set, cannot display files");
    d.state.CopyImageFolder = d.folder.Path() + "/gone";
    d.room.GotoCopyFolderButton_Click();
    EXPECT_EQ(d.calls.back(),
              "message 'Copy to' folder '" + d.folder.Path() + "/gone' cannot be displayed");
    EXPECT_EQ(d.controls.FolderTreeview1->SelectedPath(), d.folder.Path());
    const auto hint = [&] { return d.controls.Picture1->accessibleDescription(); };
    EXPECT_EQ(hint(), "Choose a picture from the list.");
    d.controls.FolderTreeview1->SetSelectedPath(d.folder.Path() + "/gone");
    EXPECT_TRUE(hint().endsWith("does not exist. Choose another in the tree."));
    TestFolder copies;
    d.state.CopyImageFolder = copies.Path() + "/";
    d.room.GotoCopyFolderButton_Click();
    EXPECT_EQ(d.calls.back(), "message Viewing set to 'Copy to' folder");
}

TEST(Folders, AFileFromOutsideIsShownInItsFolder) {
    NavDesk d;
    TestFolder other;
    other.Write("a.jpg", "x");
    other.Write("b.jpg", "x");
    d.room.OpenFolder(other.Path(), "b.jpg");
    EXPECT_EQ(d.Row(), 1);
    EXPECT_EQ(std::count(d.calls.begin(), d.calls.end(), "DisplayPicture"), 1); // loaded once
    d.room.OpenFolder(other.Path(), "none.jpg");
    EXPECT_EQ(d.calls.back(),
              "message '" + other.Path() + "/none.jpg' is not among the files listed");
    other.Write("new.jpg", "x");
    d.room.OpenFolder(other.Path(), "new.jpg"); // made since the folder was read
    EXPECT_EQ(d.Row(), 2);
    EXPECT_EQ(d.controls.FileListBox->SelectedRows(), (std::vector<int>{2}));
    d.room.OpenFolder(other.Path() + "/gone", "x.jpg");
    EXPECT_EQ(d.calls.back(), "status Cannot set path to " + other.Path() + "/gone");
    EXPECT_EQ(d.Row(), 2);
}

} // namespace
} // namespace tarn::testing
