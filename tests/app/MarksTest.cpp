// The whole window with marks: keys, what is seen of them, the list chosen and ordered by them, and
// the commands on files by their marks.
#include "FilesDesk.h"

#include "common/worker.h"

#include <QComboBox>
#include <QElapsedTimer>

#include <algorithm>
#include <map>
#include <mutex>

namespace tarn::testing {
namespace {

constexpr Mark kKept{Decision::Keep, 0};
constexpr Mark kRejected{Decision::Reject, 0};

struct MarksDesk : FilesDesk {
    TestFolder target;

    using FilesDesk::FilesDesk;
    Mark MarkAt(const std::string& name) {
        return house.marks.MarkOf(At(name)).value_or(Mark{Decision::None, -1});
    }
    // Those of the folder are known.
    void Await() {
        EXPECT_TRUE(QTest::qWaitFor([&] { return house.marks.AllRead(); }));
        QCoreApplication::processEvents();
    }
    void Written() { EXPECT_TRUE(house.marks.Flush()); }
    void Set(const std::string& name, const Mark& mark) {
        house.marks.SetMarks({At(name)}, SetTo(mark));
    }
    // In the pane or the list, as events of our own: they act at once.
    static void Press(QWidget* in, char letter) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, letter, Qt::NoModifier, QString(QLatin1Char(letter)).toLower());
            QApplication::sendEvent(in, &event);
        }
    }
    std::vector<std::string> Rows() const {
        std::vector<std::string> rows;
        for (int row = 0; row < c.FileListBox->Count(); ++row)
            rows.push_back(c.FileListBox->Text(row));
        return rows;
    }
    void Choose(QComboBox* box, const char* row) {
        const int index = box->findText(QString::fromLatin1(row));
        ASSERT_GE(index, 0) << row;
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
    std::vector<std::string> Chosen(const char* row) {
        Choose(c.NoteFilterCombo, row);
        return Rows();
    }
    // What comes from the disk comes a moment later.
    std::vector<std::string> SortedBy(const char* row, const std::vector<std::string>& awaited) {
        Choose(c.SortCombo, row);
        (void)QTest::qWaitFor([&] { return Rows() == awaited; });
        return Rows();
    }
};

using Names = std::vector<std::string>;

TEST(Marks, AKeyMarksAndTheNextFileComes) {
    MarksDesk d;
    d.Start();
    d.Press(d.c.Picture1, 'K');
    EXPECT_EQ(d.MarkAt("a.jpg"), kKept);
    EXPECT_EQ(d.Said(), "Kept+ 'a.jpg'");
    EXPECT_EQ(d.Current(), "b.jpg");
    d.Press(d.c.Picture1, 'J');
    EXPECT_EQ(d.MarkAt("b.jpg"), kRejected);
    EXPECT_EQ(d.Current(), "c.jpg");
    d.c.MarkStars3Button->trigger();
    EXPECT_EQ(d.MarkAt("c.jpg"), (Mark{Decision::None, 3}));
    EXPECT_EQ(d.Said(), "3 stars+ 'c.jpg'");
    EXPECT_EQ(d.Current(), "a.jpg"); // round the end, as a copy goes
    EXPECT_EQ(d.c.MarkLabel->text().toStdString(), "Kept");
    d.Press(d.c.Picture1, 'H');
    EXPECT_EQ(d.MarkAt("a.jpg"), Mark());
    EXPECT_EQ(d.Current(), "a.jpg"); // nothing was decided
    EXPECT_TRUE(d.c.MarkLabel->isHidden());
    d.c.MarkAdvanceButton->trigger();
    d.Press(d.c.Picture1, 'K');
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_EQ(d.Said(), "Kept 'a.jpg'");
    d.Written();
    EXPECT_TRUE(std::filesystem::exists(d.At("a.jpg.xmp")));
}

TEST(Marks, TheListKeepsTheKeyboardAndSearchesForWords) {
    MarksDesk d({"a.jpg", "b.jpg", "bk.jpg", "k.jpg"});
    d.Start();
    d.house.window.show();
    d.house.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&d.house.window));
    d.c.FileListBox->setFocus();
    d.Press(d.c.FileListBox, 'K');
    EXPECT_EQ(d.MarkAt("a.jpg"), kKept);
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_TRUE(d.c.FileListBox->hasFocus());
    for (const char letter : {'B', 'K'}) d.Press(d.c.FileListBox, letter); // a name that is typed
    EXPECT_EQ(d.MarkAt("b.jpg"), Mark());
    EXPECT_EQ(d.Current(), "bk.jpg");
}

