// What a command on one picture takes along, and that a fault on the way leaves all as it stood.
#include "fileops/PicturePlan.h"
#include "history/History.h"

#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

struct PlanDesk {
    TestFolder pictures;
    TestFolder noteFolder;
    ForwardingFiles files;
    History history{files, {}};
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
    std::vector<Belonging> Deletes(const std::string& name, const NotesPlace& place,
                                   bool withNote = true) const {
        Belongings belongings(files, place);
        return PlanDelete(belongings, At(name), withNote).along;
    }
    std::vector<Belonging> Deletes(const std::string& name) const { return Deletes(name, Place()); }
    NewNamePlan NewPlace(const std::string& from, const std::string& to) const {
        Belongings belongings(files, Place());
        return PlanPlace(belongings, At(from), to);
    }
    NewNamePlan NewName(const std::string& from, const std::string& to) const {
        return NewPlace(from, At(to));
    }
    Belonging NoteAt(const std::string& name, const std::string& sharedWith = {}) const {
        return {BelongingKind::Note, Note(name), sharedWith};
    }
    Belonging SidecarAt(const std::string& name, const std::string& sharedWith = {}) const {
        return {BelongingKind::Sidecar, At(name), sharedWith};
    }
};

TEST(DeletePlan, ANoteGoesAlongUnlessAnotherPictureHasItToo) {
    const PlanDesk d({{"m31.jpg", ""}, {"m42.jpg", ""}, {"M42.fit", ""}, {"m1.jpg", ""}},
                     {{"M31.ENF", "galaxy"}, {"m42.enf", "nebula"}});
    std::filesystem::create_directory(d.Note("m1.enf"));
    using All = std::vector<Belonging>;
    EXPECT_EQ(d.Deletes("m31.jpg"), All{d.NoteAt("M31.ENF")}); // as it stands
    EXPECT_EQ(d.Deletes("m42.jpg"), All{d.NoteAt("m42.enf", "M42.fit")});
    EXPECT_EQ(d.Deletes("m1.jpg"), All()); // a folder is no note
    EXPECT_EQ(d.Deletes("m31.jpg", d.Place(), false), All());
    EXPECT_EQ(d.Deletes("m31.jpg", {}), All());
}

TEST(Belongings, SidecarsInAnyCaseAndWhoElseHasThem) {
    const PlanDesk d({{"m31.CR2", ""},
                      {"m31.jpg", ""},
                      {"M31.XMP", "of both"},
                      {"m31.jpg.xmp", "of the JPEG"},
                      {"m42.fit", ""},
                      {"m42.Xmp", "of it"}},
                     {});
    using All = std::vector<Belonging>;
    EXPECT_EQ(d.Deletes("m31.CR2"), All{d.SidecarAt("M31.XMP", "m31.jpg")});
    EXPECT_EQ(d.Deletes("m31.jpg"),
              (All{d.SidecarAt("m31.jpg.xmp"), d.SidecarAt("M31.XMP", "m31.CR2")}));
    EXPECT_EQ(d.Deletes("m42.fit", d.Place(), false), All{d.SidecarAt("m42.Xmp")}); // a part of it
    EXPECT_EQ(d.Deletes("m31.jpg.xmp"), All()); // it has none itself
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
    using All = std::vector<Along>;
    const auto note = [&](const char* from, const char* to, bool stays) {
        return All{{BelongingKind::Note, d.Note(from), d.Note(to), stays}};
    };
    EXPECT_EQ(free.along, note("a.enf", "new.enf", false));
    // One that belongs to no picture makes room, another picture's does not.
    EXPECT_EQ(d.NewName("a.jpg", "old.jpg").along, note("a.enf", "old.enf", false));
    const NewNamePlan taken = d.NewName("a.jpg", "b.png");
    EXPECT_EQ(taken.notWritten, "B.fit");
    EXPECT_EQ(taken.along, All());
    EXPECT_EQ(d.NewName("b.jpg", "new.jpg").along, note("b.enf", "new.enf", true)); // shared
    EXPECT_EQ(d.NewName("a.jpg", "a.png").along, All()); // it keeps its name
    EXPECT_EQ(d.NewName("a.jpg", "A.jpg").along, note("a.enf", "A.enf", false));
    EXPECT_EQ(d.NewName("c.jpg", "new.jpg").along, All());           // an empty one is none
    EXPECT_EQ(d.NewPlace("a.jpg", "/elsewhere/a.jpg").along, All()); // notes stay where they lie
}

