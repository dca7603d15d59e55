// What a command on one picture takes along, and that a fault on the way leaves all as it stood.
#include "fileops/PicturePlan.h"

#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

struct PlanDesk {
    TestFolder pictures;
    TestFolder noteFolder;
    ForwardingFiles files;
    std::string error;

    PlanDesk(const Tree& pictureTree, const Tree& notes) {
        Fill(pictures, pictureTree);
        Fill(noteFolder, notes);
    }
    std::string At(const std::string& name) const { return pictures.Path() + "/" + name; }
    std::string Note(const std::string& name) const { return noteFolder.Path() + "/" + name; }
    NotesPlace Place() const {
        NotesPlace place{noteFolder.Path(), {}};
        for (const auto& [name, bytes] : ReadTree(pictures.Path())) place.listed.push_back(name);
        return place;
    }
    DeletePlan Delete(const std::string& name) const {
        return PlanDelete(files, Place(), At(name), true);
    }
    NewNamePlan NewName(const std::string& from, const std::string& to) const {
        return PlanNewName(files, Place(), At(from), to);
    }
};

TEST(DeletePlan, ANoteGoesAlongUnlessAnotherPictureHasItToo) {
    const PlanDesk d({{"m31.jpg", ""}, {"m42.jpg", ""}, {"M42.fit", ""}, {"m1.jpg", ""}},
                     {{"M31.ENF", "galaxy"}, {"m42.enf", "nebula"}});
    std::filesystem::create_directory(d.Note("m1.enf"));
    EXPECT_EQ(d.Delete("m31.jpg").note, d.Note("M31.ENF")); // as it stands
    EXPECT_EQ(d.Delete("m31.jpg").keptFor, "");
    EXPECT_EQ(d.Delete("m42.jpg").note, "");
    EXPECT_EQ(d.Delete("m42.jpg").keptFor, "M42.fit");
    EXPECT_EQ(d.Delete("m1.jpg").note, ""); // a folder is no note
    EXPECT_EQ(PlanDelete(d.files, d.Place(), d.At("m31.jpg"), false).note, "");
    EXPECT_EQ(PlanDelete(d.files, {}, d.At("m31.jpg"), true).note, "");
}

TEST(NewNamePlan, NamesThatCannotBe) {
    EXPECT_EQ(FaultOfName("a.jpg", "a.jpg"), "Filenames are the same");
    EXPECT_EQ(FaultOfName("", "a.jpg"), "New filename is blank");
    EXPECT_EQ(FaultOfName("b/a.jpg", "a.jpg"), "New filename must not contain '/'");
    EXPECT_EQ(FaultOfName(std::string("b\0.jpg", 6), "a.jpg"), "New filename must not contain '/'");
    EXPECT_EQ(FaultOfName(".jpg", "a.jpg"), "New filename must not begin with '.'");
    EXPECT_EQ(FaultOfName(std::string(256, 'x'), "a.jpg"), "New filename is too long");
    EXPECT_EQ(FaultOfName(std::string(255, 'x'), "a.jpg"), "");
    EXPECT_EQ(FaultOfName("A.jpg", "a.jpg"), "");
}

TEST(NewNamePlan, WhereTheNoteGoes) {
    const PlanDesk d({{"a.jpg", "1"}, {"b.jpg", "2"}, {"B.fit", "3"}, {"c.jpg", "4"}},
                     {{"a.enf", "of a"}, {"b.enf", "of b"}, {"c.enf", ""}, {"old.enf", "of none"}});
    const NewNamePlan free = d.NewName("a.jpg", "new.jpg");
    EXPECT_EQ(free.to, d.At("new.jpg"));
    EXPECT_EQ(free.noteFrom, d.Note("a.enf"));
    EXPECT_EQ(free.noteTo, d.Note("new.enf"));
    EXPECT_FALSE(free.noteStays);
    // One that belongs to no picture makes room, another picture's does not.
    EXPECT_EQ(d.NewName("a.jpg", "old.jpg").noteTo, d.Note("old.enf"));
    const NewNamePlan taken = d.NewName("a.jpg", "b.png");
    EXPECT_EQ(taken.notWritten, "B.fit");
    EXPECT_EQ(taken.noteFrom, "");
    EXPECT_TRUE(d.NewName("b.jpg", "new.jpg").noteStays);  // shared
    EXPECT_TRUE(d.NewName("a.jpg", "a.png").noteStays);    // keeps its name
    EXPECT_FALSE(d.NewName("a.jpg", "A.jpg").noteStays);   // in another case
    EXPECT_EQ(d.NewName("c.jpg", "new.jpg").noteFrom, ""); // an empty one is none
}