TEST(Marks, WhatIsSelectedIsMarkedTogether) {
    MarksDesk d;
    d.Start();
    d.c.SelectAllButton->trigger();
    d.Press(d.c.Picture1, 'J');
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) EXPECT_EQ(d.MarkAt(name), kRejected);
    EXPECT_EQ(d.Said(), "Rejected - 3 files");
    EXPECT_EQ(d.c.FileListBox->SelectedRows().size(), 3U); // for another mark
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Marks, AKeyIsAnsweredAtOnce) {
    Names names;
    for (int i = 100; i < 200; ++i) names.push_back(std::to_string(i) + ".jpg");
    MarksDesk d(names);
    d.Start();
    d.c.MarkAdvanceButton->trigger(); // the step's own time is the picture's
    double slowest = 0;
    for (int row = 0; row < 100; ++row) {
        d.house.navigation.SelectRow(row);
        QElapsedTimer time;
        time.start();
        d.c.MarkKeepButton->trigger();
        slowest = std::max(slowest, double(time.nsecsElapsed()) / 1e6);
    }
    EXPECT_LT(slowest, 50); // milliseconds, on a machine that does other things beside
    d.Written();
    for (const std::string& name : names)
        EXPECT_TRUE(std::filesystem::exists(d.At(name + ".xmp"))) << name;
}

TEST(Marks, AreReadFromSidecarsAndSpoken) {
    MarksDesk d;
    {
        MarksDesk before;
        before.Start();
        before.Set("a.jpg", {Decision::Keep, 4});
        before.Written();
        d.folder.Write("a.jpg.xmp", before.Text("a.jpg.xmp"));
    }
    d.Start();
    d.Await();
    EXPECT_EQ(d.MarkAt("a.jpg"), (Mark{Decision::Keep, 4}));
    EXPECT_EQ(d.c.MarkLabel->text().toStdString(), "Kept 4\u2605");
    const auto* model = d.c.FileListBox->model();
    EXPECT_EQ(model->index(0, 0).data(Qt::AccessibleTextRole).toString().toStdString(),
              "a.jpg, kept, 4 stars");
    EXPECT_EQ(model->index(1, 0).data(Qt::AccessibleTextRole).toString().toStdString(), "b.jpg");
}

TEST(MarkChoice, ListsByMarksUntilItIsAskedAnew) {
    MarksDesk d({"a.jpg", "b.jpg", "c.jpg", "d.jpg"});
    d.Start();
    d.Await();
    d.Set("a.jpg", kKept);
    d.Set("b.jpg", {Decision::Reject, 2});
    d.Set("c.jpg", {Decision::None, 5});
    d.GoTo("b.jpg");
    EXPECT_EQ(d.Chosen("Rejected"), (Names{"b.jpg"}));
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.s.TextNumOf, "1 of 1");
    EXPECT_EQ(d.Chosen("Not yet judged"), (Names{"d.jpg"}));
    EXPECT_EQ(d.Current(), "d.jpg"); // b.jpg is gone
    EXPECT_EQ(d.Chosen("1 star and more"), (Names{"b.jpg", "c.jpg"}));
    EXPECT_EQ(d.Chosen("5 stars"), (Names{"c.jpg"}));
    EXPECT_EQ(d.Chosen("Kept"), (Names{"a.jpg"}));
    d.Press(d.c.Picture1, 'J');
    EXPECT_EQ(d.Rows(), (Names{"a.jpg"})); // a snapshot until it is refreshed
    d.Key(Qt::Key_F5);
    d.Await();
    EXPECT_EQ(d.Rows(), Names());
    d.house.navigation.OpenFolder(d.folder.Path(), "d.jpg"); // asked for by its name
    EXPECT_EQ(d.Current(), "d.jpg");
    EXPECT_EQ(d.c.NoteFilterCombo->currentText().toStdString(), "All");
}

