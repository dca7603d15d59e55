// The composer and the exposure calculator.
#include "NotesDesk.h"

#include <QCheckBox>
#include <QComboBox>

#include <filesystem>

namespace tarn::testing {
namespace {

constexpr char kWindow[] = "FrmNewNotes";
constexpr char kCalculator[] = "frmExpCalc";

struct ComposerDesk : NotesDesk {
    explicit ComposerDesk(const std::string& formats = "") {
        notes.Write("Note_Formats.txt", formats);
    }
    void Open(const std::string& note = "") {
        if (!note.empty()) notes.Write("a.enf", note);
        Start();
        c.CommandNotesNew->click();
    }
    static QComboBox& Combo(const char* name) { return *Control<QComboBox>(kWindow, name); }
    static std::string Text(const char* combo) { return Combo(combo).currentText().toStdString(); }
    static QCheckBox& Check(const char* name) { return *Control<QCheckBox>(kWindow, name); }
    static QPlainTextEdit& Lines() { return *Control<QPlainTextEdit>(kWindow, "TextLine1"); }
    static void Do(const char* button) { ClickOn(kWindow, button); }
};

TEST(Composer, SetReplacesTheNoteAsOneEdit) {
    ComposerDesk d;
    d.Open("M31\r\nmore");
    EXPECT_EQ(d.Lines().toPlainText(), QStringLiteral("M31\nmore"));
    d.Combo("ComboFilter").setEditText(QStringLiteral("UV"));
    d.Combo("ComboDate").setEditText(QStringLiteral("today"));
    d.Do("CommandSet");
    EXPECT_EQ(d.s.NoteText,
              "M31\r\nmore\r\nTelescope: Meade 12\" LX200R\r\nGuide Scope: Mini Borg 50\r\n"
              "Lens: AP CCDT67\r\nMount: AP 900 GTO\r\nCamera: Canon 60Da)\r\nFilter: UV\r\n"
              "Exposure: \r\nProcessing: ImagesPlus\r\nLocation: RQT\r\nDate: today");
    EXPECT_EQ(d.Bytes("a.enf"), "M31\r\nmore"); // not saved
    d.c.NotesBox->undo();
    EXPECT_EQ(d.s.NoteText, "M31\r\nmore");
    d.c.NotesBox->redo();
    d.Do("CommandSave");
    EXPECT_EQ(d.Bytes("a.enf"), d.s.NoteText);
    d.Do("CommandNext");
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_FALSE(Control<QPushButton>(kWindow, "CommandSave")->isEnabled());
    d.Combo("ComboDate").setEditText(QStringLiteral("tonight"));
    d.Do("CommandSet"); // the same choices for the next picture
    EXPECT_TRUE(Control<QPushButton>(kWindow, "CommandSave")->isEnabled());
    d.Do("CommandRestore");
    EXPECT_EQ(d.s.NoteText, "");
    EXPECT_EQ(d.Message(), "Unsaved note of 'b.jpg' is in the restore buffer");
    d.Do("CommandPrev");
    EXPECT_EQ(d.Current(), "a.jpg");
    d.Do("CommandEdit");
    EXPECT_EQ(d.calls.back(), "edit " + d.At("Note_Formats.txt"));
}

TEST(Composer, NothingTickedGivesAnEmptyNote) {
    ComposerDesk d;
    d.Open("M31");
    d.Do("CommandToggle");
    EXPECT_EQ(Control<QPushButton>(kWindow, "CommandToggle")->text(), QStringLiteral("On"));
    EXPECT_FALSE(d.Check("CheckDate").isChecked());
    EXPECT_TRUE(d.Check("CheckFirst").isChecked());
    d.Do("CommandSet");
    EXPECT_EQ(d.s.NoteText, "M31");
    d.Check("CheckFirst").setChecked(false);
    d.Do("CommandSet");
    EXPECT_EQ(d.s.NoteText, "");
    EXPECT_FALSE(d.c.SaveNotesButton->isEnabled());
    d.Check("CheckCamera").setChecked(true);
    d.Do("CommandSet");
    EXPECT_EQ(d.s.NoteText, "\r\nCamera: Canon 60Da)");
    d.Do("CommandToggle");
    EXPECT_EQ(Control<QPushButton>(kWindow, "CommandToggle")->text(), QStringLiteral("Of f"));
    EXPECT_TRUE(d.Check("CheckDate").isChecked());
}

TEST(Composer, LinesAreGotAndReadBack) {
    ComposerDesk d("Guide Scope:kept\nMount:of the file\n");
    d.Open("M31\r\nMount: mine\r\nGuide Scope: other\r\nLocation: here\r\nDate: then");
    d.Lines().setPlainText({});
    auto& digit = *Control<QLineEdit>(kWindow, "TextFirstLines");
    QTest::keyClick(&digit, Qt::Key_Backspace);
    EXPECT_EQ(digit.text(), QString());
    QTest::keyClick(&digit, Qt::Key_2);
    d.Do("CommandSetLine1");
    EXPECT_EQ(d.Lines().toPlainText(), QStringLiteral("M31\nMount: mine"));
    QTest::keyClick(&digit, Qt::Key_3); // behind the 2: cut
    EXPECT_EQ(digit.text(), QStringLiteral("2"));
    QTest::keyClick(&digit, Qt::Key_X);
    EXPECT_EQ(digit.text(), QStringLiteral("1"));
    QKeyEvent tab(QEvent::KeyRelease, Qt::Key_Tab, {}); // pressed in the box before
    digit.setText(QStringLiteral("3"));
    QApplication::sendEvent(&digit, &tab);
    EXPECT_EQ(digit.text(), QStringLiteral("3"));
    digit.clear();
    QFocusEvent leaves(QEvent::FocusOut);
    QApplication::sendEvent(&digit, &leaves);
    EXPECT_EQ(digit.text(), QStringLiteral("1"));

    d.Do("CommandSetLine");
    d.Check("CheckLens").setChecked(false);
    d.Do("CommandAdd");
    EXPECT_EQ(d.Text("ComboMount"), "mine");
    EXPECT_EQ(d.Combo("ComboMount").itemText(1), QStringLiteral("of the file"));
    EXPECT_EQ(d.Text("ComboGuideScope"), "kept");
    EXPECT_EQ(d.Text("ComboDate"), "then");
    EXPECT_EQ(d.Text("ComboLoc"), "RQT");
    d.Check("CheckLens").setChecked(true);
    d.Do("CommandAdd");
    EXPECT_EQ(d.Text("ComboLoc"), "here");
    d.Do("CommandClear");
    d.Check("CheckFirst").setChecked(false);
    d.Do("CommandReload"); // takes first lines only where they are ticked
    EXPECT_TRUE(d.Lines().toPlainText().isEmpty());
    d.Check("CheckFirst").setChecked(true);
    d.Do("CommandReload");
    EXPECT_EQ(d.Lines().toPlainText().left(4), QStringLiteral("M31\n"));
}

TEST(Composer, ReloadKeepsTheFiltersAndTheirText) {
    ComposerDesk d("Filter:a\nFilter:b\n");
    d.s.NewNotesFilter = -1;
    d.settings->Write("NewNotesFilter", "-1"); // none chosen at the last end
    d.Open();
    EXPECT_EQ(d.Text("ComboFilter"), "");
    d.Combo("ComboFilter").setEditText(QStringLiteral("typed"));
    d.Do("CommandReload");
    d.Do("CommandReload");
    EXPECT_EQ(d.Combo("ComboFilter").count(), 6);
    EXPECT_EQ(d.Text("ComboFilter"), "typed");
    EXPECT_EQ(d.Combo("ComboDate").count(), 6);
    EXPECT_EQ(Control<QLabel>(kWindow, "Label1")->text().toStdString(),
              "Settings loaded from '" + d.At("Note_Formats.txt") + "'");
}

TEST(Composer, WithoutAFileNothingIsSelected) {
    ComposerDesk d;
    d.Start();
    std::filesystem::remove_all(d.notes.Path());
    d.c.CommandNotesNew->click();
    EXPECT_EQ(Control<QLabel>(kWindow, "Label1")->text().toStdString(),
              "Could not find file '" + d.At("Note_Formats.txt") + "', using defaults");
    EXPECT_EQ(Control<QLabel>(kWindow, "Label1")->toolTip(), QStringLiteral("Defaults"));
    EXPECT_EQ(d.Text("ComboTelescope"), "");
    EXPECT_EQ(d.Combo("ComboTelescope").count(), 5);
    EXPECT_EQ(d.Combo("ComboDate").count(), 1);
}

TEST(Composer, ChoicesAndPlacesOutliveTheRun) {
    ComposerDesk d("Mount:1\nMount:2\nMount:3\nCamera:1\nCamera:2\n");
    d.settings->Write("NewNotesMount", "2");
    d.settings->Write("NewNotesCamera", "7"); // out of range
    d.settings->Write("topNewNotes_position", "1500");
    d.Open();
    EXPECT_EQ(d.Text("ComboMount"), "3");
    EXPECT_EQ(d.Text("ComboCamera"), "1");
    EXPECT_EQ(Window(kWindow)->y(), 100);
    d.Do("CommandReload");
    EXPECT_EQ(d.Text("ComboMount"), "1"); // only the first load asks the settings
    d.Combo("ComboMount").setCurrentIndex(1);
    std::filesystem::remove_all(d.notes.Path());
    d.Do("CommandReload"); // finds no file: nothing is selected, the choice is kept
    EXPECT_EQ(d.Text("ComboMount"), "");
    Window(kWindow)->move(40, 60);
    QTest::keyClick(Window(kWindow), Qt::Key_Escape);
    EXPECT_FALSE(Window(kWindow)->isVisible());
    d.c.Exit->trigger();
    EXPECT_EQ(d.settings->Read("NewNotesMount", ""), "1");
    EXPECT_EQ(d.settings->Read("leftNewNotes_position", ""), "600");
    EXPECT_EQ(d.settings->Read("topNewNotes_position", ""), "900");
    EXPECT_FALSE(d.settings->Contains("leftNotes_position")); // never opened
}

TEST(Composer, UnopenedItWritesTheChoicesBackUnchanged) {
    ComposerDesk d;
    d.settings->Write("NewNotesCamera", "7");
    d.Start();
    d.c.Exit->trigger();
    EXPECT_EQ(d.settings->Read("NewNotesCamera", ""), "7");
}

TEST(Composer, TheCalculatorFillsTheExposure) {
    ComposerDesk d;
    d.Open();
    d.Do("CommandCalcExposure");
    ClickOn(kCalculator, "CommandFill"); // nothing is calculated yet
    EXPECT_EQ(d.Text("ComboExp"), "");
    Control<QLineEdit>(kCalculator, "TextSec1")->setText(QStringLiteral("60"));
    auto& frames = *Control<QLineEdit>(kCalculator, "TextExp1");
    frames.setText(QStringLiteral("30"));
    QTest::keyClick(&frames, Qt::Key_Return);
    EXPECT_EQ(Control<QLabel>(kCalculator, "LabelCalc1")->text(),
              QStringLiteral("1,800 seconds, h:m:s (0:30:00)"));
    ClickOn(kCalculator, "CommandFill");
    EXPECT_EQ(d.Text("ComboExp"), "0h 30m 0s  (30 at 60sec.)");
    Control<QLineEdit>(kCalculator, "TextExp4")->setText(QStringLiteral("40000"));
    ClickOn(kCalculator, "CommandCalc");
    EXPECT_EQ(Control<QLabel>(kCalculator, "LabelTotal")->text(), QStringLiteral("out of range"));
    d.Combo("ComboExp").setEditText(QStringLiteral("kept"));
    ClickOn(kCalculator, "CommandFill");
    EXPECT_EQ(d.Text("ComboExp"), "kept");
    std::vector<QLineEdit*> boxes;
    for (const std::string& name : {std::string("TextSec"), std::string("TextExp")})
        for (const char number : {'1', '2', '3', '4'})
            boxes.push_back(Control<QLineEdit>(kCalculator, (name + number).c_str()));
    for (QLineEdit* box : boxes) box->setText(QStringLiteral("7"));
    ClickOn(kCalculator, "CommandClear");
    for (const QLineEdit* box : boxes) EXPECT_TRUE(box->text().isEmpty());
    EXPECT_EQ(Control<QLabel>(kCalculator, "LabelTotal")->text(), QStringLiteral("out of range"));
    d.Do("CommandCancel");
    EXPECT_FALSE(Window(kCalculator)->isVisible());
    EXPECT_FALSE(Window(kWindow)->isVisible());
}

} // namespace
} // namespace tarn::testing