TEST(NewNamePlan, RoomIsMadeForFilesAlone) {
    PlanDesk d({{"a.jpg", "1"}, {"B.jpg", "2"}}, {});
    std::filesystem::create_directory(d.At("c.jpg"));
    Changes changes(d.files);
    EXPECT_FALSE(MakeRoom(d.files, d.At("a.jpg"), d.At("c.jpg"), changes, &d.error));
    EXPECT_EQ(d.error, "A folder of that name stands there");
    EXPECT_TRUE(MakeRoom(d.files, d.At("a.jpg"), d.At("free.jpg"), changes, &d.error));
    EXPECT_TRUE(MakeRoom(d.files, d.At("a.jpg"), d.At("A.jpg"), changes, &d.error));
    EXPECT_TRUE(changes.Written().empty());
    EXPECT_TRUE(MakeRoom(d.files, d.At("a.jpg"), d.At("b.jpg"), changes, &d.error));
    ASSERT_EQ(changes.Written().size(), 1U);
    EXPECT_EQ(changes.Written()[0].from, d.At("B.jpg"));
}

const Tree kPictures{{"a.jpg", "1"}, {"b.jpg", "2"}};
const Tree kNotes{{"a.enf", "of a"}, {"new.enf", "of none"}};

// Each call fails once: done with all that belongs to it, or nothing is.
void SweepFaults(bool (*carryOut)(const NewNamePlan&, Files&, Changes&, std::string*),
                 const Tree& pictures, const Tree& notes, bool oldNoteMayStay) {
    int calls = 1;
    for (int failing = 0; failing <= calls; ++failing) {
        SCOPED_TRACE(failing);
        PlanDesk d(kPictures, kNotes);
        const NewNamePlan plan = d.NewName("a.jpg", "new.jpg");
        int call = 0;
        d.files.onChange = [&](const std::string&, const std::string&) {
            return ++call == failing ? std::string("fault") : std::string();
        };
        Changes changes(d.files);
        const bool done = carryOut(plan, d.files, changes, &d.error);
        d.files.onChange = nullptr;
        if (failing == 0) calls = call;
        EXPECT_EQ(d.error, failing == 0 ? "" : "fault");
        Tree expectedNotes = done ? notes : kNotes;
        if (done && failing > 0) {
            EXPECT_TRUE(oldNoteMayStay);
            expectedNotes["a.enf"] = "of a";
        }
        EXPECT_EQ(ReadTree(d.pictures.Path()), done ? pictures : kPictures);
        EXPECT_EQ(ReadTree(d.noteFolder.Path()), expectedNotes);
        std::string ignored;
        changes.TakeBack(&ignored);
        EXPECT_EQ(ReadTree(d.pictures.Path()), kPictures);
        EXPECT_EQ(ReadTree(d.noteFolder.Path()), kNotes);
    }
    EXPECT_GE(calls, 2);
}

TEST(NewNamePlan, ARenameIsWholeOrNone) {
    SweepFaults(CarryOutRename, {{"new.jpg", "1"}, {"b.jpg", "2"}}, {{"new.enf", "of a"}}, true);
}

TEST(NewNamePlan, ADuplicateIsWholeOrNone) {
    SweepFaults(CarryOutDuplicate, {{"a.jpg", "1"}, {"new.jpg", "1"}, {"b.jpg", "2"}},
                {{"a.enf", "of a"}, {"new.enf", "of a"}}, false);
}

TEST(FitsFiles, OnlyThePlainOnesOfTheFolder) {
    const PlanDesk d({{"b.FIT", ""}, {"a.fits", ""}, {"c.fit.jpg", ""}, {"fit", ""}}, {});
    std::filesystem::create_directory(d.At("d.fit"));
    EXPECT_EQ(FitsFiles(d.files, d.pictures.Path()),
              (std::vector<std::string>{d.At("a.fits"), d.At("b.FIT")}));
}

} // namespace
} // namespace tarn::testing
