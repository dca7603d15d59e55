// Commands whose program is killed at each of their steps: a later run takes them back or finishes
// them, and the files are as before or as after the command, with their times and modes.
#include "Acts.h"

#include "history/History.h"
#include "support/ForwardingFiles.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace tarn::testing {
namespace {

struct Grave {
    TestFolder pictures;
    TestFolder otherDisk{kOtherDisk};
    TestFolder state;
    ForwardingFiles files;

    explicit Grave(const Tree& before) { FillLongAgo(pictures, before); }
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
