// What commands did to the disk, taken back on real files.
#include "history/Changes.h"
#include "history/History.h"

#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

using Paths = std::vector<std::string>;

struct UndoDesk {
    TestFolder folder;
    ForwardingFiles files;
    History history{files, {}};
    std::string error;

    explicit UndoDesk(const Tree& tree) { Fill(folder, tree); }
    std::string At(const std::string& name) const { return folder.Path() + "/" + name; }
    Tree Standing() const { return ReadTree(folder.Path()); }
    // A command that threw these away.
    void ThrowAway(const std::string& what, const Paths& names) {
        Changes changes(history, what);
        for (const std::string& name : names) changes.ThrowAway(At(name), &error);
    }
    // A command that copied.
    void Copy(const std::string& from, const std::string& to) {
        Changes changes(history, "Copy");
        changes.CopyTo(At(from), At(to), &error);
    }
    UndoResult Undo(std::size_t most = SIZE_MAX) {
        return history.Undo([most](std::size_t number) { return number <= most; });
    }
    UndoResult Redo() {
        return history.Redo([](std::size_t) { return true; });
    }
    std::string Next() { return history.NextToUndo() ? history.NextToUndo()->what : ""; }
};

TEST(History, TheLastChangeIsTakenBackFirst) {
    const Tree before{{"a", "1"}, {"b", "2"}, {"c", "3"}};
    UndoDesk d(before);
    {
        Changes changes(d.history, "Much");
        EXPECT_TRUE(changes.ThrowAway(d.At("a"), &d.error));
        EXPECT_TRUE(changes.Rename(d.At("b"), d.At("a"), &d.error)); // free only now
        EXPECT_TRUE(changes.CopyTo(d.At("c"), d.At("a"), &d.error, Standing::ThrowAway));
    }
    EXPECT_EQ(d.Standing(), (Tree{{"a", "3"}, {"c", "3"}}));
    { const Changes nothing(d.history, "Nothing"); }
    EXPECT_EQ(d.Next(), "Much");
    const UndoResult result = d.Undo();
    EXPECT_EQ(d.Standing(), before);
    EXPECT_EQ(result.back, (Paths{d.At("a"), d.At("b"), d.At("a")}));
    EXPECT_EQ(result.text, "Undone: Much; back again: 'a', 'b', 'a'");
    EXPECT_EQ(d.Undo().text, "");
    EXPECT_EQ(d.Redo().text, "Done again: Much");
    EXPECT_EQ(d.Standing(), (Tree{{"a", "3"}, {"c", "3"}}));
    d.Undo();
    EXPECT_EQ(d.Standing(), before);
}

TEST(History, ManyThatComeBackAreNamedInShort) {
    UndoDesk d({{"a", "1"}, {"b", "2"}, {"c", "3"}, {"d", "4"}, {"e", "5"}});
    d.ThrowAway("Five", {"a", "b", "c", "d", "e"});
    EXPECT_EQ(d.Undo().text, "Undone: Five; back again: 'a', 'b', 'c' and 2 more");
}

TEST(History, ACopyGoesOnlyWhileItIsOneAndItsOriginalIsThere) {
    UndoDesk d(Tree{{"a", "1"}});
    SetFileTime(d.At("a"), 2001, 2, 3, 4, 5, 6);
    d.Copy("a", "copy");
    d.folder.Write("copy", "edited");
    EXPECT_EQ(d.Undo().text,
              "NOT undone: Copy; 1 not taken back, first copy - it has been changed since");
    d.folder.Write("copy", "1"); // dated since, but the same bytes
    std::filesystem::rename(d.At("a"), d.At("away"));
    EXPECT_EQ(d.Undo().text,
              "NOT undone: Copy; 1 not taken back, first copy - what it is a copy of is not back");
    EXPECT_EQ(d.Standing(), (Tree{{"away", "1"}, {"copy", "1"}}));
    std::filesystem::rename(d.At("away"), d.At("a"));
    EXPECT_EQ(d.Undo().text, "Undone: Copy");
    EXPECT_EQ(d.Standing(), (Tree{{"a", "1"}}));
    d.Copy("a", "gone by itself");
    std::filesystem::remove(d.At("gone by itself"));
    EXPECT_EQ(d.Undo().text, "Undone: Copy");
}

TEST(History, WhatCannotBeTakenBackWaitsBehindTheOthers) {
    UndoDesk d({{"a", "1"}, {"b", "2"}, {"z", "3"}});
    d.ThrowAway("Older", {"z"});
    d.ThrowAway("Newer", {"a", "b"});
    d.folder.Write("a", "another by now");
    const UndoResult result = d.Undo();
    EXPECT_EQ(result.back, Paths{d.At("b")});
    EXPECT_TRUE(
        result.text.starts_with("Undone: Newer; back again: 'b'; 1 not taken back, first a - "))
        << result.text;
    EXPECT_EQ(d.Standing(), (Tree{{"a", "another by now"}, {"b", "2"}}));
    EXPECT_EQ(d.Next(), "Older");
    d.Undo();
    EXPECT_EQ(d.Next(), "Newer");
    EXPECT_EQ(d.history.StepsToGo(*d.history.NextToUndo()), 1U);
    std::filesystem::remove(d.At("a"));
    EXPECT_EQ(d.Undo().back, Paths{d.At("a")});
    EXPECT_EQ(d.Standing(), (Tree{{"a", "1"}, {"b", "2"}, {"z", "3"}}));
}

