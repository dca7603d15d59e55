#include "FaultCommands.h"

#include <QComboBox>

namespace tarn::testing {

namespace {

using World = FaultWorld;
constexpr std::initializer_list<Qt::Key> kKeys{Qt::Key_N, Qt::Key_Y, Qt::Key_N}; // of a show

void Paste(World& w, QAction* how) {
    w.c.SelectAllButton->trigger();
    how->trigger();
    w.house.navigation.OpenFolder(w.target.Path(), {});
    w.c.PasteButton->trigger();
}
void Drop(World& w, bool copy) {
    w.dialogs.answers = {"Keep both"};
    const auto dropped =
        w.house.fileops.PutFiles({{w.At("a.jpg"), w.At("b.jpg")}, w.target.Path(), copy});
    w.house.shell.Tell(dropped);
}
void Overwrite(World& w, QAction* entry) {
    w.Answer({w.target.Path(), "Overwrite"}, entry);
}
void LayPage(World& w, const char* how) {
    w.c.CreateAppendHtmlFile->trigger();
    w.Press("frmHtmlLayout", how, {w.At("page.html"), "OK"});
    w.Press("frmHtmlLayout", "CommandOk");
    w.Press("frmHtmlLayout", "HtmlAddAllButton");
    w.Press("frmHtmlLayout", "QuitButton");
}
void Gallery(World& w, const char* how) {
    w.Answer({w.At("index.html"), "OK"}, w.c.HtmlThumbButton);
    w.Press("frmHtmlThumb", "GenThumbButton");
    w.Press("frmHtmlThumb", how);
    w.Press("frmHtmlThumb", "QuitButton");
}
void NewDate(World& w) {
    w.c.FixPictureDateButton->trigger();
    if (auto* box = w.In<QLineEdit>("frmDate", "SetDateText"))
        box->setText(QStringLiteral("2009:09:09 09:09:09"));
    w.Press("frmDate", "SetButton");
}
void RenameAll(World& w) {
    w.c.RenamePicturesButton->trigger();
    if (auto* all = w.In<QCheckBox>("frmRenameFiles", "CheckAll")) all->setChecked(true);
    for (const auto& [box, text] : {std::pair("RenameInputFilter", "a"), {"RenameFilter", "z"}})
        if (auto* edit = w.In<QLineEdit>("frmRenameFiles", box))
            edit->setText(QString::fromLatin1(text));
    w.Press("frmRenameFiles", "RenameCommand");
}
void DateTakenBack(World& w) {
    w.s.AutoSetFileDates = true;
    w.GoTo("b.jpg");
    w.Press("frmMain", "DateStripUndoButton");
}
void SaveSum(World& w) {
    w.c.FCheck->click();
    w.house.navigation.OpenFolder(w.frames.Path(), {});
    w.c.SumButton->trigger();
    auto* save = w.In<QPushButton>("frmSum", "SumSaveButton");
    auto* cancel = w.In<QPushButton>("frmSum", "SumCancelButton");
    if (!save || !cancel) return;
    constexpr int kLongest = 20000; // milliseconds
    const auto isDone = [cancel] { return !cancel->isVisible(); };
    (void)QTest::qWaitFor(isDone, kLongest);
    w.Press("frmSum", "SumSaveButton", {w.target.Path() + "/sum.fits"});
    (void)QTest::qWaitFor(isDone, kLongest);
}
void TakeBest(World& w, bool asClip) {
    w.s.VideoInWindow = true;
    w.s.BestFrames = 60;
    w.s.BestAsClip = asClip;
    w.house.navigation.OpenFolder(w.frames.Path(), {});
    w.GoTo("m.ser");
    w.c.BestFramesButton->trigger();
    const auto* take = w.In<QPushButton>("frmBestFrames", "BestTakeButton");
    const auto* rates = w.In<QWidget>("frmBestFrames", "BestProgress");
    (void)QTest::qWaitFor([&] { return !take || take->isEnabled() || !rates->isVisible(); });
    w.Press("frmBestFrames", "BestTakeButton", {w.target.Path()});
}
void Exit(World& w) {
    w.Type(kTyped);
    w.c.Exit->trigger();
}

const std::vector<std::pair<const char*, FaultAct>> kCommands{
    {"start", [](World& w) { w.house.Start(w.At("a.jpg"), {}); }},
    {"refresh", [](World& w) { w.house.navigation.RefreshDirButton_Click(); }},
    {"step", [](World& w) { w.Key(Qt::Key_N), w.Key(Qt::Key_N), w.Key(Qt::Key_P); }},
    {"back", [](World& w) { w.GoTo("b.jpg"), w.c.FileBackButton->click(); }},
    {"folder", [](World& w) { w.house.navigation.OpenFolder(w.target.Path(), {}); }},
    {"note filter",
     [](World& w) {
         w.c.NoteFilterCombo->setCurrentIndex(1), emit w.c.NoteFilterCombo->activated(1);
     }},
    {"full size", [](World& w) { w.c.OneToOneButton->click(), w.c.CloseOneToOneButton->click(); }},
    {"zoom", [](World& w) { w.Key(Qt::Key_Plus), w.Key(Qt::Key_N), w.Key(Qt::Key_Minus); }},
    {"show", [](World& w) { w.RunShow(w.c.SlideButton, kKeys); }},
    {"show of four", [](World& w) { w.RunShow(w.c.Slides4Button, kKeys); }},
    {"images of a file",
     [](World& w) {
         w.c.FCheck->click(), w.GoTo("cube.fits");
         w.c.NextImageButton->trigger(), w.c.PrevImageButton->trigger();
     }},
    {"text file", [](World& w) { w.c.TCheck->click(), w.GoTo("t.txt"); }},
    {"mark by key",
     [](World& w) {
         w.Key(Qt::Key_K);
         EXPECT_TRUE(w.house.marks.Flush());
         QCoreApplication::processEvents();
     }},
    {"night and sharpest of bursts",
     [](World& w) {
         w.Key(Qt::Key_G), w.c.BurstButton->trigger(), w.c.UndoButton->trigger();
         EXPECT_TRUE(w.house.marks.Flush());
         QCoreApplication::processEvents();
     }},
    {"night report",
     [](World& w) {
         w.c.NightReportButton->trigger();
         w.Press("frmNightReport", "ReportPageButton", {w.At("report.html")});
     }},
    {"blink and movers", [](World& w) { w.Key(Qt::Key_Q), w.c.MoversButton->trigger(); }},
    {"sum saved", SaveSum},
    {"sky panel", [](World& w) { w.Key(Qt::Key_W), w.Key(Qt::Key_N); }},
    {"circles and corners", [](World& w) { w.Key(Qt::Key_0), w.Key(Qt::Key_X), w.Key(Qt::Key_N); }},
    {"best frames as files", [](World& w) { TakeBest(w, false); }},
    {"best frames as a clip", [](World& w) { TakeBest(w, true); }},
    {"rejected to wastebasket",
     [](World& w) { w.Key(Qt::Key_J), w.Answer({"Yes"}, w.c.RejectedDeleteButton); }},
    {"rejected into sub folder",
     [](World& w) { w.Key(Qt::Key_J), w.Answer({"rejected"}, w.c.RejectedFolderButton); }},
    {"kept to copy folder",
     [](World& w) {
         w.Key(Qt::Key_K), w.Answer({"Yes", "Keep both"}, w.c.KeptCopyButton);
     }},
    {"delete", [](World& w) { w.Key(Qt::Key_Delete); }},
    {"delete only", [](World& w) { w.c.DeleteOnlyButton->trigger(); }},
    {"delete and undo", [](World& w) { w.Key(Qt::Key_Delete), w.c.UndoButton->trigger(); }},
    {"delete, undo and redo",
     [](World& w) { w.Key(Qt::Key_Delete), w.c.UndoButton->trigger(), w.c.RedoButton->trigger(); }},
    {"history",
     [](World& w) {
         w.Key(Qt::Key_Delete), w.c.HistoryButton->trigger();
         w.Press("frmHistory", "HistoryUndoButton");
     }},
    {"delete fits", [](World& w) { w.c.DeleteAllFitsButton->trigger(); }},
    {"mark",
     [](World& w) {
         w.house.marks.SetMarks({w.At("a.jpg"), w.At("b.jpg")}, Decide(Decision::Reject));
         EXPECT_TRUE(w.house.marks.Flush());
         QCoreApplication::processEvents();
     }},
    {"rename", [](World& w) { w.Rename("b.jpg"); }},
    {"rename and undo", [](World& w) { w.Rename("z.jpg"), w.c.UndoButton->trigger(); }},
    {"duplicate", [](World& w) { w.Duplicate("b.jpg"); }},
    {"batch rename", RenameAll},
    {"copy and paste", [](World& w) { Paste(w, w.c.CopyButton); }},
    {"cut and paste", [](World& w) { Paste(w, w.c.CutButton); }},
    {"drop", [](World& w) { Drop(w, false); }},
    {"drop as copies", [](World& w) { Drop(w, true); }},
    {"copy to", [](World& w) { w.c.CopyImageButton3->click(); }},
    {"move to", [](World& w) { w.c.MoveToButton->click(); }},
    {"move and undo", [](World& w) { w.c.MoveToButton->click(), w.c.UndoButton->trigger(); }},
    {"move to other disk",
     [](World& w) { w.s.CopyImageFolder = w.other.Path(), w.c.MoveToButton->click(); }},
    {"convert", [](World& w) { w.c.ConvertButton->trigger(); }},
    {"convert into folder", [](World& w) { w.c.CJMButton->click(); }},
    {"create folder", [](World& w) { w.Answer({"new"}, w.c.CreateFolderButton); }},
    {"export", [](World& w) { Overwrite(w, w.c.ExportFilesButton[1]); }},
    {"import", [](World& w) { Overwrite(w, w.c.ImportButton); }},
    {"import notes", [](World& w) { Overwrite(w, w.c.ImportNotesFilesButton); }},
    {"set file date", [](World& w) { w.Key(Qt::Key_F6); }},
    {"file dates", [](World& w) { w.Answer({"OK"}, w.c.SyncDatesButton); }},
    {"new date", NewDate},
    {"date taken back", DateTakenBack},
    {"clock set right",
     [](World& w) {
         w.c.SetClockButton->trigger();
         if (auto* box = w.In<QLineEdit>("frmClock", "ClockTrueText"))
             box->setText(QStringLiteral("2009:09:09 09:09:09"));
         w.Press("frmClock", "ClockSetButton");
     }},
    {"save note", [](World& w) { w.Type(kTyped), w.c.SaveNotesButton->click(); }},
    {"save note, step", [](World& w) { w.Type(kTyped), w.c.SaveNotes2Button->click(); }},
    {"save changed note",
     [](World& w) { w.ChangeNote(), w.Type(kTyped), w.c.SaveNotesButton->click(); }},
    {"unsaved note", [](World& w) { w.Type(kTyped), w.Key(Qt::Key_N); }},
    {"clear, restore note",
     [](World& w) { w.c.ClearNotesButton->click(), w.c.RestoreNotesButton->click(); }},
    {"delete note", [](World& w) { w.c.DeleteNotesButton->click(); }},
    {"note manager",
     [](World& w) {
         w.c.DisplayNotesFolderButton->trigger(), w.Press("frmNotesFolder", "UpdateButton");
     }},
    {"composer",
     [](World& w) {
         w.c.CommandNotesNew->click(), w.Press("FrmNewNotes", "CommandSet"),
             w.Press("FrmNewNotes", "CommandSave");
     }},
    {"kit list",
     [](World& w) {
         w.c.KitsButton->trigger();
         w.Press("frmKits", "KitsPictureButton"), w.Press("frmKits", "KitsKeepButton");
     }},
    {"notes filled in",
     [](World& w) {
         w.c.FillNotesButton->trigger(), w.Press("frmFillNotes", "FillNotesWriteButton");
     }},
    {"thumbnails", [](World& w) { w.c.GenerateThumbButton->trigger(); }},
    {"one thumbnail", [](World& w) { w.c.GenerateThumbCButton->trigger(); }},
    {"delete thumbnails",
     [](World& w) {
         w.c.GenerateThumbButton->trigger(), w.Answer({"OK"}, w.c.ThumbFolderDeleteButton);
     }},
    {"sheet", [](World& w) { w.Answer({w.paper}, w.c.Printc4Button); }},
    {"data sheet", [](World& w) { w.Answer({w.paper}, w.c.PrintButton); }},
    {"page", [](World& w) { LayPage(w, "CreateButton_1"); }},
    {"page, appended",
     [](World& w) { LayPage(w, "CreateButton_1"), LayPage(w, "CreateButton_2"); }},
    {"delete pages", [](World& w) { w.Answer({"OK"}, w.c.HtmlDeleteButton); }},
    {"gallery", [](World& w) { Gallery(w, "HtmlThumbnailButton"); }},
    {"gallery anew",
     [](World& w) { Gallery(w, "HtmlThumbnailButton"), Gallery(w, "HtmlFramesThumbnailButton"); }},
    {"save settings", [](World& w) { w.c.SaveSettingsButton->trigger(); }},
    {"remove settings", [](World& w) { w.c.RemoveRegButton->trigger(); }},
    {"exit", Exit},
};

} // namespace

const std::vector<std::pair<const char*, FaultAct>>& FaultCommands() {
    return kCommands;
}

} // namespace tarn::testing