TEST(MarkChoice, AFolderThatIsOpenedShowsItsOwn) {
    MarksDesk d;
    d.Start();
    d.Await();
    d.Set("a.jpg", kKept);
    d.Set("c.jpg", kKept);
    d.Written();
    EXPECT_EQ(d.Chosen("Kept"), (Names{"a.jpg", "c.jpg"}));
    d.house.navigation.OpenFolder(d.notes.Path(), {});
    EXPECT_EQ(d.Rows(), Names());
    d.house.navigation.OpenFolder(d.folder.Path(), {});
    d.Await();
    EXPECT_EQ(d.Rows(), (Names{"a.jpg", "c.jpg"}));
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Sorting, ByEachKindWithTheCurrentFileKept) {
    MarksDesk d(Names{});
    d.folder.Write("b10.jpg", Dated("2024:05:01 10:00:00", TellTale(90, 90)));
    d.folder.Write("b2.jpg", Dated("2024:05:03 10:00:00", TellTale(60, 40)));
    d.folder.Write("a.tif", "no picture");
    d.folder.Write("c.jpg", Dated("2024:05:02 10:00:00", TellTale(400, 300)));
    d.Start();
    d.Await();
    d.GoTo("c.jpg");
    EXPECT_EQ(d.SortedBy("Capture time", {"b10.jpg", "c.jpg", "b2.jpg", "a.tif"}),
              (Names{"b10.jpg", "c.jpg", "b2.jpg", "a.tif"}));
    EXPECT_EQ(d.Current(), "c.jpg");
    EXPECT_EQ(d.s.TextNumOf, "2 of 4");
    d.house.navigation.NextButton_Click();
    EXPECT_EQ(d.Current(), "b2.jpg");
    EXPECT_EQ(d.SortedBy("Size", {"a.tif", "b2.jpg", "b10.jpg", "c.jpg"}),
              (Names{"a.tif", "b2.jpg", "b10.jpg", "c.jpg"}));
    EXPECT_EQ(d.SortedBy("Type", {"b10.jpg", "b2.jpg", "c.jpg", "a.tif"}),
              (Names{"b10.jpg", "b2.jpg", "c.jpg", "a.tif"}));
    d.Set("c.jpg", {Decision::Keep, 1});
    d.Set("b2.jpg", kRejected);
    EXPECT_EQ(d.SortedBy("Mark", {"c.jpg", "a.tif", "b10.jpg", "b2.jpg"}),
              (Names{"c.jpg", "a.tif", "b10.jpg", "b2.jpg"}));
    d.c.SortNaturalButton->trigger();
    EXPECT_EQ(d.SortedBy("Name", {"a.tif", "b2.jpg", "b10.jpg", "c.jpg"}),
              (Names{"a.tif", "b2.jpg", "b10.jpg", "c.jpg"}));
    // Another folder has its own order, and this one keeps its.
    d.house.navigation.OpenFolder(d.notes.Path(), {});
    EXPECT_FALSE(d.c.SortNaturalButton->isChecked());
    d.house.navigation.OpenFolder(d.folder.Path(), {});
    EXPECT_EQ(d.Rows(), (Names{"a.tif", "b2.jpg", "b10.jpg", "c.jpg"}));
    EXPECT_EQ(d.s.SortOfFolders, "name,natural:" + d.folder.Path());
}

TEST(Sorting, WhatIsKnownOrdersTheListAtOnceWhenItIsReadAgain) {
    MarksDesk d(Names{});
    d.folder.Write("a.jpg", Dated("2024:05:03 10:00:00"));
    d.folder.Write("b.jpg", Dated("2024:05:02 10:00:00"));
    d.folder.Write("c.jpg", Dated("2024:05:01 10:00:00"));
    d.Start();
    EXPECT_EQ(d.SortedBy("Capture time", {"c.jpg", "b.jpg", "a.jpg"}),
              (Names{"c.jpg", "b.jpg", "a.jpg"}));
    d.GoTo("b.jpg");
    d.c.DeleteButton->trigger();
    EXPECT_EQ(d.Rows(), (Names{"c.jpg", "a.jpg"}));
    EXPECT_EQ(d.Current(), "a.jpg"); // at its row, in this order
}

