// The window that renames many files, on real files with their notes: what it shows, what it does,
// and how it stops.
#include "FilesDesk.h"
#include "clips/ClipFiles.h"

#include "desk/controls/Captions.h"
#include "widgets/FolderTreeview.h"

#include <QGroupBox>
#include <QShortcut>

namespace tarn::testing {
namespace {

struct RenameDesk : FilesDesk {
    using FilesDesk::FilesDesk;

    void Open() { c.RenamePicturesButton->trigger(); }
    template <typename Widget> Widget& Get(const char* name) const {
        return *In<Widget>("frmRenameFiles", name);
    }
    void Press(const char* name) const { Get<QPushButton>(name).click(); }
    void Fill(const char* from, const char* to) const {
        Get<QCheckBox>("CheckAll").setChecked(true);
        Get<QLineEdit>("RenameInputFilter").setText(QString::fromUtf8(from));
        Get<QLineEdit>("RenameFilter").setText(QString::fromUtf8(to));
    }
    void RenameAll(const char* from, const char* to) const {
        Fill(from, to);
        Press("RenameCommand");
    }
    std::string List(const char* name) const {
        const auto* model = Get<QListView>(name).model();
        std::string text;
        for (int row = 0; row < model->rowCount(); ++row)
            text += model->index(row, 0).data().toString().toStdString() + " ";
        return text;
    }
    std::string Label(const char* name) const { return Get<QLabel>(name).text().toStdString(); }
    std::string Frame() const { return Get<QGroupBox>("RenameErrorFrame").title().toStdString(); }
};

TEST(RenameFiles, ShowsWhatItWouldDo) {
    RenameDesk d({"IMG_1.JPG", "IMG_IMG_2.JPG", "XIMG_.JPG"});
    d.folder.Write("IMG_3.xyz", "other");
    d.Start();
    d.Open();
    EXPECT_EQ(d.List("RenameFile"), "IMG_1.JPG IMG_IMG_2.JPG XIMG_.JPG ");
    EXPECT_EQ(d.Label("InCountLabel"), "0");
    d.Fill("IMG_", "Moon_");
    EXPECT_EQ(d.List("RenameInputList"), "IMG_1.JPG IMG_IMG_2.JPG ");
    EXPECT_EQ(d.List("RenameOutputList"), "Moon_1.JPG Moon_IMG_2.JPG ");
    EXPECT_EQ(d.Label("InCountLabel"), "2");
    EXPECT_EQ(d.Frame(), "No Rename Errors");
    EXPECT_EQ(d.Label("RenameLabel"), "");
    EXPECT_EQ(d.Label("NotesRenameLabel"), "");
    d.Get<QCheckBox>("CheckShowAll").setChecked(true);
    EXPECT_EQ(d.List("RenameInputList"), "IMG_1.JPG IMG_3.xyz IMG_IMG_2.JPG ");
    SetFileTime(d.At("IMG_3.xyz"), 2004, 6, 22, 20, 15, 30);
    auto& inputs = d.Get<QListView>("RenameInputList");
    inputs.setCurrentIndex(inputs.model()->index(1, 0));
    EXPECT_EQ(d.Label("FileDateLabel"), "06/22/2004 8:15:30 PM");
    d.Get<QLineEdit>("RenameInputFilter").clear();
    EXPECT_EQ(d.List("RenameInputList"), "");
    EXPECT_EQ(d.Label("FileDateLabel"), "");
    d.Get<QCheckBox>("CheckAll").setChecked(false);
    auto& list = d.Get<FileListBox>("RenameFile");
    list.UnselectAll();
    list.Select(1);
    d.Press("CommandPastFrom");
    d.Press("CommandPasteTo");
    EXPECT_EQ(d.List("RenameInputList"), "IMG_3.xyz ");
    EXPECT_EQ(d.List("RenameOutputList"), "IMG_3.xyz ");
    list.onDoubleClick();
    EXPECT_EQ(d.calls.back(), "edit " + d.At("IMG_3.xyz"));
    d.desktop.failure = "2";
    list.onDoubleClick();
    EXPECT_EQ(d.dialogs.shown.back(), "File IMG_3.xyz|File not Opened, Error # 2");
}

TEST(RenameFiles, OfKeptFilesOnlyWithTheirSidecars) {
    RenameDesk d({"IMG_1.jpg", "IMG_2.jpg", "IMG_3.jpg"});
    std::filesystem::create_directory(d.At("sub"));
    d.Start();
    d.house.marks.SetMarks({d.At("IMG_2.jpg")}, Decide(Decision::Keep));
    d.Open();
    auto& keptOnly = d.Get<QCheckBox>("CheckKeptOnly");
    keptOnly.setChecked(true);
    EXPECT_EQ(d.List("RenameFile"), "IMG_2.jpg ");
    d.RenameAll("IMG_", "Moon_");
    EXPECT_EQ(d.Names(), "IMG_1.jpg IMG_3.jpg Moon_2.jpg Moon_2.jpg.xmp sub ");
    bool cancel = false;
    d.Get<FolderTreeview>("FolderTreeview1").onSelection(d.At("sub"), cancel);
    EXPECT_FALSE(keptOnly.isEnabled()); // its marks are not known
    EXPECT_FALSE(keptOnly.isChecked());
}

TEST(RenameFiles, AClipThatIsOpenIsClosedAndShownAgain) {
    RenameDesk d;
    d.folder.Write("sun.ser", NumberedSer(10));
    d.notes.Write("sun.enf", "of the clip");
    d.settings->Write("video_in_window", "True");
    d.Start();
    d.GoTo("sun.ser");
    ASSERT_TRUE(d.house.video.ClipIsOpen());
    d.Open();
    EXPECT_FALSE(d.house.video.ClipIsOpen());
    d.Get<QCheckBox>("CheckShowAll").setChecked(true);
    d.RenameAll("sun", "moon");
    d.Up("frmRenameFiles")->close();
    EXPECT_EQ(d.Current(), "moon.ser");
    EXPECT_TRUE(d.house.video.ClipIsOpen());
    EXPECT_EQ(NumberOf(d.c.Picture2->Picture()), 4);
    EXPECT_EQ(d.c.NotesBox->toPlainText(), "of the clip");
}

TEST(RenameFiles, TakesNotesAlongAndComesBack) {
    RenameDesk d({"IMG_1.jpg", "IMG_2.jpg", "IMG_3.jpg", "z.jpg"});
    d.folder.Write("IMG_2.cr2", "raw"); // not listed; it has the note of IMG_2.jpg, too
    d.notes.Write("img_1.ENF", "note 1");
    d.notes.Write("IMG_2.enf", "note 2");
    const Tree pictures = d.Pictures();
    const Tree notes = d.Notes();
    d.Start();
    d.GoTo("IMG_3.jpg");
    d.c.NotesBox->insertPlainText("written just now");
    d.Open();
    EXPECT_TRUE(d.Get<QCheckBox>("RenameNotesCheck").isChecked());
    d.RenameAll("IMG_", "Moon_");
    EXPECT_EQ(d.Names(), "IMG_2.cr2 Moon_1.jpg Moon_2.jpg Moon_3.jpg z.jpg ");
    EXPECT_EQ(d.Notes(), (Tree{{"IMG_2.enf", "note 2"},
                               {"Moon_1.enf", "note 1"},
                               {"Moon_2.enf", "note 2"},
                               {"Moon_3.enf", "written just now"}}));
    EXPECT_EQ(d.Label("RenameLabel"), "3 files renamed");
    EXPECT_EQ(d.Label("NotesRenameLabel"), "3 notes renamed");
    EXPECT_EQ(d.Frame(), "No Rename Errors");
    EXPECT_EQ(d.List("RenameFile"), "Moon_1.jpg Moon_2.jpg Moon_3.jpg z.jpg ");
    d.Press("CloseCommand");
    EXPECT_FALSE(d.Up("frmRenameFiles"));
    EXPECT_EQ(d.Current(), "Moon_3.jpg");
    EXPECT_EQ(d.c.NotesBox->toPlainText(), "written just now");
    EXPECT_EQ(CaptionOf(*d.c.UndoButton), "Undo Rename of 3 pictures");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), pictures);
    Tree after = notes;
    after["IMG_3.enf"] = "written just now";
    EXPECT_EQ(d.Notes(), after);
}

