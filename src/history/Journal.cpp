#include "history/Journal.h"

#include "history/StepBytes.h"
#include "history/ThisProcess.h"
#include "platform/Statement.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

#include <sys/stat.h>

namespace tarn {

namespace {

constexpr int kPatience = 2000; // milliseconds for another program that writes
constexpr std::int64_t kNoTurn = 0;
// Turns rise from here; what could not be taken back goes below.
constexpr std::int64_t kFirstTurn = std::int64_t(1) << 40;
constexpr const char* kOrders[] = {
    "PRAGMA auto_vacuum=INCREMENTAL", // of a database that is made only now
    "PRAGMA secure_delete=ON", "PRAGMA journal_mode=WAL", "PRAGMA synchronous=FULL",
    "CREATE TABLE IF NOT EXISTS commands(id INTEGER PRIMARY KEY AUTOINCREMENT, began INTEGER,"
    " what TEXT, folder BLOB, files INTEGER, state INTEGER, turn INTEGER, redoable INTEGER,"
    " process TEXT, bytes INTEGER, whole INTEGER DEFAULT 0)",
    "CREATE INDEX IF NOT EXISTS by_turn ON commands(state, turn)",
    "CREATE INDEX IF NOT EXISTS by_turn_alone ON commands(turn)",
    // Steps as they were planned, some at once, and single ones as they are since.
    "CREATE TABLE IF NOT EXISTS plans(command INTEGER, first INTEGER, steps BLOB,"
    " PRIMARY KEY(command, first))",
    "CREATE TABLE IF NOT EXISTS changes(command INTEGER, number INTEGER, step BLOB,"
    " PRIMARY KEY(command, number))"};
constexpr const char* kAddWhole = "ALTER TABLE commands ADD COLUMN whole INTEGER DEFAULT 0";
constexpr const char* kColumns =
    "SELECT id, began, what, folder, files, state, process, whole FROM commands ";

std::int64_t InodeOf(const std::string& file) {
    struct stat info {};
    return ::lstat(file.c_str(), &info) == 0 ? static_cast<std::int64_t>(info.st_ino) : 0;
}

bool IsDamaged(int code) {
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

} // namespace

// Begun with the right to write, taken back unless it ends well.
class Journal::Transaction {
public:
    explicit Transaction(Journal& journal)
        : m_journal(journal), m_lock(journal.m_mutex), m_open(journal.Run("BEGIN IMMEDIATE")) {}
    ~Transaction() {
        if (m_open) ::sqlite3_exec(m_journal.m_database, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    explicit operator bool() const { return m_open; }
    Wrote End(bool good) {
        if (!m_open || !good || !m_journal.Run("COMMIT")) return m_journal.Failed();
        m_open = false;
        return Wrote::Yes;
    }

private:
    Journal& m_journal;
    std::lock_guard<std::mutex> m_lock;
    bool m_open;
};

Journal::Journal(const std::string& file, const Journal* damaged) {
    // Another program may have put it aside, and begun a new one.
    if (damaged && damaged->m_inode == InodeOf(file)) PutDamagedAside(file);
    if (Open(file)) return;
    Close();
    if (!m_isDamaged) return;
    PutDamagedAside(file);
    m_isDamaged = false;
    if (!Open(file)) Close();
}

void Journal::PutDamagedAside(const std::string& file) {
    std::string aside = file + ".damaged";
    struct stat taken {};
    for (int number = 2; ::lstat(aside.c_str(), &taken) == 0; ++number)
        aside = file + ".damaged-" + std::to_string(number);
    for (const char* part : {"-wal", "-shm", ""})
        if (std::rename((file + part).c_str(), (aside + part).c_str()) == 0) m_putAside = aside;
}

Journal::~Journal() {
    Close();
}

bool Journal::Open(const std::string& file) {
    const char* name = file.empty() ? ":memory:" : file.c_str();
    if (::sqlite3_open_v2(name, &m_database,
                          SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX,
                          nullptr) != SQLITE_OK)
        return Failed(), false;
    m_inode = InodeOf(file);
    ::sqlite3_busy_timeout(m_database, kPatience);
    ::sqlite3_extended_result_codes(m_database, 0);
    for (const char* order : kOrders)
        if (!Run(order)) return false;
    // Of a database that an earlier version made; another program may be faster.
    return HasColumns() || Run(kAddWhole) || HasColumns();
}

bool Journal::HasColumns() {
    return Statement(m_database, "SELECT 1 FROM pragma_table_info('commands') WHERE name='whole'")
        .HasRow();
}

void Journal::Close() {
    ::sqlite3_close(m_database);
    m_database = nullptr;
}

bool Journal::Run(const char* order) {
    if (m_database && ::sqlite3_exec(m_database, order, nullptr, nullptr, nullptr) == SQLITE_OK)
        return true;
    Failed();
    return false;
}

Wrote Journal::Failed() {
    if (!m_database) {
        if (m_reason.empty()) m_reason = "it cannot be opened";
        return Wrote::No;
    }
    const int code = ::sqlite3_errcode(m_database) & 0xff;
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED) {
        m_reason = "another program is writing it";
        return Wrote::Locked;
    }
    m_reason = ::sqlite3_errmsg(m_database);
    m_isDamaged = tarn::IsDamaged(code);
    return Wrote::No;
}

std::int64_t Journal::NextTurn() {
    Statement last(m_database, "SELECT max(turn) FROM commands");
    return last.HasRow() ? std::max(last.Whole(0), kFirstTurn) + 1 : kFirstTurn;
}

bool Journal::PutSteps(std::int64_t id, std::span<const Step> steps) {
    return steps.empty() || Statement(m_database, "INSERT INTO plans VALUES(?,?,?)")
                                .Add(id)
                                .Add(steps.front().number)
                                .Add(PackSteps(steps))
                                .Run();
}

bool Journal::ChangeSteps(std::int64_t id, std::span<const Step> steps) {
    Statement change(m_database, "INSERT OR REPLACE INTO changes VALUES(?,?,?)");
    for (const Step& step : steps) {
        if (!change.Add(id).Add(step.number).Add(PackSteps({&step, 1})).Run()) return false;
        change.Reset();
    }
    return true;
}

bool Journal::DropSteps(const std::string& which) {
    return Run(("DELETE FROM plans WHERE command " + which).c_str()) &&
           Run(("DELETE FROM changes WHERE command " + which).c_str());
}

Wrote Journal::Begin(const NewCommand& command, std::span<const Step> plan, std::int64_t* id) {
    Transaction writes(*this);
    if (!writes) return writes.End(false);
    Statement put(m_database, "INSERT INTO commands(began, what, folder, files, state, turn,"
                              " redoable, process, bytes, whole) VALUES(?,?,?,?,0,?,0,?,0,?)");
    put.Add(std::int64_t(std::time(nullptr))).AddText(command.what).Add(command.folder);
    put.Add(std::int64_t(plan.size())).Add(NextTurn()).Add(ThisProcess());
    put.Add(std::int64_t(command.isWhole));
    if (!put.Run()) return writes.End(false);
    *id = ::sqlite3_last_insert_rowid(m_database);
    return writes.End(PutSteps(*id, plan));
}

Wrote Journal::AddSteps(std::int64_t id, std::span<const Step> steps) {
    Transaction writes(*this);
    return writes.End(writes && PutSteps(id, steps));
}

Wrote Journal::Change(std::int64_t id, const Step& step) {
    Transaction writes(*this);
    return writes.End(writes && ChangeSteps(id, {&step, 1}));
}

bool Journal::CountBytes(std::int64_t id) {
    return Statement(m_database,
                     "UPDATE commands SET bytes="
                     "(SELECT total(length(steps)) FROM plans WHERE command=?1)+"
                     "(SELECT total(length(step)) FROM changes WHERE command=?1) WHERE id=?1")
        .Add(id)
        .Run();
}

bool Journal::PutEnd(std::int64_t id, const std::string& what, std::int64_t files,
                     CommandState state, std::int64_t turn) {
    return Statement(m_database, "UPDATE commands SET what=?, files=?, state=?, turn=? WHERE id=?")
        .AddText(what)
        .Add(files)
        .Add(std::int64_t(state))
        .Add(turn)
        .Add(id)
        .Run();
}

Wrote Journal::End(std::int64_t id, const std::string& what, std::int64_t files,
                   std::span<const Step> changed, CommandState state) {
    Transaction writes(*this);
    return writes.End(writes && ChangeSteps(id, changed) &&
                      Run("UPDATE commands SET redoable=0 WHERE state=2 AND redoable=1") &&
                      PutEnd(id, what, files, state, NextTurn()) && CountBytes(id));
}

Wrote Journal::EndQuietly(std::int64_t id, const std::string& what, std::int64_t files,
                          std::span<const Step> changed) {
    Transaction writes(*this);
    return writes.End(writes && ChangeSteps(id, changed) &&
                      PutEnd(id, what, files, CommandState::Done, kNoTurn) && CountBytes(id));
}

Wrote Journal::Drop(std::int64_t id) {
    Transaction writes(*this);
    return writes.End(writes && DropSteps("=" + std::to_string(id)) &&
                      Statement(m_database, "DELETE FROM commands WHERE id=?").Add(id).Run());
}

Wrote Journal::Turn(const CommandRow& row, CommandState to) {
    Transaction writes(*this);
    if (!writes) return writes.End(false);
    if (!Statement(m_database, "UPDATE commands SET state=?, process=? WHERE id=? AND state=?")
             .Add(std::int64_t(to))
             .Add(ThisProcess())
             .Add(row.id)
             .Add(std::int64_t(row.state))
             .Run())
        return writes.End(false);
    if (::sqlite3_changes(m_database) != 1) return Wrote::Locked;
    return writes.End(true);
}

Wrote Journal::EndTurn(std::int64_t id, CommandState state, std::span<const Step> changed,
                       Behind behind) {
    Transaction writes(*this);
    if (!writes || !ChangeSteps(id, changed) || !CountBytes(id)) return writes.End(false);
    std::int64_t turn = NextTurn();
    if (behind == Behind::AllOthers) {
        Statement first(m_database, "SELECT min(turn) FROM commands WHERE turn>0");
        turn = first.HasRow() ? first.Whole(0) - 1 : 0;
    }
    return writes.End(
        Statement(m_database, "UPDATE commands SET state=?, turn=?, redoable=? WHERE id=?")
            .Add(std::int64_t(state))
            .Add(turn)
            .Add(std::int64_t(state == CommandState::Undone))
            .Add(id)
            .Run());
}

std::vector<Step> Journal::StepsOf(std::int64_t id) {
    const std::lock_guard lock(m_mutex);
    std::vector<Step> steps;
    Statement plans(m_database, "SELECT steps FROM plans WHERE command=?");
    plans.Add(id);
    while (plans.HasRow())
        for (Step& step : UnpackSteps(plans.Bytes(0))) steps.push_back(std::move(step));
    const auto earlier = [](const Step& a, const Step& b) { return a.number < b.number; };
    std::sort(steps.begin(), steps.end(), earlier);
    Statement changes(m_database, "SELECT step FROM changes WHERE command=?");
    changes.Add(id);
    while (changes.HasRow()) {
        for (Step& step : UnpackSteps(changes.Bytes(0))) {
            const auto at = std::lower_bound(steps.begin(), steps.end(), step, earlier);
            if (at != steps.end() && at->number == step.number) *at = std::move(step);
        }
    }
    return steps;
}

std::vector<CommandRow> Journal::Rows(Statement& statement) {
    std::vector<CommandRow> rows;
    while (statement.HasRow()) {
        CommandRow row;
        row.id = statement.Whole(0);
        row.began = statement.Whole(1);
        row.what = statement.Bytes(2);
        row.folder = statement.Bytes(3);
        row.files = statement.Whole(4);
        row.state = static_cast<CommandState>(statement.Whole(5));
        row.isBrokenOff = !HasEnded(row.state) && !IsRunning(statement.Bytes(6));
        row.isWhole = statement.Whole(7) != 0;
        rows.push_back(std::move(row));
    }
    return rows;
}

namespace {

std::optional<CommandRow> FirstOf(std::vector<CommandRow> rows) {
    return rows.empty() ? std::nullopt : std::optional(std::move(rows.front()));
}

std::string Select(const char* which) {
    return std::string(kColumns) + which;
}

} // namespace

std::optional<CommandRow> Journal::Find(std::int64_t id) {
    const std::lock_guard lock(m_mutex);
    Statement one(m_database, Select("WHERE id=?").c_str());
    one.Add(id);
    return FirstOf(Rows(one));
}

std::optional<CommandRow> Journal::NextToUndo() {
    const std::lock_guard lock(m_mutex);
    Statement last(m_database,
                   Select("WHERE state=1 AND turn>0 ORDER BY turn DESC LIMIT 1").c_str());
    return FirstOf(Rows(last));
}

std::optional<CommandRow> Journal::NextToRedo() {
    const std::lock_guard lock(m_mutex);
    Statement last(m_database,
                   Select("WHERE state=2 AND redoable=1 ORDER BY turn DESC LIMIT 1").c_str());
    return FirstOf(Rows(last));
}

std::vector<CommandRow> Journal::List(const Listing& which) {
    const std::lock_guard lock(m_mutex);
    Statement all(m_database,
                  Select("WHERE (?1=0 OR id<?1) AND (?2='' OR instr(lower(what), lower(?2))>0 OR"
                         " instr(lower(CAST(folder AS TEXT)), lower(?2))>0)"
                         " ORDER BY id DESC LIMIT ?3")
                      .c_str());
    all.Add(which.before).AddText(which.text).Add(which.most);
    return Rows(all);
}

std::vector<CommandRow> Journal::Later(std::int64_t id) {
    const std::lock_guard lock(m_mutex);
    Statement all(m_database, Select("WHERE state<>2 AND id<>?1 AND turn >"
                                     " (SELECT turn FROM commands WHERE id=?1) ORDER BY turn")
                                  .c_str());
    all.Add(id);
    return Rows(all);
}

std::vector<CommandRow> Journal::BrokenOff() {
    const std::lock_guard lock(m_mutex);
    Statement open(m_database, Select("WHERE state IN (0, 3, 4) ORDER BY id DESC").c_str());
    std::vector<CommandRow> rows = Rows(open);
    std::erase_if(rows, [](const CommandRow& row) { return !row.isBrokenOff; });
    return rows;
}

// What was forgotten lies in no part of the files either.
Wrote Journal::Forget() {
    const Wrote wrote = DropEnded();
    if (wrote != Wrote::Yes) return wrote;
    const std::lock_guard lock(m_mutex);
    Run("PRAGMA incremental_vacuum");
    Run("PRAGMA wal_checkpoint(TRUNCATE)");
    return Wrote::Yes;
}

Wrote Journal::DropEnded() {
    Transaction writes(*this);
    return writes.End(writes &&
                      DropSteps("IN (SELECT id FROM commands WHERE state IN (1, 2, 5))") &&
                      Run("DELETE FROM commands WHERE state IN (1, 2, 5)"));
}

// The newest stays in any case: a clock may have been wrong, a command larger than all room.
std::string Journal::Outdated(std::int64_t days, std::int64_t bytes) {
    constexpr std::int64_t kDay = 24 * 3600;
    std::int64_t newest = 0;
    std::int64_t oldest = 0; // that has room
    Statement sums(m_database, "SELECT id, bytes FROM commands ORDER BY id DESC");
    for (std::int64_t sum = 0; sums.HasRow(); oldest = sums.Whole(0)) {
        if (newest == 0) newest = sums.Whole(0);
        sum += sums.Whole(1);
        if (sum > bytes && oldest != 0) break;
    }
    return "state IN (1, 2, 5) AND id<>" + std::to_string(newest) + " AND (id<" +
           std::to_string(oldest) + " OR began<" +
           std::to_string(std::time(nullptr) - days * kDay) + ")";
}

Wrote Journal::Prune(std::int64_t days, std::int64_t bytes, const std::atomic<bool>& stop) {
    std::string piece = "IN (SELECT id FROM commands WHERE ";
    {
        const std::lock_guard lock(m_mutex);
        piece += Outdated(days, bytes) + " ORDER BY id LIMIT 50)";
    }
    int dropped = 1;
    while (dropped > 0 && !stop) {
        Transaction writes(*this);
        if (!writes) return writes.End(false);
        const bool good =
            DropSteps(piece) && Run(("DELETE FROM commands WHERE id " + piece).c_str());
        dropped = ::sqlite3_changes(m_database);
        if (const Wrote wrote = writes.End(good); wrote != Wrote::Yes) return wrote;
    }
    const std::lock_guard lock(m_mutex);
    Run("PRAGMA incremental_vacuum(1000)");
    return Wrote::Yes;
}

} // namespace tarn
