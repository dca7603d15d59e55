// Copy, delete, rename, duplicate and their undoing in the whole window, on real files with their
// own wastebasket.
#include "FilesDesk.h"

#include "widgets/FolderTreeview.h"

namespace tarn::testing {
namespace {

namespace fs = std::filesystem;

TEST(Delete, GoesWithItsNoteAndTheSameRowIsNext) {
    FilesDesk d;
    const Tree pictures = d.Pictures();
    d.notes.Write("B.ENF", "of b"); // as another system spelt it
    const Tree notes = d.Notes();
    d.Start();
    d.GoTo("b.jpg");
    d.Key(Qt::Key_Delete);
    EXPECT_EQ(d.Names(), "a.jpg c.jpg ");
    EXPECT_TRUE(d.Notes().empty());
    EXPECT_EQ(d.Said(), "DELETED - b.jpg");
    EXPECT_EQ(d.Current(), "c.jpg");
    EXPECT_EQ(Trashed("b.jpg"), pictures.at("b.jpg"));
    EXPECT_FALSE(d.c.FileBackButton->isEnabled());
    d.Key(Qt::Key_Delete); // the last row: the one that is last now
    EXPECT_EQ(d.Current(), "a.jpg");
    d.Key(Qt::Key_Delete);
    EXPECT_EQ(d.Names(), "");
    EXPECT_EQ(d.s.Filename, "");
    EXPECT_TRUE(d.c.Picture1->Picture().isNull());
    EXPECT_FALSE(d.c.SlideButton->isEnabled());
    d.Key(Qt::Key_Delete); // nothing is there
    for (int i = 0; i < 3; ++i) d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), pictures);
    EXPECT_EQ(d.Notes(), notes);
    EXPECT_EQ(d.Said(), "Undone: Delete 'b.jpg'; back again: 'b.jpg', 'B.ENF'");
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_FALSE(d.c.UndoButton->isEnabled());
}

TEST(Delete, KeepsTheNoteWhereItIsAskedToOrShared) {
    FilesDesk d({"a.jpg", "a.tif", "b.jpg", "c.jpg"});
    for (const char* name : {"a.enf", "b.enf", "c.enf"}) d.notes.Write(name, name);
    d.Start();
    d.Key(Qt::Key_Delete);
    EXPECT_EQ(d.Said(), "DELETED - a.jpg, its note stays for 'a.tif'");
    d.GoTo("b.jpg");
    d.c.DeleteOnlyButton->trigger();
    d.c.DeleteKeyNotesButton->trigger();
    d.Key(Qt::Key_Delete);
    EXPECT_EQ(d.Names(), "a.tif ");
    EXPECT_EQ(d.Notes().size(), 3U);
}

TEST(Delete, AsksAndTakesNoForAnAnswer) {
    FilesDesk d;
    d.settings->Write("delete_confirm", "True");
    d.Start();
    d.dialogs.answers = {"No", "No", "Yes"};
    d.Key(Qt::Key_Delete);
    d.c.DeleteOnlyButton->trigger();
    EXPECT_EQ(d.Names(), "a.jpg b.jpg c.jpg ");
    const std::string path = d.At("a.jpg to wastebasket?");
    EXPECT_EQ(d.dialogs.shown,
              (Calls{"Delete file & notes confirmation|Delete file & notes " + path,
                     "Delete file confirmation|Delete file " + path}));
    d.Key(Qt::Key_Delete);
    EXPECT_EQ(d.Names(), "b.jpg c.jpg ");
}

TEST(Delete, NeverForGoodUnlessTheUserSaysSo) {
    FilesDesk d;
    d.notes.Write("a.enf", "of a");
    d.Start();
    int tries = 0;
    d.files.onChange = [&](const std::string& verb, const std::string&) {
        if (verb == "trash") ++tries;
        return verb == "trash" ? std::string("No room") : std::string();
    };
    d.Key(Qt::Key_Delete);
    EXPECT_EQ(tries, 2);
    EXPECT_EQ(d.dialogs.shown.back(),
              "Delete file|" + d.At("a.jpg cannot go to the wastebasket: No room"));
    EXPECT_EQ(d.Names(), "a.jpg b.jpg c.jpg ");
    EXPECT_NE(d.Said(), "DELETED - a.jpg");
    d.dialogs.answers = {"Delete for good"};
    d.Key(Qt::Key_Delete);
    EXPECT_EQ(d.Names(), "b.jpg c.jpg ");
    EXPECT_EQ(d.Notes().size(), 1U); // it could not go to the wastebasket either
    EXPECT_EQ(d.Said(), "DELETED - a.jpg, its note stays: No room");
}

