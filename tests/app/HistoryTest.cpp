// What was done to files, taken back by a later start, finished after a kill, and seen in its
// window.
#include "FilesDesk.h"

#include "history/Changes.h"
#include "platform/Statement.h"

#include <QListWidget>
#include <QTreeView>

namespace tarn::testing {
namespace {

const std::vector<std::string> kThree{"a.jpg", "b.jpg", "c.jpg"};

struct HistoryDesk : FilesDesk {
    QTreeView* List() const { return In<QTreeView>("frmHistory", "HistoryList"); }
    std::string Cell(int row, int column) const {
        return List()->model()->index(row, column).data().toString().toStdString();
    }
    int Rows() const { return List()->model()->rowCount(); }
    void Choose(int row) { List()->setCurrentIndex(List()->model()->index(row, 0)); }
    void Press(const char* button) { In<QPushButton>("frmHistory", button)->click(); }
    std::string Caption(QAction* entry) const { return entry->text().toStdString(); }

    // A rename of two pictures whose program was killed after the first.
    void BreakOffRename() {
        History killed(files);
        Changes changes(killed, "");
        const std::vector<Step> steps{changes.PlanRename(At("a.jpg"), At("x.jpg")),
                                      changes.PlanRename(At("b.jpg"), At("y.jpg"))};
        std::int64_t id = 0;
        History::Ledger book;
        std::string error;
        ASSERT_TRUE(
            killed.Begin({"Rename of 2 pictures", folder.Path(), true}, steps, book, &id, &error))
            << error;
        ASSERT_TRUE(files.Rename(At("a.jpg"), At("x.jpg"), &error)) << error;
        sqlite3* database = nullptr;
        ::sqlite3_open((files.StateFolder() + "/history.db").c_str(), &database);
        EXPECT_TRUE(Statement(database, "UPDATE commands SET process='an earlier boot'").Run());
        ::sqlite3_close(database);
    }
};

TEST(PastCommands, AreTakenBackByALaterStartAndDoneAgain) {
    HistoryDesk d;
    const Tree before = d.Pictures();
    {
        History earlier(d.files);
        std::string error;
        Changes changes(earlier, "Delete 'b.jpg'");
        ASSERT_TRUE(changes.ThrowAway(d.At("b.jpg"), &error)) << error;
    }
    d.Start();
    EXPECT_EQ(d.Caption(d.c.UndoButton), "&Undo Delete 'b.jpg'");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Said(), "Undone: Delete 'b.jpg'; back again: 'b.jpg'");
    EXPECT_EQ(d.Pictures(), before);
    EXPECT_FALSE(d.c.UndoButton->isEnabled());
    EXPECT_EQ(d.Caption(d.c.RedoButton), "Redo Delete 'b.jpg'");
    d.c.RedoButton->trigger();
    EXPECT_EQ(d.Said(), "Done again: Delete 'b.jpg'");
    EXPECT_EQ(d.Names(), "a.jpg c.jpg ");
    d.c.UndoButton->trigger();
    d.GoTo("a.jpg");
    d.Key(Qt::Key_Delete);
    EXPECT_FALSE(d.c.RedoButton->isEnabled());
}

// What the menu names is what is taken back, and nothing that came from elsewhere meanwhile.
TEST(PastCommands, OfAnotherProgramAreNotTakenBackUnread) {
    HistoryDesk d;
    d.Start();
    d.GoTo("a.jpg");
    d.Key(Qt::Key_Delete);
    {
        History console(d.files);
        std::string error;
        Changes changes(console, "Delete 'c.jpg'");
        ASSERT_TRUE(changes.ThrowAway(d.At("c.jpg"), &error)) << error;
    }
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Said(),
              "Another program has done since: Delete 'c.jpg'. Undo again takes that back");
    EXPECT_EQ(d.Names(), "b.jpg ");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Names(), "b.jpg c.jpg ");
}

TEST(PastCommands, ThatWereBrokenOffAreFinishedOrTakenBackAtTheStart) {
    for (const char* answer : {"Finish", "Take back", "Leave as it is"}) {
        SCOPED_TRACE(answer);
        HistoryDesk d;
        d.BreakOffRename();
        EXPECT_EQ(d.Names(), "b.jpg c.jpg x.jpg ");
        d.dialogs.answers = {answer};
        d.Start();
        ASSERT_EQ(d.dialogs.shown.size(), 1U);
        EXPECT_EQ(d.dialogs.shown[0],
                  "History|'Rename of 2 pictures' was broken off when the program ended: 1 of 2 "
                  "steps are done in " +
                      d.folder.Path() + ".");
        const std::string first = answer;
        EXPECT_EQ(d.Names(), first == "Finish"      ? "c.jpg x.jpg y.jpg "
                             : first == "Take back" ? "a.jpg b.jpg c.jpg "
                                                    : "b.jpg c.jpg x.jpg ");
        EXPECT_TRUE(d.house.history.BrokenOff().empty()); // not asked again
        EXPECT_EQ(d.c.UndoButton->isEnabled(), first != "Take back");
    }
}

