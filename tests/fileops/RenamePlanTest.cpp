// Which names a run over many files gives, in which order, and what it refuses; carried out on real
// files, with every call failing once in turn.
#include "fileops/RenamePlan.h"
#include "fileops/RenameRun.h"
#include "history/History.h"

#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

using Names = std::vector<std::string>;
using Rows = std::vector<RenameRow>;

// "IMG_1.jpg > Moon_1.jpg; ..."
std::string Text(const Rows& rows) {
    std::string text;
    for (const RenameRow& row : rows)
        text += row.from + (row.copies ? " >> " : " > ") + row.to + "; ";
    return text;
}

std::string Steps(const RenamePlan& plan) {
    std::string text;
    for (const RenameStep& step : plan.steps) text += step.from + " > " + step.to + "; ";
    return text;
}

std::string Faults(const std::vector<RenameFault>& faults) {
    std::string text;
    for (const RenameFault& fault : faults)
        text += fault.from + " > " + fault.to + ": " + fault.why + "; ";
    return text;
}

RenamePlan Plan(const Rows& rows, const Names& standing) {
    return PlanRenames("/x", rows, standing);
}

TEST(RenameRows, OnlyTheBeginningChangesAndOnlyWhereItIsTheSame) {
    const Names names{"IMG_1.JPG", "IMG_IMG_.JPG", "XIMG_.JPG", "img_2.jpg", "IMG_"};
    EXPECT_EQ(Text(RenameRows(names, "IMG_", "Moon_")),
              "IMG_1.JPG > Moon_1.JPG; IMG_IMG_.JPG > Moon_IMG_.JPG; IMG_ > Moon_; ");
    EXPECT_EQ(Text(RenameRows(names, "IMG_", "")),
              "IMG_1.JPG > 1.JPG; IMG_IMG_.JPG > IMG_.JPG; IMG_ > ; ");
    EXPECT_TRUE(RenameRows(names, "", "Moon_").empty());
    EXPECT_EQ(Text(RenameRows({"a\xFF\n.jpg"}, "a", "b")), "a\xFF\n.jpg > b\xFF\n.jpg; ");
}

TEST(RenamePlan, NamesThatBecomeFreeAreTakenInTime) {
    EXPECT_EQ(Steps(Plan({{"a", "b"}, {"b", "c"}, {"x", "y"}, {"c", "d"}}, {"a", "b", "c", "x"})),
              "c > d; b > c; a > b; x > y; ");
    EXPECT_EQ(Steps(Plan({{"a", "B"}, {"b", "c"}}, {"a", "b"})), "b > c; a > B; ");
    EXPECT_EQ(Steps(Plan({{"a.jpg", "A.jpg"}}, {"a.jpg"})), "a.jpg > A.jpg; ");
    EXPECT_EQ(Steps(Plan({{"a.jpg", "a.jpg"}}, {"a.jpg"})), "");
    // The mark is one that no other file has, and no name grows too long.
    EXPECT_EQ(Steps(Plan({{"a.jpg", "b.jpg"}, {"b.jpg", "a.jpg"}},
                         {"a.jpg", "b.jpg", "A (RENAMING).jpg"})),
              "a.jpg > a (renaming 2).jpg; b.jpg > a.jpg; a (renaming 2).jpg > b.jpg; ");
    const std::string longName = std::string(251, 'n') + ".jpg";
    const RenamePlan plan = Plan({{longName, "b"}, {"b", longName}}, {longName, "b"});
    EXPECT_EQ(plan.steps.at(0).to.size(), 255U);
    EXPECT_EQ(plan.steps.at(0).to.substr(233), "nnnnnnn (renaming).jpg");
}

TEST(RenamePlan, ConflictsAreFaultsAndBarWhatWaitsForThem) {
    struct Case {
        Rows rows;
        Names standing;
        std::string steps;
        std::string faults;
    };
    const std::string tooLong(256, 'n');
    const std::vector<Case> cases{
        {{{"a", "b"}}, {"a", "B"}, "", "a > b: a file of this name exists; "},
        {{{"a", "b"}, {"b", "c"}, {"x", "y"}},
         {"a", "b", "c", "x"},
         "x > y; ",
         "a > b: the file of this name keeps it; b > c: a file of this name exists; "},
        {{{"b", "c"}, {"a", "b"}},
         {"a", "b", "c"},
         "",
         "b > c: a file of this name exists; a > b: a file of this name exists; "},
        {{{"ax", "bx"}, {"aX", "bX"}},
         {"ax", "aX"},
         "ax > bx; ",
         "aX > bX: two files would have this name; "},
        {{{"a", ""}, {"b", "x/y"}, {"c", ".."}, {"d", "e"}},
         {"a", "b", "c", "d"},
         "d > e; ",
         "a > : New filename is blank; b > x/y: New filename must not contain '/'; "
         "c > ..: New filename must not begin with '.'; "},
        {{{"a", "b"}, {"b", tooLong}},
         {"a", "b"},
         "",
         "a > b: a file of this name exists; b > " + tooLong + ": New filename is too long; "},
    };
    for (const Case& c : cases) {
        const RenamePlan plan = Plan(c.rows, c.standing);
        EXPECT_EQ(Steps(plan), c.steps);
        EXPECT_EQ(Faults(plan.faults), c.faults);
    }
}