TEST(RenameFiles, NotesAreCopiedOrLeftAsAsked) {
    RenameDesk d({"a1.jpg", "a2.jpg"});
    d.notes.Write("a1.enf", "1");
    d.notes.Write("b2.enf", "another's");
    d.notes.Write("a2.enf", "2");
    d.Start();
    d.Open();
    d.Get<QCheckBox>("RenameNotesCheck").setChecked(false);
    d.Get<QCheckBox>("CopyNotesCheck").setChecked(true);
    d.RenameAll("a", "b");
    EXPECT_EQ(d.Names(), "b1.jpg b2.jpg ");
    EXPECT_EQ(d.Notes(),
              (Tree{{"a1.enf", "1"}, {"b1.enf", "1"}, {"a2.enf", "2"}, {"b2.enf", "another's"}}));
    EXPECT_EQ(d.Label("NotesRenameLabel"), "1 notes copied");
    EXPECT_EQ(d.List("RenameErrorList"), "a2.enf > b2.enf "); // told, and nothing overwritten
    EXPECT_EQ(d.Frame(), "1 notes not copied");
    d.Get<QCheckBox>("RenameNotesCheck").setChecked(true);
    d.RenameAll("b", "c"); // moved first: the copy finds nothing
    EXPECT_EQ(d.Label("NotesRenameLabel"), "0 notes copied");
    EXPECT_EQ(d.Notes().count("c1.enf") + d.Notes().count("b1.enf"), 1U);
    d.Get<QCheckBox>("RenameNotesCheck").setChecked(false);
    d.Get<QCheckBox>("CopyNotesCheck").setChecked(false);
    d.RenameAll("c", "d");
    EXPECT_EQ(d.Names(), "d1.jpg d2.jpg ");
    EXPECT_EQ(d.Label("NotesRenameLabel"), "");
    EXPECT_EQ(d.Notes().count("d1.enf"), 0U);
}