TEST(PastCommands, MarksGoBackOneKeyAtATime) {
    HistoryDesk d;
    d.Start();
    d.s.MarkAdvance = false;
    d.GoTo("a.jpg");
    d.Key(Qt::Key_K);
    d.Key(Qt::Key_J);
    EXPECT_EQ(d.Caption(d.c.UndoButton), "&Undo Rejected 'a.jpg'");
    // The sidecar is read again a moment later.
    const auto becomes = [&](Decision wanted) {
        return QTest::qWaitFor(
            [&] { return d.house.marks.MarkOf(d.At("a.jpg"))->decision == wanted; });
    };
    d.c.UndoButton->trigger();
    EXPECT_TRUE(becomes(Decision::Keep));
    EXPECT_EQ(d.Said(), "Undone: Rejected 'a.jpg'");
    d.c.UndoButton->trigger();
    EXPECT_TRUE(becomes(Decision::None));
    EXPECT_EQ(d.Names(), "a.jpg b.jpg c.jpg "); // and no sidecar
    EXPECT_FALSE(d.c.UndoButton->isEnabled());
    d.c.RedoButton->trigger();
    EXPECT_TRUE(becomes(Decision::Keep));
}

// What the console does is taken back to the byte, sidecars, too.
TEST(PastCommands, OfTheConsoleAreUndoneByIt) {
    TestFolder state;
    TestFolder folder;
    folder.Write("a.jpg", Dated("2004:05:06 07:08:09"));
    folder.Write("b.jpg", "no picture");
    const auto run = [&](const std::string& words) {
        return std::system(("XDG_STATE_HOME='" + state.Path() + "' '" TARN_PROGRAM "' " + words +
                            " > '" + state.Path() + "/out'")
                               .c_str());
    };
    const auto time = [&] { return std::filesystem::last_write_time(folder.Path() + "/a.jpg"); };
    const Tree before = ReadTree(folder.Path());
    const auto dated = time();
    EXPECT_EQ(run("dates '" + folder.Path() + "'"), 0);
    EXPECT_NE(time(), dated);
    EXPECT_EQ(run("mark --keep '" + folder.Path() + "/a.jpg' '" + folder.Path() + "/b.jpg'"), 0);
    EXPECT_EQ(ReadTree(folder.Path()).size(), 4U);
    EXPECT_EQ(run("history --csv"), 0);
    const std::string listed = BytesOf(state.Path() + "/out");
    EXPECT_EQ(listed.find("id,utc,what,files,state\n2,"), 0U) << listed;
    EXPECT_NE(listed.find(",Kept - 2 files,2,done\n1,"), std::string::npos) << listed;
    EXPECT_NE(listed.find(",File dates of 1 file,1,done\n"), std::string::npos) << listed;
    EXPECT_EQ(run("undo"), 0);
    EXPECT_EQ(ReadTree(folder.Path()), before);
    EXPECT_EQ(run("undo 1"), 0);
    EXPECT_EQ(time(), dated);
    EXPECT_NE(run("undo 2> /dev/null"), 0);
    EXPECT_EQ(run("redo"), 0);
    EXPECT_NE(time(), dated);
}

TEST(HistoryWindow, ListsFindsAndTakesBackWhatIsNotTheLast) {
    HistoryDesk d;
    const Tree before = d.Pictures();
    d.Start();
    d.GoTo("a.jpg");
    d.Key(Qt::Key_Delete);
    d.GoTo("b.jpg");
    d.Rename("new.jpg");
    d.c.HistoryButton->trigger();
    ASSERT_EQ(d.Rows(), 2);
    EXPECT_EQ(d.Cell(0, 1), "Rename 'b.jpg'");
    EXPECT_EQ(d.Cell(1, 1), "Delete 'a.jpg'");
    EXPECT_EQ(d.Cell(1, 3), "done");
    auto* steps = d.In<QListWidget>("frmHistory", "HistorySteps");
    EXPECT_EQ(steps->item(0)->text().toStdString(), "renamed: b.jpg to new.jpg");
    d.Choose(1);
    d.Press("HistoryUndoButton");
    EXPECT_EQ(d.Names(), "a.jpg c.jpg new.jpg ");
    EXPECT_EQ(d.Cell(1, 3), "undone");
    d.Press("HistoryRedoButton");
    EXPECT_EQ(d.Names(), "c.jpg new.jpg ");
    // A file of the first command is another's since.
    d.GoTo("new.jpg");
    d.Rename("a.jpg");
    d.Choose(2);
    d.Press("HistoryUndoButton");
    EXPECT_EQ(d.Said(), "NOT undone: Delete 'a.jpg'; its files were changed since by: Rename "
                        "'new.jpg'");
    d.In<QLineEdit>("frmHistory", "HistoryFind")->setText(QStringLiteral("DELETE"));
    EXPECT_EQ(d.Rows(), 1);
    d.Choose(0);
    d.dialogs.answers = {d.settingsFolder.Path() + "/out.csv"};
    d.Press("HistoryExportButton");
    const std::string csv = BytesOf(d.settingsFolder.Path() + "/out.csv");
    EXPECT_EQ(csv.find("id,utc,what,folder,files,state\n1,"), 0U) << csv;
    EXPECT_NE(csv.find(",Delete 'a.jpg'," + d.folder.Path() + ",1,done\n"), std::string::npos)
        << csv;
    d.In<QLineEdit>("frmHistory", "HistoryFind")->clear();
    d.dialogs.answers = {"Forget"};
    d.Press("HistoryForgetButton");
    EXPECT_EQ(d.Rows(), 0);
    EXPECT_FALSE(d.c.UndoButton->isEnabled());
}

TEST(HistoryWindow, ShowsTheFileOfAStep) {
    HistoryDesk d;
    d.Start();
    d.GoTo("b.jpg");
    d.Rename("new.jpg");
    d.GoTo("c.jpg");
    d.c.HistoryButton->trigger();
    d.Press("HistoryShowButton");
    EXPECT_EQ(d.Current(), "new.jpg");
}

} // namespace
} // namespace tarn::testing
