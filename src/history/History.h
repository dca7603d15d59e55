// What the program did to files of the user: seen, taken back and done again, also by a later run.
// Window and console share it.
#pragma once

#include "common/mark.h"
#include "history/Journal.h"
#include "platform/Files.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace tarn {

// What of a mark the command had changed, as it is to be again; whoever asked sets it.
struct MarkBack {
    std::string path;
    MarkChange change;
};

std::string PackMark(const Mark& mark);
Mark UnpackMark(const std::string& text);

struct UndoResult {
    bool done = false;             // all of it
    std::string text;              // for the message line
    std::vector<std::string> back; // full paths of what came back, in the order it had gone
    std::vector<MarkBack> marks;
};

// Asked with the number of the step to come, from 1; false breaks it off.
using GoOn = std::function<bool(std::size_t number)>;

// From any thread; commands of one thread come one after the other.
class History {
public:
    // In this file, opened at first need; without a name in memory, for this run.
    History(Files& files, std::string file) : m_files(files), m_file(std::move(file)) {}
    // In the state folder.
    explicit History(Files& files) : m_files(files), m_isShared(true) {}

    ~History() { EndLate(); }
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    // Asked once a run, when the history cannot be written, whether commands go on without; they do
    // not where nobody is asked. On the thread of the command.
    std::function<bool(const std::string& text)> onUnwritable;

    // Nobody is told or asked any more, from now on: their owner goes.
    void Detach();
    // Commands that are done and could not be ended are, ahead of whoever looks for the last one.
    void EndLate();

    Files& Disk() { return m_files; }
    // After each command that changed something, on the thread that ended it.
    std::function<void()> onEnd;
    // What to tell of the database itself when it was opened; empty: nothing.
    std::string Notice();

    // The commands that come next, and how many steps of them.
    std::optional<CommandRow> NextToUndo();
    std::optional<CommandRow> NextToRedo();
    std::size_t StepsToGo(const CommandRow& row);

    // Each looks first whether the files are as the command left them, and tells what is not. What
    // could not be taken back stays for another try, behind all others; what was not begun, since
    // it was cancelled, stays next.
    UndoResult Undo(const GoOn& goOn);
    UndoResult Redo(const GoOn& goOn);
    // Of any command, unless a later one has changed its files since. One that was broken off is
    // taken back as far as it came, or finished.
    UndoResult UndoOf(std::int64_t id, const GoOn& goOn);
    UndoResult RedoOf(std::int64_t id, const GoOn& goOn);

    std::vector<CommandRow> List(const Listing& which);
    std::vector<CommandRow> BrokenOff();
    // Whether what a broken-off command had still to do is known; else it can only be taken back,
    // or be left as far as it came.
    bool MayFinish(const CommandRow& row);
    bool Leave(const CommandRow& row);
    // With their states as they are, of one that was broken off by a look at the disk.
    std::vector<Step> StepsOf(const CommandRow& row);
    bool Forget();
    bool Prune(std::int64_t days, std::int64_t bytes, const std::atomic<bool>& stop);

    // For Changes: written down, or refused with the reason.
    using Ledger = std::shared_ptr<Journal>; // one that is left goes with its last command
    bool Begin(const NewCommand& command, std::span<const Step> plan, Ledger& book,
               std::int64_t* id, std::string* error);
    bool Add(const Ledger& book, std::int64_t id, std::span<const Step> steps, std::string* error);
    bool Change(const Ledger& book, std::int64_t id, const Step& step, std::string* error);
    enum class Ended { CanGoBack, ForGood, Unasked };
    void End(const Ledger& book, std::int64_t id, const std::string& what, std::size_t files,
             std::span<const Step> changed, Ended how);

private:
    Ledger Book();
    Ledger Standing(); // null while nothing was ever written
    enum class Way { Back, Again };
    bool MayGoOn(const Ledger& failed, Wrote wrote, std::string* error);
    bool BeginAnew(const Ledger& damaged);
    void TellEnd();
    UndoResult Turn(const CommandRow& row, Way way, const GoOn& goOn);
    std::string TouchedSince(const CommandRow& row);

    Files& m_files;
    std::mutex m_telling; // while somebody is told
    bool m_isDetached = false;
    std::mutex m_mutex; // of the next three
    std::string m_file;
    Ledger m_journal; // null before its first use
    // Of commands that are done, and could not be ended.
    std::vector<std::function<bool()>> m_late;
    bool m_isShared = false;
    std::atomic<bool> m_goesWithout = false;
    std::atomic<bool> m_isRefused = false; // for this run
};

} // namespace tarn