TEST(RenameFiles, ListsConflictsAndOverwritesNothing) {
    RenameDesk d({"IMG_1.jpg", "IMG_2.jpg", "moon_1.JPG"});
    d.notes.Write("IMG_1.enf", "stays with its picture");
    const Tree before = d.Pictures();
    d.Start();
    d.Open();
    d.RenameAll("IMG_", "Moon_");
    EXPECT_EQ(d.List("RenameErrorList"), "IMG_1.jpg > Moon_1.jpg ");
    EXPECT_EQ(d.Frame(), "1 files not renamed");
    EXPECT_EQ(d.Label("RenameLabel"), "1 files renamed");
    EXPECT_EQ(d.Label("NotesRenameLabel"), "0 notes renamed");
    EXPECT_EQ(d.Names(), "IMG_1.jpg Moon_2.jpg moon_1.JPG ");
    EXPECT_EQ(d.Pictures().at("moon_1.JPG"), before.at("moon_1.JPG"));
    EXPECT_EQ(d.Notes().count("IMG_1.enf"), 1U);
    EXPECT_EQ(d.Label("RenameMessage"), "IMG_1.jpg - a file of this name exists");
    d.RenameAll("IMG_", "x/");
    EXPECT_EQ(d.List("RenameErrorList"), "IMG_1.jpg > x/1.jpg ");
    d.Fill("IMG_", "x"); // another text: the results of the last run go
    EXPECT_EQ(d.Frame(), "No Rename Errors");
    EXPECT_EQ(d.List("RenameErrorList"), "");
    EXPECT_EQ(d.Label("RenameLabel"), "");
}