TEST(Delete, AllFitsFilesStopAtTheFirstThatCannotGo) {
    FilesDesk d;
    for (const char* name : {"1.fit", "2.FITS", "3.fit", "x.fitted"}) d.folder.Write(name, name);
    fs::create_directory(d.At("dir.fit"));
    d.Start();
    d.files.Refuse("trash", "Busy", "2.FITS");
    d.c.DeleteAllFitsButton->trigger();
    EXPECT_EQ(d.Said(), "1 FITS files deleted, stopped at '2.FITS': Busy");
    d.files.onChange = nullptr;
    d.c.DeleteAllFitsButton->trigger();
    EXPECT_EQ(d.Said(), "2 FITS files deleted");
    EXPECT_TRUE(fs::exists(d.At("x.fitted")));
    EXPECT_TRUE(fs::exists(d.At("dir.fit")));
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Rename, TakesTheWholeNoteAlongAndComesBack) {
    FilesDesk d;
    const std::string longNote(20000, 'n');
    d.notes.Write("a.enf", longNote);
    const Tree pictures = d.Pictures();
    d.Start();
    d.Rename("M31.jpg");
    EXPECT_EQ(d.Names(), "M31.jpg b.jpg c.jpg ");
    EXPECT_EQ(d.Notes(), (Tree{{"M31.enf", longNote}}));
    EXPECT_EQ(d.Said(), "Renamed - a.jpg > M31.jpg");
    EXPECT_EQ(d.Current(), "M31.jpg");
    EXPECT_EQ(d.clipboard->Text(), "a.jpg");
    d.Rename("m31.JPG"); // another case alone
    EXPECT_EQ(d.Names(), "b.jpg c.jpg m31.JPG ");
    EXPECT_EQ(d.Notes(), (Tree{{"m31.enf", longNote}}));
    d.c.UndoButton->trigger();
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), pictures);
    EXPECT_EQ(d.Notes(), (Tree{{"a.enf", longNote}}));
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Rename, WhatStandsThereGoesToTheWastebasketFirst) {
    FilesDesk d;
    const Tree before = d.Pictures();
    d.notes.Write("a.enf", "of a");
    d.notes.Write("b.enf", "of b");
    d.Start();
    d.Rename("B.JPG");
    EXPECT_EQ(d.Names(), "B.JPG c.jpg ");
    EXPECT_EQ(d.Pictures().at("B.JPG"), before.at("a.jpg"));
    EXPECT_EQ(Trashed("b.jpg"), before.at("b.jpg"));
    EXPECT_EQ(Trashed("b.enf"), "of b");
    EXPECT_EQ(d.Notes(), (Tree{{"B.enf", "of a"}}));
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), before);
    EXPECT_EQ(d.Notes(), (Tree{{"a.enf", "of a"}, {"b.enf", "of b"}}));
}

TEST(Rename, RefusesWhatIsNoNameAndSavesWhatIsWritten) {
    FilesDesk d({"a.jpg", "a.tif"});
    d.notes.Write("a.enf", "of a");
    d.Start();
    for (const char* name : {"", "a.jpg", "x/y.jpg", "..", "."}) d.Rename(name);
    d.Rename(std::string(256, 'x').c_str());
    ASSERT_TRUE(d.Up("frmRename"));
    EXPECT_EQ(d.In<QLabel>("frmRename", "ErrorLabel")->text(), "New filename is too long");
    EXPECT_EQ(d.Names(), "a.jpg a.tif ");
    d.c.NotesBox->insertPlainText("written ");
    d.Rename("z.jpg");
    EXPECT_EQ(d.Names(), "a.tif z.jpg ");
    // The picture that shares it keeps it.
    EXPECT_EQ(d.Notes(), (Tree{{"a.enf", "written of a"}, {"z.enf", "written of a"}}));
    EXPECT_EQ(d.Current(), "z.jpg");
}