TEST(NoteRows, NotesGoWithTheirPicturesAndStayWhereTheyAreShared) {
    const Rows moved{{"a1.jpg", "b1.jpg"}, {"a2.jpg", "b2.jpg"}, {"a3.jpg", "b3.jpg"},
                     {"a3.tif", "b3.tif"}, {"a4.enf", "b4.enf"}, {"a5.jpg", "xyz"}};
    // What lies beside its picture is no picture.
    Names before{"a2.nef", "a1.enf", "a5.xmp", "c.jpg"};
    for (const RenameRow& row : moved) before.push_back(row.from);
    const Names notes{"A1.ENF", "a2.enf", "a3.enf", "a4.enf", "a5.enf", "c.enf"};
    EXPECT_EQ(Text(NoteRows(moved, before, notes, false)),
              "A1.ENF > b1.enf; a2.enf >> b2.enf; a3.enf > b3.enf; a5.enf > x.enf; ");
    EXPECT_EQ(Text(NoteRows({{"a1.jpg", "b1.jpg"}}, {"a1.jpg"}, {"A1.enf", "a1.enf"}, true)),
              "a1.enf >> b1.enf; ");
    EXPECT_TRUE(NoteRows({{"a.jpg", "A.jpg"}}, {"a.jpg", "a.tif"}, {"a.enf"}, false).empty());
}

TEST(SidecarRows, EachFormKeepsItsFormAndStaysWhereItIsShared) {
    const Rows moved{{"a1.jpg", "b1.jpg"}, {"a2.cr2", "b2.cr2"}, {"a3.cr2", "b3.cr2"},
                     {"a3.jpg", "b3.jpg"}, {"a4.fit", "b4.fit"}, {"a4.fit.xmp", "x.xmp"}};
    Names before{"A1.JPG.XMP", "a2.xmp", "a2.jpg", "a3.xmp", "c.xmp"};
    for (const RenameRow& row : moved) before.push_back(row.from);
    EXPECT_EQ(Text(SidecarRows(moved, before)),
              "A1.JPG.XMP > b1.jpg.xmp; a2.xmp >> b2.xmp; a3.xmp > b3.xmp; ");
}

struct RunDesk {
    TestFolder folder;
    ForwardingFiles files;
    History history{files, {}};
    std::optional<Changes> command{std::in_place, history, "Rename"};
    Changes& changes = *command;

    RenameRun Run(const Rows& rows) {
        RenameRun run(
            PlanRenames(folder.Path(), rows, files.FileNames(folder.Path(), nullptr).value()),
            changes);
        while (!run.IsDone()) run.Step();
        return run;
    }
    Tree Standing() const { return ReadTree(folder.Path()); }
};

TEST(RenameRun, ChainsAndExchangesComeOutRightAndComeBack) {
    RunDesk d;
    const Tree before{{"a", "1"}, {"b", "2"}, {"c", "3"}, {"p", "4"}, {"q", "5"}, {"r", "6"}};
    Fill(d.folder, before);
    const RenameRun run =
        d.Run({{"a", "b"}, {"b", "c"}, {"c", "d"}, {"p", "q"}, {"q", "r"}, {"r", "P"}});
    EXPECT_EQ(d.Standing(),
              (Tree{{"b", "1"}, {"c", "2"}, {"d", "3"}, {"q", "4"}, {"r", "5"}, {"P", "6"}}));
    EXPECT_EQ(run.Moved().size(), 6U);
    EXPECT_EQ(Faults(run.Faults()), "");
    d.command.reset();
    d.history.Undo([](std::size_t) { return true; });
    EXPECT_EQ(d.Standing(), before);
}

// Each call fails once: nothing is lost, a row is either done or told, and an exchange that cannot
// be done leaves the old names.
TEST(RenameRun, NoFaultLosesAnything) {
    const Tree before{{"a", "1"}, {"b", "2"}, {"p", "3"}, {"q", "4"}, {"x", "5"}};
    const Rows rows{{"a", "b"}, {"b", "c"}, {"p", "q"}, {"q", "p"}, {"x", "y", true}};
    int calls = 1;
    for (int failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE(failing);
        RunDesk d;
        Fill(d.folder, before);
        calls = 0;
        d.files.onChange = [&](const std::string&, const std::string&) {
            return ++calls == failing ? std::string("fault") : std::string();
        };
        const RenameRun run = d.Run(rows);
        d.files.onChange = nullptr;
        EXPECT_FALSE(run.Faults().empty());
        EXPECT_EQ(run.Moved().size() + run.Faults().size(), rows.size());
        EXPECT_GE(run.Moved().size(), 3U); // the rest goes on
        Tree expected = before;
        for (const RenameRow& row : run.Moved())
            if (!row.copies) expected.erase(row.from);
        for (const RenameRow& row : run.Moved()) expected[row.to] = before.at(row.from);
        EXPECT_EQ(d.Standing(), expected);
    }
    EXPECT_GT(calls, 5);
}

// What even the way back cannot mend is told by name, and the last word is with the undo.
TEST(RenameRun, AnExchangeThatIsStuckSaysWhereItsFileStands) {
    RunDesk d;
    Fill(d.folder, {{"a.jpg", "1"}, {"b.jpg", "2"}});
    int calls = 0;
    d.files.onChange = [&](const std::string&, const std::string&) {
        return ++calls > 1 ? std::string("gone") : std::string();
    };
    const RenameRun run = d.Run({{"a.jpg", "b.jpg"}, {"b.jpg", "a.jpg"}});
    EXPECT_NE(Faults(run.Faults()).find("see 'a (renaming).jpg': gone"), std::string::npos);
    EXPECT_EQ(d.Standing(), (Tree{{"a (renaming).jpg", "1"}, {"b.jpg", "2"}}));
    d.files.onChange = nullptr;
    d.command.reset();
    d.history.Undo([](std::size_t) { return true; });
    EXPECT_EQ(d.Standing(), (Tree{{"a.jpg", "1"}, {"b.jpg", "2"}}));
}

} // namespace
} // namespace tarn::testing