TEST(ByMark, RejectedGoAndComeBackWithAllThatIsTheirs) {
    MarksDesk d;
    d.notes.Write("b.enf", "a note");
    d.Start();
    d.Await();
    d.Set("b.jpg", kRejected);
    d.Set("c.jpg", kRejected);
    d.Written();
    const Tree before = d.Pictures();
    d.Answer({"No"}, d.c.RejectedDeleteButton);
    EXPECT_EQ(d.Pictures(), before);
    d.Answer({"Yes"}, d.c.RejectedDeleteButton);
    EXPECT_EQ(d.dialogs.shown.back(),
              "Delete file confirmation|Delete 2 rejected files & notes of " + d.folder.Path() +
                  " to wastebasket?");
    EXPECT_EQ(d.Names(), "a.jpg ");
    EXPECT_EQ(d.NamesOf(d.Notes()), "");
    EXPECT_EQ(d.Said(), "2 rejected files deleted");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), before);
    EXPECT_EQ(d.NamesOf(d.Notes()), "b.enf ");
    d.Await();
    EXPECT_EQ(d.MarkAt("b.jpg"), kRejected);
    d.Answer({}, d.c.KeptCopyButton);
    EXPECT_EQ(d.Said(), "'Copy to' folder has not been set");
}

TEST(ByMark, RejectedIntoASubFolderAndKeptIntoTheCopyFolder) {
    MarksDesk d;
    d.Start();
    d.Await();
    d.s.CopyImageFolder = d.target.Path();
    d.Answer({}, d.c.KeptCopyButton);
    EXPECT_EQ(d.Said(), "No kept files in this folder");
    d.Set("a.jpg", kKept);
    d.Set("b.jpg", kRejected);
    d.Answer({"Yes"}, d.c.KeptCopyButton);
    EXPECT_EQ(d.NamesOf(ReadTree(d.target.Path())), "a.jpg a.jpg.xmp ");
    d.Answer({"no/folder"}, d.c.RejectedFolderButton);
    EXPECT_TRUE(std::filesystem::exists(d.At("b.jpg")));
    d.Answer({"rejected"}, d.c.RejectedFolderButton);
    EXPECT_EQ(d.NamesOf(ReadTree(d.At("rejected"))), "b.jpg b.jpg.xmp ");
    EXPECT_FALSE(std::filesystem::exists(d.At("b.jpg")));
    d.c.UndoButton->trigger();
    EXPECT_TRUE(std::filesystem::exists(d.At("b.jpg")));
    EXPECT_TRUE(std::filesystem::exists(d.At("b.jpg.xmp")));
}

TEST(ByMark, AllMarksAreClearedAndTakenBack) {
    MarksDesk d;
    d.Start();
    d.Await();
    d.Set("a.jpg", {Decision::Keep, 2});
    d.Set("c.jpg", kRejected);
    d.Answer({"Yes"}, d.c.ClearMarksButton);
    EXPECT_EQ(d.Said(), "Marks of 2 files cleared");
    EXPECT_EQ(d.MarkAt("a.jpg"), Mark());
    EXPECT_EQ(d.MarkAt("c.jpg"), Mark());
    d.c.UndoButton->trigger();
    d.Await();
    EXPECT_EQ(d.MarkAt("a.jpg"), (Mark{Decision::Keep, 2}));
    EXPECT_EQ(d.MarkAt("c.jpg"), kRejected);
}

TEST(MarksAside, GoWithTheirPictureAndComeBackWithIt) {
    MarksDesk d;
    d.Start();
    d.Await();
    d.files.onAsk = [&](const std::string& verb, const std::string& path) {
        return verb == "writable" && path == d.folder.Path() ? "no" : "";
    };
    d.Set("a.jpg", {Decision::Keep, 2});
    d.Written();
    d.Rename("m.jpg");
    d.Await();
    EXPECT_EQ(d.MarkAt("m.jpg"), (Mark{Decision::Keep, 2}));
    d.Written();
    EXPECT_EQ(d.house.marks.KeptAside(d.At("a.jpg")), std::nullopt);
    EXPECT_EQ(d.house.marks.KeptAside(d.At("m.jpg")), (SetTo({Decision::Keep, 2})));
    d.Duplicate("n.jpg");
    d.Written();
    EXPECT_EQ(d.house.marks.KeptAside(d.At("n.jpg")), (SetTo({Decision::Keep, 2})));
    d.GoTo("m.jpg");
    d.c.DeleteButton->trigger();
    d.Written();
    EXPECT_EQ(d.house.marks.KeptAside(d.At("m.jpg")), std::nullopt);
    // The delete, the duplicate, the rename.
    for (const char* back : {"m.jpg", "m.jpg", "a.jpg"}) {
        d.c.UndoButton->trigger();
        d.Written();
        EXPECT_EQ(d.MarkAt(back), (Mark{Decision::Keep, 2})) << back;
    }
    EXPECT_EQ(d.house.marks.KeptAside(d.At("n.jpg")), std::nullopt);
    EXPECT_EQ(d.house.marks.KeptAside(d.At("m.jpg")), std::nullopt);
    d.files.onAsk = nullptr;
}