TEST(Rename, LeavesFoldersAndOtherPicturesNotesAlone) {
    FilesDesk d({"a.jpg", "b.jpg"});
    d.notes.Write("a.enf", "of a");
    d.notes.Write("b.enf", "of b");
    fs::create_directories(d.At("M31/inside"));
    d.Start();
    d.Rename("m31");
    EXPECT_EQ(d.Error(), "A folder of that name stands there - a.jpg");
    EXPECT_TRUE(fs::exists(d.At("M31/inside")));
    EXPECT_EQ(d.Current(), "a.jpg");
    d.Rename("b.tif");
    EXPECT_EQ(d.Said(), "Renamed - a.jpg > b.tif, its note stays: 'b.jpg' has that name");
    EXPECT_EQ(d.Notes(), (Tree{{"a.enf", "of a"}, {"b.enf", "of b"}}));
    d.Rename("b.hidden"); // whose type is not listed: what is at its row now is shown
    EXPECT_EQ(d.Current(), "b.jpg");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Current(), "b.tif");
}

TEST(Undo, NeverCostsWhatWasWrittenSinceOrTheLastCopy) {
    FilesDesk d;
    TestFolder target;
    d.settings->Write("copy_folder", target.Path());
    d.notes.Write("a.enf", "old");
    d.Start();
    d.Rename("x.jpg");
    d.c.NotesBox->insertPlainText("newer ");
    d.c.SaveNotesButton->click();
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Notes(), (Tree{{"x.enf", "old"}}));
    EXPECT_EQ(d.s.NoteText, "old");
    d.c.RedoButton->trigger();
    EXPECT_EQ(d.Notes(), (Tree{{"x.enf", "newer old"}}));
    EXPECT_EQ(d.s.NoteText, "newer old");
    for (int i = 0; i < 2; ++i) d.c.UndoButton->trigger();
    EXPECT_EQ(d.Notes(), (Tree{{"a.enf", "old"}}));
    target.Write("a.jpg", "replaced by the move");
    d.GoTo("a.jpg");
    d.c.MoveToButton->click();
    d.c.UndoButton->trigger();
    EXPECT_EQ(ReadTree(target.Path()), (Tree{{"a.jpg", "replaced by the move"}}));
    EXPECT_EQ(d.Names(), "a.jpg b.jpg c.jpg ");
    d.GoTo("b.jpg");
    d.c.MoveToButton->click();
    fs::remove_all(Wastebasket()); // emptied meanwhile
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Said().find("NOT undone: Move 'b.jpg'"), 0U) << d.Said();
    EXPECT_TRUE(fs::exists(target.Path() + "/b.jpg"));
}

TEST(Duplicate, MakesASecondPictureWithASecondNote) {
    FilesDesk d;
    d.notes.Write("a.enf", "of a");
    d.notes.Write("b.enf", "");
    d.Start();
    d.Duplicate("a2.jpg");
    EXPECT_EQ(d.Said(), "Duplicate - a.jpg > a2.jpg");
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_EQ(d.Pictures().at("a2.jpg"), d.Pictures().at("a.jpg"));
    EXPECT_EQ(d.Notes().at("a2.enf"), "of a");
    d.GoTo("b.jpg");
    d.Duplicate("b2.jpg"); // an empty note leaves none
    EXPECT_EQ(d.Names(), "a.jpg a2.jpg b.jpg b2.jpg c.jpg ");
    EXPECT_EQ(d.Notes().count("b2.enf"), 0U);
}

struct PasteDesk : FilesDesk {
    TestFolder target;
    void Open(const TestFolder& to) { house.navigation.OpenFolder(to.Path(), {}); }
    void TakeAll(QAction* how) {
        c.SelectAllButton->trigger();
        how->trigger();
    }
    Tree Target() const { return ReadTree(target.Path()); }
};

