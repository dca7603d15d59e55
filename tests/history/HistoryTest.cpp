// Commands taken back and done again by this and by later runs.
#include "history/History.h"
#include "history/Changes.h"

#include "common/paths.h"
#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <filesystem>
#include <random>

namespace tarn::testing {
namespace {

const GoOn kAll = [](std::size_t) { return true; };

struct Desk {
    TestFolder pictures;
    TestFolder state;
    ForwardingFiles files;
    std::unique_ptr<History> history;
    std::string error;

    explicit Desk(const Tree& tree) {
        Fill(pictures, tree);
        Restart();
    }
    void Restart() { history = std::make_unique<History>(files, state.Path() + "/history.db"); }
    std::string At(const std::string& name) const { return pictures.Path() + "/" + name; }
    Tree Standing() const { return ReadTree(pictures.Path()); }
};

// A random change of files that are there, in a command of its own.
void ChangeAtRandom(Desk& desk, std::mt19937& random) {
    const Tree tree = desk.Standing();
    if (tree.empty()) return;
    auto at = tree.begin();
    std::advance(at, long(random() % tree.size()));
    const std::string path = desk.At(at->first);
    const std::string other = desk.At("n" + std::to_string(random() % 8));
    Changes changes(*desk.history, "Change");
    std::string error;
    switch (random() % 8) {
    case 0:
        changes.ThrowAway(path, &error);
        break;
    case 1:
        changes.Rename(path, other, &error);
        break;
    case 2:
        changes.CopyTo(path, other, &error, Standing::ThrowAway);
        break;
    case 3:
        changes.Write(path, "text " + std::to_string(random()), &error);
        break;
    case 4:
        changes.WriteAt(path, 0, "#", &error);
        break;
    case 5:
        changes.SetTimes(path, 1'000'000'000 + std::int64_t(random() % 1000), &error);
        break;
    case 6:
        changes.MoveTo(path, other, &error, Standing::ThrowAway);
        break;
    default:
        changes.Write(other, "new", &error);
        break;
    }
}

TEST(History, FiveHundredCommandsGoBackToTheFirstTreeAndForthToTheLast) {
    const unsigned seed = 20261126;
    std::mt19937 random(seed);
    const Tree first{{"a", "1"}, {"b", "22"}, {"c", "333"}, {"d", "4444"}, {"e", "55555"}};
    Desk desk(first);
    constexpr int kCommands = 500;
    for (int i = 0; i < kCommands; ++i) {
        ChangeAtRandom(desk, random);
        if (i % 50 == 0) desk.Restart();
        if (desk.Standing().size() < 3) desk.pictures.Write("more" + std::to_string(i), "more");
    }
    // Files that came from outside are no command's: only what follows them is walked back.
    const Tree last = desk.Standing();
    int undone = 0;
    while (desk.history->NextToUndo() && undone < kCommands) {
        const UndoResult result = desk.history->Undo(kAll);
        ASSERT_TRUE(result.done) << "seed " << seed << ": " << result.text;
        if (++undone % 70 == 0) desk.Restart();
    }
    Tree now = desk.Standing();
    std::erase_if(now, [](const auto& each) { return each.first.starts_with("more"); });
    EXPECT_EQ(now, first);
    while (desk.history->NextToRedo()) {
        const UndoResult result = desk.history->Redo(kAll);
        ASSERT_TRUE(result.done) << "seed " << seed << ": " << result.text;
    }
    EXPECT_EQ(desk.Standing(), last);
}

TEST(History, AnotherCommandEndsWhatCanBeDoneAgain) {
    Desk desk({{"a", "1"}, {"b", "2"}});
    for (const char* name : {"a", "b"}) {
        Changes changes(*desk.history, std::string("Delete ") + name);
        changes.ThrowAway(desk.At(name), &desk.error);
    }
    desk.history->Undo(kAll);
    desk.history->Undo(kAll);
    EXPECT_EQ(desk.history->NextToRedo()->what, "Delete a");
    EXPECT_EQ(desk.history->Redo(kAll).text, "Done again: Delete a");
    EXPECT_EQ(desk.history->NextToRedo()->what, "Delete b");
    {
        Changes changes(*desk.history, "Copy");
        changes.CopyTo(desk.At("b"), desk.At("c"), &desk.error);
    }
    EXPECT_FALSE(desk.history->NextToRedo());
    EXPECT_EQ(desk.history->Redo(kAll).text, "");
}

TEST(History, WhatWasDoneUnaskedIsListedAndPassedOver) {
    Desk desk({{"a", "1"}, {"b", "2"}});
    const auto rename = [&](const char* from, const char* to, bool unasked) {
        Changes changes(*desk.history, std::string("Rename ") + from);
        if (unasked) changes.SetUnasked();
        changes.Rename(desk.At(from), desk.At(to), &desk.error);
    };
    rename("a", "a2", false);
    rename("b", "b2", true);
    desk.history->Undo(kAll);
    EXPECT_EQ(desk.Standing(), (Tree{{"a", "1"}, {"b2", "2"}}));
    EXPECT_FALSE(desk.history->NextToUndo());
    rename("b2", "b3", true);
    EXPECT_EQ(desk.history->Redo(kAll).text, "Done again: Rename a");
    EXPECT_EQ(desk.history->UndoOf(3, kAll).text, "Undone: Rename b2; back again: 'b2'");
}

TEST(History, AnEarlierCommandGoesBackWhereNothingTouchedItsFilesSince) {
    Desk desk({{"a", "1"}, {"b", "2"}});
    const auto rename = [&](const char* from, const char* to) {
        Changes changes(*desk.history, std::string("Rename ") + from);
        changes.Rename(desk.At(from), desk.At(to), &desk.error);
    };
    rename("a", "a2");
    rename("b", "b2");
    rename("b2", "b3");
    EXPECT_EQ(desk.history->UndoOf(2, kAll).text,
              "NOT undone: Rename b; its files were changed since by: Rename b2");
    EXPECT_EQ(desk.history->UndoOf(1, kAll).text, "Undone: Rename a; back again: 'a'");
    EXPECT_EQ(desk.history->UndoOf(1, kAll).text, "NOT undone: Rename a; it is undone already");
    EXPECT_EQ(desk.history->UndoOf(9, kAll).text, "There is no command 9");
    EXPECT_EQ(desk.Standing(), (Tree{{"a", "1"}, {"b3", "2"}}));
    EXPECT_EQ(desk.history->RedoOf(1, kAll).text, "Done again: Rename a");
    EXPECT_EQ(desk.Standing(), (Tree{{"a2", "1"}, {"b3", "2"}}));
}

TEST(History, WhatIsNotAsItWasLeftIsTold) {
    Desk desk({{"a", "1"}, {"b", "22"}, {"c", "333"}});
    {
        Changes changes(*desk.history, "Three");
        changes.Rename(desk.At("a"), desk.At("x"), &desk.error);
        changes.ThrowAway(desk.At("b"), &desk.error);
        changes.Write(desk.At("c"), "anew", &desk.error);
    }
    // It lives on elsewhere, so that the disk gives its number to no other file.
    const TestFolder elsewhere;
    std::filesystem::rename(desk.At("x"), elsewhere.Path() + "/x");
    desk.pictures.Write("x", "a file of another program");
    desk.pictures.Write("c", "edited since");
    std::filesystem::remove_all(Wastebasket());
    EXPECT_EQ(desk.history->Undo(kAll).text,
              "NOT undone: Three; 3 not taken back, first c - it has been changed since");
    EXPECT_EQ(desk.Standing(), (Tree{{"c", "edited since"}, {"x", "a file of another program"}}));
}

// A disk that does not answer has not taken it back.
TEST(History, WhatCannotBeLookedAtIsNotTakenForGone) {
    Desk desk(Tree{{"a", "1"}});
    {
        Changes changes(*desk.history, "Mark a");
        ASSERT_TRUE(changes.Write(desk.At("a.xmp"), "rating", &desk.error)) << desk.error;
    }
    desk.files.onAsk = [&](const std::string& verb, const std::string& path) {
        return verb == "look" && path == desk.At("a.xmp") ? "Input/output error" : "";
    };
    EXPECT_EQ(desk.history->Undo(kAll).text,
              "NOT undone: Mark a; 1 not taken back, first a.xmp - it cannot be looked at");
    EXPECT_EQ(desk.Standing(), (Tree{{"a", "1"}, {"a.xmp", "rating"}}));
    desk.files.onAsk = nullptr;
    EXPECT_EQ(desk.history->Undo(kAll).text, "Undone: Mark a");
    EXPECT_EQ(desk.Standing(), (Tree{{"a", "1"}}));
}

TEST(History, ALinkThatLeadsNowhereFromTheBasketComesBack) {
    Desk desk(Tree{{"a", "1"}});
    std::filesystem::create_symlink("a", desk.At("link"));
    {
        Changes changes(*desk.history, "Delete");
        ASSERT_TRUE(changes.ThrowAway(desk.At("link"), &desk.error)) << desk.error;
    }
    EXPECT_EQ(desk.history->Undo(kAll).text, "Undone: Delete; back again: 'link'");
    EXPECT_EQ(BytesOf(desk.At("link")), "1");
}

// The same names, other files: an older disk, or a copy of the folder in its place.
TEST(History, AnotherFileOfTheNameIsNotTaken) {
    Desk desk(Tree{{"a", "1"}});
    {
        Changes changes(*desk.history, "Rename");
        changes.Rename(desk.At("a"), desk.At("b"), &desk.error);
    }
    std::filesystem::rename(desk.At("b"), desk.At("away"));
    desk.pictures.Write("b", "not it");
    EXPECT_EQ(desk.history->Undo(kAll).text,
              "NOT undone: Rename; 1 not taken back, first a - another file stands there by now");
    std::filesystem::remove(desk.At("b"));
    EXPECT_EQ(desk.history->Undo(kAll).text,
              "NOT undone: Rename; 1 not taken back, first a - it is not there any more");
    std::filesystem::rename(desk.At("away"), desk.At("b"));
    EXPECT_EQ(desk.history->Undo(kAll).text, "Undone: Rename; back again: 'a'");
}

// As another program leaves them that keeps the times of what it writes.
TEST(History, WhatHasOtherBytesIsNotGivenBackThoughItLooksTheSame) {
    Desk desk(Tree{{"a.xmp", "rating 3"}});
    {
        Changes changes(*desk.history, "Write");
        changes.Write(desk.At("a.xmp"), "rating 4", &desk.error);
        changes.Write(desk.At("new.xmp"), "rating 1", &desk.error);
    }
    for (const char* name : {"a.xmp", "new.xmp"}) {
        const auto time = std::filesystem::last_write_time(desk.At(name));
        std::ofstream(desk.At(name)) << "rating 5";
        std::filesystem::last_write_time(desk.At(name), time);
    }
    EXPECT_EQ(desk.history->Undo(kAll).text, "NOT undone: Write; 2 not taken back, first new.xmp - "
                                             "it has been changed since");
    EXPECT_EQ(desk.Standing(), (Tree{{"a.xmp", "rating 5"}, {"new.xmp", "rating 5"}}));
}

TEST(History, MarksAndFoldersAndStagedFilesGoBothWays) {
    Desk desk(Tree{{"page", "old"}});
    {
        Changes changes(*desk.history, "Much");
        changes.MakeFolder(desk.At("sub"), &desk.error);
        changes.Marked(desk.At("page"), {Decision::Keep, 2}, {Decision::Reject, 0}, &desk.error);
        const auto staged = changes.Stage(desk.pictures.Path(), &desk.error);
        ASSERT_TRUE(staged);
        staged->Write("page", "new", &desk.error);
        staged->Write("other", "made", &desk.error);
        std::string failed;
        ASSERT_TRUE(staged->Place(&desk.error, &failed)) << desk.error;
    }
    EXPECT_EQ(BytesOf(desk.At("page")), "new");
    const UndoResult back = desk.history->Undo(kAll);
    EXPECT_TRUE(back.done) << back.text;
    EXPECT_EQ(desk.Standing(), (Tree{{"page", "old"}}));
    ASSERT_EQ(back.marks.size(), 1U);
    EXPECT_EQ(back.marks[0].change, SetTo({Decision::Keep, 2}));
    const UndoResult again = desk.history->Redo(kAll);
    EXPECT_TRUE(again.done) << again.text;
    EXPECT_EQ(BytesOf(desk.At("page")), "new");
    EXPECT_EQ(BytesOf(desk.At("other")), "made");
    EXPECT_TRUE(std::filesystem::is_directory(desk.At("sub")));
    ASSERT_EQ(again.marks.size(), 1U);
    EXPECT_EQ(again.marks[0].change, SetTo({Decision::Reject, 0}));
}

} // namespace
} // namespace tarn::testing
