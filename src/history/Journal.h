// The journal of commands that changed files of the user: an SQLite database in the state folder,
// shared by all programs that run. What a call wrote outlasts a power cut when it returns.
#pragma once

#include "history/CommandRow.h"
#include "history/Step.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

struct sqlite3;

namespace tarn {

class Statement;

enum class Wrote {
    Yes,
    Locked, // another program held it for longer than the patience
    No      // it is full, read only, damaged
};

// Which commands are listed.
struct Listing {
    std::int64_t most = 0;
    std::int64_t before = 0; // only those older than the one of this id; 0: from the newest on
    std::string text = {};   // that their words or folder have, in any case of its letters
};

// From any thread, one call at a time. Each call that writes is one transaction; on a failure
// `Reason` says why, and nothing was written.
class Journal {
public:
    // The file, whose folder is there; made when it is missing, and put aside, never deleted, when
    // it is damaged. An empty name: one in memory, for this run alone.
    // One that was found damaged while it was written is put aside, if it still stands there.
    explicit Journal(const std::string& file, const Journal* damaged = nullptr);
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    // Whether it could be opened; else the reason says why not.
    bool IsOpen() const { return m_database != nullptr; }
    std::string Reason() const {
        const std::lock_guard lock(m_mutex);
        return m_reason;
    }
    // Where the damaged one lies now; empty when there was none.
    const std::string& PutAside() const { return m_putAside; }
    // Found while it was written.
    bool IsDamaged() const { return m_isDamaged; }

    // A command that is about to begin, with the steps that it plans; its id.
    Wrote Begin(const NewCommand& command, std::span<const Step> plan, std::int64_t* id);
    // Steps that it had not planned, before they are done.
    Wrote AddSteps(std::int64_t id, std::span<const Step> steps);
    // A planned step of which more is known, before it is done.
    Wrote Change(std::int64_t id, const Step& step);
    // The command has ended: `changed` are steps that are not as planned, or have found something
    // out. Nothing can be done again any more that was taken back before it.
    Wrote End(std::int64_t id, const std::string& what, std::int64_t files,
              std::span<const Step> changed, CommandState state = CommandState::Done);
    // The same of one that the program did unasked: Undo passes it over, and what can be done again
    // still can.
    Wrote EndQuietly(std::int64_t id, const std::string& what, std::int64_t files,
                     std::span<const Step> changed);
    // A command that did nothing.
    Wrote Drop(std::int64_t id);

    // It is being taken back or done again from now on; its steps, in their order.
    // Locked where another program has it in hand, or was faster.
    Wrote Turn(const CommandRow& row, CommandState to);
    enum class Behind { None, AllOthers };
    // It was: `state` is Done or Undone; one of which something could not be taken back stays Done,
    // and may be put behind all others.
    Wrote EndTurn(std::int64_t id, CommandState state, std::span<const Step> changed,
                  Behind behind = Behind::None);

    std::vector<Step> StepsOf(std::int64_t id);
    std::optional<CommandRow> Find(std::int64_t id);
    std::optional<CommandRow> NextToUndo();
    std::optional<CommandRow> NextToRedo();
    // The newest first.
    std::vector<CommandRow> List(const Listing& which);
    // Commands that ended or began behind this one, and are not taken back.
    std::vector<CommandRow> Later(std::int64_t id);
    // Whose programs ended before they did, the newest first.
    std::vector<CommandRow> BrokenOff();

    // All but what is being done just now.
    Wrote Forget();
    // Commands older than these days, and the oldest beyond these bytes of kept contents; in small
    // pieces, between which others write.
    Wrote Prune(std::int64_t days, std::int64_t bytes, const std::atomic<bool>& stop);

private:
    class Transaction;

    bool Open(const std::string& file);
    void Close();
    bool Run(const char* order);
    bool HasColumns();
    Wrote DropEnded();
    std::string Outdated(std::int64_t days, std::int64_t bytes);
    void PutDamagedAside(const std::string& file);
    bool CountBytes(std::int64_t id);
    Wrote Failed();
    std::int64_t NextTurn();
    bool PutEnd(std::int64_t id, const std::string& what, std::int64_t files, CommandState state,
                std::int64_t turn);
    bool PutSteps(std::int64_t id, std::span<const Step> steps);
    bool ChangeSteps(std::int64_t id, std::span<const Step> steps);
    bool DropSteps(const std::string& which);
    std::vector<CommandRow> Rows(Statement& statement);

    sqlite3* m_database = nullptr;
    mutable std::mutex m_mutex;
    std::string m_reason;
    std::string m_putAside;
    std::int64_t m_inode = 0; // of its file
    std::atomic<bool> m_isDamaged = false;
};

} // namespace tarn