TEST(CopyPaste, CopiesAsOftenAsPasteIsPressed) {
    PasteDesk d;
    d.notes.Write("a.enf", "stays");
    d.target.Write("a.jpg", "in the way");
    d.Start();
    EXPECT_FALSE(d.c.PasteButton->isEnabled());
    d.TakeAll(d.c.CopyButton);
    EXPECT_EQ(d.Said(), "3 files selected for copy");
    EXPECT_EQ(d.clipboard->Files().paths.size(), 3U);
    d.Open(d.target);
    d.c.PasteButton->trigger();
    EXPECT_EQ(d.Said(), "Copy > Paste 3 files");
    EXPECT_EQ(d.Target(), d.Pictures());
    EXPECT_EQ(Trashed("a.jpg"), "in the way");
    EXPECT_EQ(d.s.FileNameOnly, "c.jpg");
    EXPECT_TRUE(d.c.PasteButton->isEnabled());
    EXPECT_EQ(d.Notes().size(), 1U);
    d.Open(d.folder);
    d.c.PasteButton->trigger(); // onto themselves
    EXPECT_EQ(d.Said(), "Paste failed for 'a.jpg'");
    EXPECT_EQ(d.Target(), d.Pictures());
}

TEST(CopyPaste, CutTakesAwayOnlyWhatArrivedWhole) {
    PasteDesk d;
    const Tree before = d.Pictures();
    d.Start();
    d.TakeAll(d.c.CutButton);
    EXPECT_EQ(d.Said(), "3 files selected for cut");
    EXPECT_TRUE(d.clipboard->Files().cut);
    d.Open(d.target);
    d.files.Refuse("move", "No space left on device", "b.jpg");
    d.c.PasteButton->trigger();
    EXPECT_EQ(d.Said(), "Paste failed for 'b.jpg'");
    EXPECT_EQ(d.Error(), "No space left on device - b.jpg");
    EXPECT_EQ(d.Names(), "b.jpg c.jpg ");
    EXPECT_EQ(d.Target(), (Tree{{"a.jpg", before.at("a.jpg")}}));
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), before);
    EXPECT_TRUE(d.Target().empty());

    d.files.onChange = nullptr;
    d.Open(d.folder);
    d.TakeAll(d.c.CutButton);
    d.Open(d.target);
    d.c.PasteButton->trigger();
    EXPECT_EQ(d.Said(), "Cut > Paste 3 files");
    EXPECT_EQ(d.Target(), before);
    EXPECT_TRUE(d.Pictures().empty());
    EXPECT_FALSE(d.c.PasteButton->isEnabled());
    d.c.PopupPasteButton->trigger(); // the sources are gone
    EXPECT_EQ(d.Said(), "Paste failed for 'a.jpg'");
    EXPECT_EQ(d.Target(), before);
}

TEST(CopyPaste, CutOnOneDiskMovesTheFilesThemselves) {
    PasteDesk d;
    d.target.Write("a.jpg", "in the way");
    struct stat before {};
    ASSERT_EQ(::stat(d.At("a.jpg").c_str(), &before), 0);
    const Tree pictures = d.Pictures();
    d.Start();
    d.TakeAll(d.c.CutButton);
    d.Open(d.target);
    d.c.PasteButton->trigger();
    EXPECT_EQ(d.Said(), "Cut > Paste 3 files");
    struct stat after {};
    ASSERT_EQ(::stat((d.target.Path() + "/a.jpg").c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(Trashed("a.jpg"), "in the way");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), pictures);
    EXPECT_EQ(d.Target(), (Tree{{"a.jpg", "in the way"}}));
}

TEST(CopyPaste, WhatChangedOnItsWayToAnotherDiskStaysToo) {
    struct stat here {};
    struct stat there {};
    PasteDesk d;
    if (::stat("/dev/shm", &there) != 0 || ::stat(d.folder.Path().c_str(), &here) != 0 ||
        here.st_dev == there.st_dev)
        GTEST_SKIP() << "this machine has no other disk";
    const TestFolder other("/dev/shm");
    const Tree before = d.Pictures();
    d.Start();
    d.TakeAll(d.c.CutButton);
    d.Open(other);
    d.files.onChange = [&](const std::string& verb, const std::string& path) {
        if (verb == "move" && path == d.At("b.jpg")) d.folder.Write("a.jpg", "grown since");
        return std::string();
    };
    d.c.PasteButton->trigger();
    EXPECT_EQ(d.Error(), "Stays where it was: it has changed since it was copied - a.jpg");
    EXPECT_EQ(d.Pictures(), (Tree{{"a.jpg", "grown since"}}));
    EXPECT_EQ(ReadTree(other.Path()), before);
}

