// A user who does anything at all: thousands of acts by chance in the whole program, with another
// program in the same folders, and after each act a look at whether everything shown is of one
// file, nothing has vanished, and the window answers. `--seed N --acts N` replays a run, `--go-on`
// collects what is found, `--log FILE` writes the acts.
#include "Acts.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <execinfo.h>
#include <unistd.h>

namespace tarn::testing {
namespace {

std::string Option(const char* name, const char* otherwise) {
    const QStringList words = QCoreApplication::arguments();
    const auto at = words.indexOf(QString::fromLatin1(name));
    return at < 0 ? otherwise : words.value(at + 1).toStdString();
}

// Ends the run with the stack of an act that does not come back.
void Watch(int seconds) {
    std::signal(SIGALRM, [](int) {
        constexpr int kDepth = 80;
        void* frames[kDepth];
        ::backtrace_symbols_fd(frames, ::backtrace(frames, kDepth), STDERR_FILENO);
        std::abort();
    });
    ::alarm(static_cast<unsigned>(seconds));
}

struct MonkeyRun {
    std::uint64_t seed = std::stoull(Option("--seed", "1"));
    int last = std::stoi(Option("--acts", "2000"));
    bool goesOn = QCoreApplication::arguments().contains(QStringLiteral("--go-on"));
    std::FILE* log = std::fopen(Option("--log", "/dev/null").c_str(), "w");
    Dice dice;
    World world{dice};
    Inventory inventory{world};
    OneFile oneFile{world};
    Acts acts{world, dice, inventory, oneFile, seed};
    std::string before; // what the last look found: told once
    std::vector<std::string> latest;
    int findings = 0;

    ~MonkeyRun() {
        if (log) std::fclose(log);
    }
    void Log(int act, const std::string& text) {
        constexpr std::size_t kTold = 12;
        latest.push_back(std::to_string(act) + " " + text);
        if (latest.size() > kTold) latest.erase(latest.begin());
        if (log) std::fprintf(log, "%s\n", latest.back().c_str()), std::fflush(log);
    }
    // The window is at rest and answers.
    std::string Settle() {
        constexpr int kAnswers = 5000; // milliseconds
        QElapsedTimer clock;
        clock.start();
        bool answered = false;
        QMetaObject::invokeMethod(
            qApp, [&] { answered = true; }, Qt::QueuedConnection);
        while (!answered && clock.elapsed() < kAnswers) QCoreApplication::processEvents();
        return answered ? "" : "the window does not answer; ";
    }
    std::string LookAround() {
        std::string found = Settle() + std::exchange(acts.found, {});
        if (!world.trespass.empty())
            found += "changed elsewhere: " + std::exchange(world.trespass, {});
        const ProgramState& s = world.house().state;
        if (!s.Closing && s.FormLoadDone) {
            if (s.BatchRuns || s.SlideViewing) found += "a batch or show did not end; ";
            found += oneFile.Check(acts.carries);
            if (const std::string note = oneFile.NotePath(); oneFile.NoteIsShown() && !note.empty())
                inventory.Seen(note);
        }
        found += inventory.Check();
        inventory.EmptyWastebasket();
        return found;
    }
    // False at the first finding, unless it goes on.
    bool One(int number) {
        constexpr int kSeconds = 120; // other programs may have the machine
        Watch(kSeconds);
        acts.onSaid = [&, number](const std::string& what) { Log(number, what); };
        acts.Do(number);
        if (world.house().state.Closing) world.Restart();
        std::string found = LookAround();
        std::replace(found.begin(), found.end(), '\n', ' ');
        if (found.empty() || found == before) return true;
        before = found;
        ++findings;
        Log(number, "FOUND " + found);
        if (goesOn) return true;
        std::string told;
        for (const std::string& line : latest) told += line + "\n";
        ADD_FAILURE() << "seed " << seed << ", act " << number << ": " << found << "\n" << told;
        return false;
    }
};

} // namespace

TEST(Monkey, WhateverIsDoneEverythingShownIsOfOneFileAndNothingIsLost) {
    MonkeyRun run;
    std::printf("seed %llu\n", static_cast<unsigned long long>(run.seed));
    run.world.Start(run.world.Folder("pictures"));
    EXPECT_EQ(run.LookAround(), "");
    int act = 1;
    while (act <= run.last && run.One(act)) ++act;
    for (const auto& [kind, count] : run.acts.counts) std::printf("%s %d, ", kind.c_str(), count);
    std::printf("%d acts, %d findings\n", act - 1, run.findings);
    EXPECT_EQ(run.findings, 0);
}

} // namespace tarn::testing
