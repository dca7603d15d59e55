// Commands whose program is killed at each of their steps: a later run takes them back or finishes
// them, and the files are as before or as after the command, with their times and modes.
#include "history/Changes.h"
#include "history/History.h"
#include "history/Rehearsal.h"

#include "common/paths.h"
#include "support/ForwardingFiles.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarn::testing {
namespace {

constexpr std::time_t kLongAgo = 1'100'000'000; // all that is given is older

// Contents, time to the nanosecond and mode, by name; what is written now has any time.
Tree WholeTree(const std::string& folder) {
    Tree tree = ReadTree(folder);
    if (tree.contains("sub"))
        for (const auto& [name, bytes] : ReadTree(folder + "/sub")) tree["sub/" + name] = bytes;
    for (auto& [name, bytes] : tree) {
        struct stat info {};
        ::stat((folder + "/" + name).c_str(), &info);
        bytes += " " + (info.st_mtim.tv_sec > kLongAgo ? "new"
                                                       : std::to_string(info.st_mtim.tv_sec) + "." +
                                                             std::to_string(info.st_mtim.tv_nsec));
        bytes += " " + std::to_string(info.st_mode);
    }
    return tree;
}

struct Act {
    const char* name;
    Tree before;
    void (*run)(Changes& changes, const std::string& folder, const std::string& otherDisk);
    bool isPlanned = true; // else what was not begun is not known
};

void RenameMany(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"a", "tmp"}, {"b", "a"}, {"tmp", "b"}, {"c", "d"}})
        EXPECT_TRUE(changes.Rename(JoinPath(folder, from), JoinPath(folder, to), &error)) << error;
}

void ThrowMany(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    for (const char* name : {"a", "b", "c"}) changes.ThrowAway(JoinPath(folder, name), &error);
}

// As a rename of a picture with its note, over a name that is taken.
void RenameWithNote(Changes& changes, const std::string& folder, const std::string&) {
    const auto at = [&](const char* name) { return JoinPath(folder, name); };
    std::string error;
    changes.CopyTo(at("a.enf"), at("b.enf"), &error);
    changes.ThrowAway(at("b"), &error);
    changes.Rename(at("a"), at("b"), &error);
    changes.EndRename(at("a.enf"), at("b.enf"), &error);
}

void CopyOver(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    changes.CopyTo(JoinPath(folder, "a"), JoinPath(folder, "b"), &error, Standing::ThrowAway);
    changes.CopyTo(JoinPath(folder, "a"), JoinPath(folder, "new"), &error);
}