TEST(CopyPaste, AFailureLeavesWhatStoodAndCaseTwinsAreTwoFiles) {
    PasteDesk d;
    d.folder.Write("A.JPG", JpegBytes(TellTale(30, 20)));
    d.target.Write("a.jpg", "stood there");
    fs::create_directories(d.target.Path() + "/b.jpg/inside");
    d.Start();
    d.TakeAll(d.c.CutButton);
    d.Open(d.target);
    d.files.Refuse("move", "full", "a.jpg");
    d.c.PasteButton->trigger();
    EXPECT_EQ(BytesOf(d.target.Path() + "/a.jpg"), "stood there");
    EXPECT_EQ(d.Names(), "a.jpg b.jpg c.jpg "); // A.JPG came first and arrived
    d.files.onChange = nullptr;
    d.c.PasteButton->trigger(); // the rest; a folder is never replaced
    EXPECT_EQ(d.Said(), "Paste failed for 'b.jpg'");
    EXPECT_TRUE(fs::exists(d.target.Path() + "/b.jpg/inside"));
    EXPECT_EQ(d.Names(), "b.jpg c.jpg ");
    EXPECT_TRUE(fs::exists(d.target.Path() + "/A.JPG"));
    d.c.UndoButton->trigger();
    EXPECT_EQ(BytesOf(d.target.Path() + "/a.jpg"), "stood there");
    EXPECT_EQ(d.Names(), "a.jpg b.jpg c.jpg ");
}

TEST(CopyPaste, TakesFilesFromAnotherProgram) {
    PasteDesk d;
    const std::string odd = d.target.Write("odd \xFF%.jpg", "odd");
    d.Start();
    d.c.CopyButton->trigger();
    d.clipboard->SetFiles({{odd}, false});
    d.c.PasteButton->trigger();
    EXPECT_EQ(d.Said(), "Copy > Paste 1 files");
    EXPECT_EQ(BytesOf(d.At("odd \xFF%.jpg")), "odd");
    const ClipboardFiles theirs{{odd}, true};
    d.clipboard->SetFiles(theirs);
    d.files.Refuse("move", "No space left on device");
    d.c.PasteButton->trigger();
    EXPECT_TRUE(d.Said().starts_with("Paste failed"));
    EXPECT_TRUE(d.clipboard->Files() == theirs); // to be tried again
    d.files.onChange = nullptr;
    d.c.FileListBox->UnselectAll();
    d.c.CopyButton->trigger(); // nothing is the later choice
    EXPECT_EQ(d.Said(), "0 files selected for copy");
    d.c.PasteButton->trigger();
    EXPECT_EQ(d.Said(), "Copy > Paste 0 files");
    EXPECT_TRUE(fs::exists(odd));
}

struct DropDesk : FilesDesk {
    TestFolder other;
    DropDesk() {
        notes.Write("a.enf", "of a");
        notes.Write("b.enf", "of b");
        Start();
    }
    // As from the list, by the road of a real drop.
    void Drop(std::initializer_list<const char*> names, bool copy = false) {
        std::vector<std::string> paths;
        for (const char* name : names) paths.push_back(At(name));
        c.FolderTreeview1->onDrop(paths, other.Path(), copy);
        QTest::qWait(1);
    }
    Tree There() const { return ReadTree(other.Path()); }
};