TEST(History, WhatWasCancelledIsNext) {
    UndoDesk d({{"a", "1"}, {"b", "2"}, {"z", "3"}});
    d.ThrowAway("Older", {"z"});
    d.ThrowAway("Newer", {"a", "b"});
    EXPECT_EQ(d.Undo(1).text,
              "Undone: Newer; back again: 'b'; 1 not taken back, first a - cancelled");
    EXPECT_EQ(d.Next(), "Newer");
    EXPECT_EQ(d.history.StepsToGo(*d.history.NextToUndo()), 1U);
    EXPECT_EQ(d.Undo().text, "Undone: Newer; back again: 'a'");
    EXPECT_EQ(d.Next(), "Older");
}

TEST(Changes, WhatCannotBeTakenBackStaysWrittenDown) {
    UndoDesk d({{"a", "1"}, {"b", "2"}, {"c", "3"}});
    Changes changes(d.history, "Change");
    for (const char* name : {"a", "b", "c"}) changes.ThrowAway(d.At(name), &d.error);
    d.files.Refuse("restore", "locked", "/b");
    std::string error;
    changes.TakeBack(1, &error); // the first is kept
    EXPECT_EQ(error, "locked");
    EXPECT_EQ(d.Standing(), (Tree{{"c", "3"}}));
    ASSERT_EQ(changes.Count(), 2U);
    EXPECT_TRUE(changes.HasThrown(d.At("a")));
    EXPECT_TRUE(changes.HasThrown(d.At("b")));
    d.files.onChange = nullptr;
    changes.TakeBack(&error);
    EXPECT_EQ(d.Standing(), (Tree{{"a", "1"}, {"b", "2"}, {"c", "3"}}));
}

TEST(Changes, AMoveIsARenameOrACopyAndIsTakenBackAsWhatItWas) {
    const Tree before{{"a", "1"}, {"b", "2"}, {"t", "stood there"}};
    UndoDesk d(before);
    Changes changes(d.history, "Change");
    EXPECT_FALSE(changes.MoveTo(d.At("a"), d.At("t"), &d.error));
    EXPECT_EQ(d.error, "File exists");
    ASSERT_TRUE(changes.MoveTo(d.At("a"), d.At("t"), &d.error, Standing::ThrowAway)) << d.error;
    EXPECT_TRUE(changes.EndMove(d.At("a"), &d.error));
    EXPECT_EQ(d.Standing(), (Tree{{"b", "2"}, {"t", "1"}}));
    // As onto another disk: a link's file is copied.
    std::filesystem::create_symlink("b", d.At("link"));
    ASSERT_TRUE(changes.MoveTo(d.At("link"), d.At("u"), &d.error)) << d.error;
    d.folder.Write("b", "22");
    EXPECT_FALSE(changes.EndMove(d.At("link"), &d.error));
    EXPECT_EQ(d.error, "it has changed since it was copied");
    d.folder.Write("b", "2");
    changes.TakeBack(&d.error);
    std::filesystem::remove(d.At("link"));
    EXPECT_EQ(d.Standing(), before);
}

TEST(Changes, ACopyThatStoodForARenameIsTakenBackAsOne) {
    const Tree before{{"a", "1"}, {"b", "stood there"}};
    for (const bool fails : {false, true}) {
        SCOPED_TRACE(fails);
        UndoDesk d(before);
        Changes changes(d.history, "Change");
        changes.CopyTo(d.At("a"), d.At("b"), &d.error, Standing::ThrowAway);
        if (fails) d.files.Refuse("remove", "read only");
        std::string error;
        changes.EndRename(d.At("a"), d.At("b"), &error);
        EXPECT_EQ(error, fails ? "read only" : "");
        EXPECT_EQ(d.Standing(), fails ? (Tree{{"a", "1"}, {"b", "1"}}) : (Tree{{"b", "1"}}));
        changes.TakeBack(&error);
        EXPECT_EQ(d.Standing(), before);
    }
}

// Another program has written it between: what stands only there would be gone for good.
TEST(Changes, WhatHasChangedSinceItsCopyStays) {
    UndoDesk d(Tree{{"a", "1"}});
    Changes changes(d.history, "Rename");
    ASSERT_TRUE(changes.CopyTo(d.At("a"), d.At("b"), &d.error));
    d.folder.Write("a", "edited");
    EXPECT_FALSE(changes.EndRename(d.At("a"), d.At("b"), &d.error));
    EXPECT_EQ(d.error, "it has changed since it was copied");
    EXPECT_EQ(d.Standing(), (Tree{{"a", "edited"}, {"b", "1"}}));
}

} // namespace
} // namespace tarn::testing