void WriteSome(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    changes.Write(JoinPath(folder, "a"), "anew", &error);
    changes.WriteAt(JoinPath(folder, "b"), 1, "XY", &error);
    changes.SetTimes(JoinPath(folder, "c"), 1'000'000'000, &error);
    changes.Write(JoinPath(folder, "made"), "made", &error);
}

void MoveFar(Changes& changes, const std::string& folder, const std::string& otherDisk) {
    std::string error;
    changes.CopyTo(JoinPath(folder, "a.xmp"), JoinPath(otherDisk, "a.xmp"), &error);
    EXPECT_TRUE(changes.MoveTo(JoinPath(folder, "a"), JoinPath(otherDisk, "a"), &error)) << error;
    EXPECT_TRUE(changes.EndMove(JoinPath(folder, "a"), &error)) << error;
    changes.EndRename(JoinPath(folder, "a.xmp"), JoinPath(otherDisk, "a.xmp"), &error);
    EXPECT_TRUE(changes.MoveTo(JoinPath(folder, "b"), JoinPath(otherDisk, "b"), &error)) << error;
    EXPECT_TRUE(changes.EndMove(JoinPath(folder, "b"), &error)) << error;
}

void MakeFolderFor(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    changes.MakeFolder(JoinPath(folder, "sub"), &error);
    changes.MoveTo(JoinPath(folder, "a"), JoinPath(folder, "sub/a"), &error);
}

// Two files of one name, the second over the first.
void PasteTwins(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    changes.CopyTo(JoinPath(folder, "a"), JoinPath(folder, "x"), &error, Standing::ThrowAway);
    changes.CopyTo(JoinPath(folder, "b"), JoinPath(folder, "x"), &error, Standing::ThrowAway);
}

const std::vector<Act>& Acts() {
    static const std::vector<Act> kActs{
        {"renames in a circle", {{"a", "1"}, {"b", "22"}, {"c", "333"}}, RenameMany},
        {"delete", {{"a", "1"}, {"b", "22"}, {"c", "333"}}, ThrowMany},
        {"delete unplanned", {{"a", "1"}, {"b", "22"}, {"c", "333"}}, ThrowMany, false},
        {"rename with note", {{"a", "1"}, {"a.enf", "note"}, {"b", "22"}}, RenameWithNote},
        {"copy over", {{"a", "1"}, {"b", "22"}}, CopyOver},
        {"twins", {{"a", "1"}, {"b", "22"}, {"x", "333"}}, PasteTwins},
        {"writing", {{"a", "1"}, {"b", "2222"}, {"c", "333"}}, WriteSome},
        {"writing unplanned", {{"a", "1"}, {"b", "2222"}, {"c", "333"}}, WriteSome, false},
        {"move onto another disk", {{"a", "1"}, {"a.xmp", "mark"}, {"b", "22"}}, MoveFar},
        {"unplanned move", {{"a", "1"}, {"a.xmp", "mark"}, {"b", "22"}}, MoveFar, false},
        {"move into a new folder", {{"a", "1"}, {"b", "22"}}, MakeFolderFor},
    };
    return kActs;
}

// In memory, on most machines.
constexpr const char* kOtherDisk = "/dev/shm";

void Plan(const Act& act, Changes& changes, const std::string& folder,
          const std::string& otherDisk) {
    Rehearsal rehearsal(changes);
    act.run(rehearsal.Command(), folder, otherDisk);
    changes.PlanWhole(rehearsal.Steps());
}

struct Grave {
    TestFolder pictures;
    TestFolder otherDisk{kOtherDisk};
    TestFolder state;
    ForwardingFiles files;

    explicit Grave(const Tree& before) {
        Fill(pictures, before);
        for (const auto& [name, bytes] : before) {
            SetFileTime(pictures.Path() + "/" + name, 2001, 2, 3, 4, 5, 6);
            ::chmod((pictures.Path() + "/" + name).c_str(), 0640);
        }
    }
    std::string Database() const { return state.Path() + "/history.db"; }
    // Of both disks.
    Tree Whole() const {
        Tree tree = WholeTree(pictures.Path());
        for (auto& [name, bytes] : WholeTree(otherDisk.Path())) tree["there/" + name] = bytes;
        return tree;
    }

    // Runs the act in a process of its own, which is killed before its change of this number; true
    // when it came that far.
    bool Kill(const Act& act, int number) {
        const pid_t child = ::fork();
        if (child == 0) {
            int seen = 0;
            files.onChange = [&](const std::string&, const std::string&) {
                if (seen++ == number) ::raise(SIGKILL);
                return std::string();
            };
            History history(files, Database());
            {
                Changes changes(history, act.name);
                if (act.isPlanned) Plan(act, changes, pictures.Path(), otherDisk.Path());
                act.run(changes, pictures.Path(), otherDisk.Path());
                if (seen == number) ::raise(SIGKILL); // all is done, and not yet written down
            }
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFSIGNALED(status);
    }
};

UndoResult Go(History& history, UndoResult (History::*way)(std::int64_t, const GoOn&),
              std::int64_t id) {
    return (history.*way)(id, [](std::size_t) { return true; });
}

TEST(Killed, AtEveryStepACommandIsTakenBackWhole) {
    for (const Act& act : Acts()) {
        for (int number = 0;; ++number) {
            SCOPED_TRACE(std::string(act.name) + " " + std::to_string(number));
            Grave grave(act.before);
            const Tree before = grave.Whole();
            if (!grave.Kill(act, number)) break;
            History history(grave.files, grave.Database());
            const auto broken = history.BrokenOff();
            ASSERT_EQ(broken.size(), 1U);
            EXPECT_EQ(broken[0].what, act.name);
            const UndoResult result = Go(history, &History::UndoOf, broken[0].id);
            EXPECT_TRUE(result.done || number == 0) << result.text;
            EXPECT_EQ(grave.Whole(), before) << result.text;
            EXPECT_TRUE(history.BrokenOff().empty());
            ASSERT_LT(number, 20);
        }
    }
}

TEST(Killed, AtEveryStepAPlannedCommandIsFinished) {
    for (const Act& act : Acts()) {
        Tree after;
        {
            Grave grave(act.before);
            grave.Kill(act, -1);
            after = grave.Whole();
        }
        for (int number = 0; act.isPlanned; ++number) {
            SCOPED_TRACE(std::string(act.name) + " " + std::to_string(number));
            Grave grave(act.before);
            const Tree before = grave.Whole();
            if (!grave.Kill(act, number)) break;
            History history(grave.files, grave.Database());
            const auto broken = history.BrokenOff();
            ASSERT_EQ(broken.size(), 1U);
            const UndoResult result = Go(history, &History::RedoOf, broken[0].id);
            EXPECT_TRUE(result.done) << result.text;
            EXPECT_EQ(grave.Whole(), after) << result.text;
            Go(history, &History::UndoOf, broken[0].id);
            EXPECT_EQ(grave.Whole(), before);
            ASSERT_LT(number, 20);
        }
    }
}

TEST(Killed, WhatIsNotPlannedIsLeftAsFarAsItCameAndGoesBackLater) {
    for (const Act& act : Acts()) {
        for (int number = 1; !act.isPlanned; ++number) {
            SCOPED_TRACE(std::string(act.name) + " " + std::to_string(number));
            Grave grave(act.before);
            const Tree before = grave.Whole();
            if (!grave.Kill(act, number)) break;
            const Tree stands = grave.Whole();
            History history(grave.files, grave.Database());
            const auto broken = history.BrokenOff();
            ASSERT_EQ(broken.size(), 1U);
            EXPECT_FALSE(history.MayFinish(broken[0]));
            EXPECT_FALSE(Go(history, &History::RedoOf, broken[0].id).done);
            EXPECT_EQ(grave.Whole(), stands);
            EXPECT_TRUE(history.Leave(broken[0]));
            EXPECT_TRUE(history.BrokenOff().empty());
            const UndoResult result = history.Undo([](std::size_t) { return true; });
            EXPECT_TRUE(result.done) << result.text;
            EXPECT_EQ(grave.Whole(), before) << result.text;
            ASSERT_LT(number, 20);
        }
    }
}

// An undo that is killed is finished, or done again.
TEST(Killed, AnUndoAtEveryStepEndsEitherWay) {
    for (const Act& act : Acts()) {
        for (int number = 0; number < 20; ++number) {
            for (const auto way : {&History::UndoOf, &History::RedoOf}) {
                SCOPED_TRACE(std::string(act.name) + " " + std::to_string(number) +
                             (way == &History::UndoOf ? " taken back" : " finished"));
                Grave grave(act.before);
                const Tree before = grave.Whole();
                grave.Kill(act, -1);
                const Tree after = grave.Whole();
                const pid_t child = ::fork();
                if (child == 0) {
                    int seen = 0;
                    grave.files.onChange = [&](const std::string&, const std::string&) {
                        if (seen++ == number) ::raise(SIGKILL);
                        return std::string();
                    };
                    History history(grave.files, grave.Database());
                    history.Undo([](std::size_t) { return true; });
                    ::_exit(0);
                }
                int status = 0;
                ::waitpid(child, &status, 0);
                if (!WIFSIGNALED(status)) {
                    number = 20;
                    break;
                }
                History history(grave.files, grave.Database());
                const auto broken = history.BrokenOff();
                ASSERT_EQ(broken.size(), 1U);
                const UndoResult result = Go(history, way, broken[0].id);
                EXPECT_TRUE(result.done) << result.text;
                EXPECT_EQ(grave.Whole(), way == &History::UndoOf ? after : before) << result.text;
            }
        }
    }
}

} // namespace
} // namespace tarn::testing