TEST(NewNamePlan, WhereSidecarsGo) {
    const PlanDesk d({{"a.CR2", "1"},
                      {"a.jpg", "2"},
                      {"a.xmp", "of both"},
                      {"b.fit", "3"},
                      {"b.fit.xmp", "of b"},
                      {"c.fit", "4"},
                      {"C.XMP", "of c"},
                      {"d.fit", "5"}},
                     {});
    using All = std::vector<Along>;
    const auto sidecar = [&](const char* from, const std::string& to, bool stays) {
        return All{{BelongingKind::Sidecar, d.At(from), to, stays}};
    };
    EXPECT_EQ(d.NewName("b.fit", "new.FIT").along,
              sidecar("b.fit.xmp", d.At("new.FIT.xmp"), false));
    EXPECT_EQ(d.NewPlace("b.fit", "/elsewhere/b.fit").along,
              sidecar("b.fit.xmp", "/elsewhere/b.fit.xmp", false));
    EXPECT_EQ(d.NewName("a.CR2", "new.CR2").along, sidecar("a.xmp", d.At("new.xmp"), true));
    EXPECT_EQ(d.NewName("a.CR2", "a.dng").along, All()); // it serves both names
    // Under the shared name it would become another picture's.
    EXPECT_EQ(d.NewName("c.fit", "d.jpg").along, sidecar("C.XMP", d.At("d.jpg.xmp"), false));
    // A picture that is replaced leaves no mark to the new one.
    EXPECT_EQ(d.NewName("d.fit", "b.fit").givesWay, d.At("b.fit.xmp"));
    EXPECT_EQ(d.NewName("c.fit", "free.fit").givesWay, "");
}

TEST(NewNamePlan, RoomIsMadeForFilesAlone) {
    PlanDesk d({{"a.jpg", "1"}, {"B.jpg", "2"}}, {});
    std::filesystem::create_directory(d.At("c.jpg"));
    Changes changes(d.history, "Change");
    EXPECT_FALSE(MakeRoom(d.files, d.At("a.jpg"), d.At("c.jpg"), changes, &d.error));
    EXPECT_EQ(d.error, "A folder of that name stands there");
    EXPECT_TRUE(MakeRoom(d.files, d.At("a.jpg"), d.At("free.jpg"), changes, &d.error));
    EXPECT_TRUE(MakeRoom(d.files, d.At("a.jpg"), d.At("A.jpg"), changes, &d.error));
    EXPECT_EQ(changes.Count(), 0U);
    EXPECT_TRUE(MakeRoom(d.files, d.At("a.jpg"), d.At("b.jpg"), changes, &d.error));
    EXPECT_EQ(changes.Count(), 1U);
    EXPECT_TRUE(changes.HasThrown(d.At("B.jpg")));
}

const Tree kPictures{{"a.jpg", "1"}, {"a.jpg.xmp", "mark of a"}, {"b.jpg", "2"}};
const Tree kNotes{{"a.enf", "of a"}, {"new.enf", "of none"}};