TEST(Drop, MovesFilesAndComesBack) {
    DropDesk d;
    const Tree before = d.Pictures();
    const Tree notes = d.Notes();
    d.GoTo("b.jpg");
    d.Drop({"a.jpg", "b.jpg"});
    EXPECT_EQ(d.Names(), "c.jpg ");
    EXPECT_EQ(d.There(), (Tree{{"a.jpg", before.at("a.jpg")}, {"b.jpg", before.at("b.jpg")}}));
    EXPECT_EQ(d.Notes(), notes); // they keep their names
    EXPECT_EQ(d.Current(), "c.jpg");
    EXPECT_EQ(d.Said(), "Moved 2 files to '" + d.other.Path() + "'");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), before);
    EXPECT_EQ(d.There(), (Tree{}));
    d.c.FolderTreeview1->onDrop({d.At("a.jpg")}, d.folder.Path(), false);
    QTest::qWait(1);
    EXPECT_EQ(d.Said(), "The files are in '" + d.folder.Path() + "' already");
    EXPECT_EQ(d.Pictures(), before);
}

TEST(Drop, WhatStandsThereIsAskedForAndANewNameTakesTheNoteAlong) {
    DropDesk d;
    const Tree before = d.Pictures();
    const Tree notes = d.Notes();
    d.other.Write("a.jpg", "stands");
    d.dialogs.answers = {"Cancel"};
    d.Drop({"a.jpg", "b.jpg"});
    EXPECT_EQ(d.Said(), "Cancelled, nothing was moved");
    d.dialogs.answers = {"Skip"};
    d.Drop({"a.jpg", "c.jpg"}, true);
    EXPECT_EQ(d.Said(), "Copied 1 file to '" + d.other.Path() + "', 1 skipped");
    EXPECT_EQ(d.There(), (Tree{{"a.jpg", "stands"}, {"c.jpg", before.at("c.jpg")}}));
    EXPECT_EQ(d.Pictures(), before);
    d.dialogs.answers = {"Keep both"};
    d.Drop({"a.jpg"});
    EXPECT_EQ(d.There().at("a (2).jpg"), before.at("a.jpg"));
    EXPECT_EQ(d.Notes(), (Tree{{"a (2).enf", "of a"}, {"b.enf", "of b"}}));
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), before);
    EXPECT_EQ(d.Notes(), notes);
    d.dialogs.answers = {"Overwrite"};
    d.Drop({"a.jpg"});
    EXPECT_EQ(d.There().at("a.jpg"), before.at("a.jpg"));
    EXPECT_EQ(Trashed("a.jpg"), "stands");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.There().at("a.jpg"), "stands");
    EXPECT_EQ(d.Pictures(), before);
}

TEST(Drop, WhatCannotGoStaysAndIsNamed) {
    DropDesk d;
    const Tree before = d.Pictures();
    fs::create_directory(d.other.Path() + "/a.jpg"); // a folder
    d.Drop({"a.jpg", "b.jpg"});
    EXPECT_EQ(d.Said().find("ERROR - Moved 1 file to '" + d.other.Path() + "', 1 failed: a.jpg - "),
              0U)
        << d.Said();
    EXPECT_EQ(d.Names(), "a.jpg c.jpg ");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), before);
}

TEST(FileCommands, TellOfATextThatWasNotSaved) {
    using Act = std::function<void(PasteDesk&)>;
    const std::vector<Act> commands{
        [](PasteDesk& d) { d.Rename("x.jpg"); }, [](PasteDesk& d) { d.c.MoveToButton->click(); },
        [](PasteDesk& d) { d.c.ConvertButton->trigger(); },
        [](PasteDesk& d) { d.c.UndoButton->trigger(); },
        [](PasteDesk& d) {
            d.clipboard->SetFiles({{d.target.Write("z.jpg", JpegBytes(TellTale(9, 9)))}, false});
            d.c.PasteButton->trigger();
        }};
    for (const Act& act : commands) {
        PasteDesk d;
        const TestFolder copies;
        d.settings->Write("notes_folder", "");
        d.settings->Write("copy_folder", copies.Path());
        d.Start();
        d.Key(Qt::Key_Delete);
        d.GoTo("b.jpg");
        d.c.NotesBox->setPlainText(QStringLiteral("unsaved"));
        act(d);
        EXPECT_TRUE(d.Said().ends_with("; Unsaved note of 'b.jpg' is in the restore buffer"))
            << d.Said();
        EXPECT_EQ(d.s.NotesSave, "unsaved");
    }
}

} // namespace
} // namespace tarn::testing