TEST(MarksOnASlowDisk, AreWaitedForAloudAndNotForEver) {
    MarksDesk d;
    d.Start();
    d.Await();
    std::mutex disk;
    d.files.onAsk = [&](const std::string& verb, const std::string&) {
        if (verb == "writable" && IsWorkerThread()) const std::lock_guard wait(disk);
        return std::string();
    };
    disk.lock();
    d.Set("a.jpg", kKept);
    std::string said;
    d.events.onPump = [&] {
        if (d.s.BatchRuns) said = d.Said();
        d.s.BatchCancelled = true; // as Esc does
    };
    d.c.DeleteButton->trigger();
    EXPECT_EQ(said, "Waiting for the disk: 1 mark to write, now 'a.jpg'. Esc: nothing is done");
    EXPECT_EQ(d.Said(), "Cancelled: marks are still being written");
    EXPECT_EQ(d.Names(), "a.jpg b.jpg c.jpg ");
    d.house.lifecycle.Exit_Click();
    EXPECT_EQ(said, "Waiting for the disk: 1 mark to write, now 'a.jpg'. Esc: end now, they are "
                    "kept in the settings");
    const std::string path = d.At("a.jpg");
    EXPECT_EQ(BytesOf(d.files.home + "/unwritten_marks"),
              "mark k0 " + std::to_string(path.size()) + " " + path + "\n");
    d.events.onPump = {};
    disk.unlock(); // it answers after all
    d.Written();
    EXPECT_TRUE(std::filesystem::exists(d.At("a.jpg.xmp")));
    EXPECT_EQ(BytesOf(d.files.home + "/unwritten_marks"), "");
}

TEST(MarksInShows, TheSlideThatIsSeenIsMarked) {
    MarksDesk d;
    d.Start();
    d.Await();
    d.RunShow(d.c.SlideButton, {Qt::Key_N, Qt::Key_K});
    EXPECT_EQ(d.MarkAt("b.jpg"), kKept);
    EXPECT_EQ(d.MarkAt("a.jpg"), Mark());
    d.GoTo("a.jpg");
    std::string title;
    d.RunShow(d.c.SlideButton,
              {[&] { QTest::keyClick(d.house.slides.Window(), Qt::Key_4, Qt::ControlModifier); },
               [&] { title = d.house.slides.Window()->Lines().at(0).text; }});
    EXPECT_EQ(d.MarkAt("a.jpg"), (Mark{Decision::None, 4}));
    EXPECT_NE(title.find("4\u2605"), std::string::npos) << title;
}

TEST(MarksInShows, TheFramedPictureIsMarked) {
    MarksDesk d({"a.jpg", "b.jpg", "c.jpg", "d.jpg"});
    d.Start();
    d.Await();
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        return [&d, key, with] { QTest::keyClick(d.house.slides.Window(), key, with); };
    };
    d.RunShow(d.c.Slides4Button,
              {press(Qt::Key_Right, Qt::ShiftModifier), press(Qt::Key_Down, Qt::ShiftModifier),
               press(Qt::Key_J), press(Qt::Key_Left, Qt::ShiftModifier), press(Qt::Key_K),
               [&] { EXPECT_FALSE(d.house.slides.Window()->Frame().isEmpty()); }});
    EXPECT_EQ(d.MarkAt("d.jpg"), kRejected);
    EXPECT_EQ(d.MarkAt("c.jpg"), kKept);
    EXPECT_EQ(d.MarkAt("a.jpg"), Mark());
    EXPECT_EQ(d.MarkAt("b.jpg"), Mark());
}

} // namespace
} // namespace tarn::testing