// Each call fails once: done with all that belongs to it, or nothing is.
void SweepFaults(bool (*carryOut)(const NewNamePlan&, Changes&, std::string*, LeftBehind*),
                 const Tree& pictures, const Tree& notes, bool oldMayStay) {
    int calls = 1;
    for (int failing = 0; failing <= calls; ++failing) {
        SCOPED_TRACE(failing);
        PlanDesk d(kPictures, kNotes);
        const NewNamePlan plan = d.NewName("a.jpg", "new.jpg");
        int call = 0;
        d.files.onChange = [&](const std::string&, const std::string&) {
            return ++call == failing ? std::string("fault") : std::string();
        };
        Changes changes(d.history, "Change");
        LeftBehind left;
        const bool done = carryOut(plan, changes, &d.error, &left);
        d.files.onChange = nullptr;
        if (failing == 0) calls = call;
        EXPECT_EQ(done ? left.why : d.error, failing == 0 ? "" : "fault");
        Tree expectedPictures = done ? pictures : kPictures;
        Tree expectedNotes = done ? notes : kNotes;
        if (done && failing > 0) {
            EXPECT_TRUE(oldMayStay);
            if (left.kind == BelongingKind::Note) expectedNotes["a.enf"] = "of a";
            if (left.kind == BelongingKind::Sidecar) expectedPictures["a.jpg.xmp"] = "mark of a";
        }
        EXPECT_EQ(ReadTree(d.pictures.Path()), expectedPictures);
        EXPECT_EQ(ReadTree(d.noteFolder.Path()), expectedNotes);
        std::string ignored;
        changes.TakeBack(&ignored);
        EXPECT_EQ(ReadTree(d.pictures.Path()), kPictures);
        EXPECT_EQ(ReadTree(d.noteFolder.Path()), kNotes);
    }
    EXPECT_GE(calls, 2);
}

TEST(NewNamePlan, ARenameIsWholeOrNone) {
    SweepFaults(CarryOutRename, {{"new.jpg", "1"}, {"new.jpg.xmp", "mark of a"}, {"b.jpg", "2"}},
                {{"new.enf", "of a"}}, true);
}

TEST(NewNamePlan, ADuplicateIsWholeOrNone) {
    SweepFaults(CarryOutDuplicate,
                {{"a.jpg", "1"},
                 {"a.jpg.xmp", "mark of a"},
                 {"new.jpg", "1"},
                 {"new.jpg.xmp", "mark of a"},
                 {"b.jpg", "2"}},
                {{"a.enf", "of a"}, {"new.enf", "of a"}}, false);
}

// Two pictures that share a sidecar move, one after the other: the last one takes it away.
TEST(NewNamePlan, ASharedSidecarGoesWithTheLastOfItsPictures) {
    const Tree all{{"a.CR2", "1"}, {"a.jpg", "2"}, {"a.xmp", "of both"}};
    PlanDesk d(all, {});
    const TestFolder target;
    Changes changes(d.history, "Change");
    Belongings belongings(d.files, {});
    for (const char* name : {"a.CR2", "a.jpg"}) {
        const NewNamePlan plan = PlanPlace(belongings, d.At(name), target.Path() + "/" + name);
        LeftBehind left;
        EXPECT_TRUE(CarryOutRename(plan, changes, &d.error, &left)) << d.error;
        EXPECT_EQ(left.why, "");
        EXPECT_EQ(ReadTree(target.Path()).count("a.xmp"), 1U) << name;
    }
    EXPECT_EQ(ReadTree(target.Path()), all);
    EXPECT_EQ(ReadTree(d.pictures.Path()), Tree());
    changes.TakeBack(&d.error);
    EXPECT_EQ(ReadTree(d.pictures.Path()), all);
}

TEST(FitsFiles, OnlyThePlainOnesOfTheFolder) {
    const PlanDesk d({{"b.FIT", ""}, {"a.fits", ""}, {"c.fit.jpg", ""}, {"fit", ""}}, {});
    std::filesystem::create_directory(d.At("d.fit"));
    EXPECT_EQ(FitsFiles(d.files, d.pictures.Path()),
              (std::vector<std::string>{d.At("a.fits"), d.At("b.FIT")}));
}

} // namespace
} // namespace tarn::testing