TEST(RenameFiles, MainWindowFollows) {
    RenameDesk d({"a.jpg", "b.jpg", "c.jpg"});
    const TestFolder other;
    other.Write("IMG_1.jpg", JpegBytes(TellTale(30, 20)));
    d.Start();
    d.GoTo("b.jpg");
    d.Open();
    d.RenameAll("a", "x");
    d.Press("CommandDir");
    EXPECT_GE(d.c.FileListBox->RowOf("x.jpg"), 0);
    auto& list = d.Get<FileListBox>("RenameFile");
    d.Get<QCheckBox>("CheckAll").setChecked(false);
    list.UnselectAll();
    list.Select(list.RowOf("c.jpg"));
    d.Press("CommandView");
    EXPECT_EQ(d.Current(), "c.jpg");
    d.Press("CloseCommand");
    EXPECT_EQ(d.Current(), "c.jpg");
    EXPECT_TRUE(d.c.FileListBox->hasFocus() || d.s.Kind == FileKind::Picture);
    d.c.PopupRenamePicturesButton->trigger();
    EXPECT_EQ(d.List("RenameFile"), "b.jpg c.jpg x.jpg ");
    EXPECT_EQ(list.SelectedRows(), std::vector<int>{1}); // as in the main window
    d.Get<FolderTreeview>("FolderTreeview1").SetSelectedPath(other.Path());
    EXPECT_EQ(d.List("RenameFile"), "IMG_1.jpg ");
    d.Get<FolderTreeview>("FolderTreeview1").SetSelectedPath(other.Path() + "/none");
    EXPECT_EQ(d.List("RenameFile"), "IMG_1.jpg ");
    d.Fill("IMG_", "");
    for (QShortcut* key : d.Get<QPushButton>("RenameCommand").window()->findChildren<QShortcut*>())
        if (key->key() == QKeySequence(Qt::Key_F2)) emit key->activated();
    d.Up("frmRenameFiles")->close();
    EXPECT_EQ(d.c.FolderTreeview1->SelectedPath(), other.Path());
    EXPECT_EQ(d.s.Filename, other.Path() + "/1.jpg");
}

TEST(RenameFiles, StopsAfterTheFileInHandWithItsNotes) {
    RenameDesk d({"a1.jpg", "a2.jpg", "a3.jpg"});
    for (const char* note : {"a1.enf", "a2.enf", "a3.enf"}) d.notes.Write(note, note);
    d.Start();
    d.Open();
    d.files.onChange = [&](const std::string&, const std::string& path) {
        if (path.find("a2.jpg") != std::string::npos) {
            EXPECT_TRUE(d.s.BatchRuns);
            QTest::qSleep(60); // so that events are let in behind it
            auto& form = *d.Up("frmRenameFiles");
            QCoreApplication::postEvent(&form, new QKeyEvent(QEvent::KeyPress, Qt::Key_F2, {}));
            d.events.onPump = [&] {
                d.events.onPump = nullptr;
                form.close(); // stops it and stays open
            };
        }
        return std::string();
    };
    d.RenameAll("a", "b");
    EXPECT_EQ(d.Names(), "a3.jpg b1.jpg b2.jpg ");
    EXPECT_EQ(d.Notes(), (Tree{{"a3.enf", "a3.enf"}, {"b1.enf", "a1.enf"}, {"b2.enf", "a2.enf"}}));
    EXPECT_EQ(d.Label("RenameLabel"), "2 files renamed");
    EXPECT_EQ(d.Label("RenameMessage"), "Cancelled");
    EXPECT_TRUE(d.Up("frmRenameFiles"));
    EXPECT_FALSE(d.s.BatchRuns);
    EXPECT_FALSE(d.Get<QPushButton>("CancelCommand").isVisible());
}

} // namespace
} // namespace tarn::testing
