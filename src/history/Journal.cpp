#include "history/Journal.h"

#include "history/ThisProcess.h"
#include "platform/Statement.h"

#include <cstdio>
#include <ctime>

#include <sys/stat.h>

namespace tarn {

namespace {

constexpr int kPatience = 2000; // milliseconds for another program that writes
constexpr std::int64_t kGap = 1 << 20;
constexpr const char* kOrders[] = {
    "PRAGMA auto_vacuum=INCREMENTAL", // of a database that is made only now
    "PRAGMA secure_delete=ON",
    "PRAGMA journal_mode=WAL",
    "PRAGMA synchronous=FULL",
    "CREATE TABLE IF NOT EXISTS commands(id INTEGER PRIMARY KEY AUTOINCREMENT, began INTEGER,"
    " what TEXT, folder BLOB, files INTEGER, state INTEGER, turn INTEGER, redoable INTEGER,"
    " process TEXT, bytes INTEGER)",
    "CREATE INDEX IF NOT EXISTS by_turn ON commands(state, turn)",
    "CREATE TABLE IF NOT EXISTS steps(command INTEGER, number INTEGER, kind INTEGER,"
    " state INTEGER, source BLOB, target BLOB, before BLOB, after BLOB, place INTEGER, old BLOB,"
    " new BLOB, aside BLOB, PRIMARY KEY(command, number)) WITHOUT ROWID"};
constexpr const char* kColumns =
    "SELECT id, began, what, folder, files, state, process FROM commands ";

bool IsDamaged(int code) {
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

// Six numbers, the last of which are often alike.
std::string PackLook(const FileLook& look) {
    if (look == FileLook()) return {};
    std::string text;
    for (const std::int64_t number :
         {look.device, look.inode, look.bytes, look.seconds, look.nanoseconds, look.changed})
        text += std::to_string(number) + ' ';
    return text;
}

FileLook UnpackLook(const std::string& text) {
    FileLook look;
    const char* at = text.c_str();
    char* end = nullptr;
    for (std::int64_t* number : {&look.device, &look.inode, &look.bytes, &look.seconds,
                                 &look.nanoseconds, &look.changed}) {
        *number = std::strtoll(at, &end, 10);
        at = end;
    }
    return look;
}

void AddBytes(Statement& statement, const std::optional<std::string>& bytes) {
    if (bytes)
        statement.Add(*bytes);
    else
        statement.AddNone();
}

std::optional<std::string> BytesOf(const Statement& statement, int column) {
    return statement.IsNone(column) ? std::nullopt : std::optional(statement.Bytes(column));
}

std::int64_t KeptBytes(std::span<const Step> steps) {
    std::size_t bytes = 0;
    for (const Step& step : steps)
        bytes += step.from.size() + step.to.size() + (step.oldBytes ? step.oldBytes->size() : 0) +
                 (step.newBytes ? step.newBytes->size() : 0);
    return static_cast<std::int64_t>(bytes);
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

Journal::Journal(const std::string& file) {
    if (Open(file)) return;
    const bool damaged = m_database && IsDamaged(::sqlite3_errcode(m_database));
    Close();
    if (!damaged) return;
    std::string aside = file + ".damaged";
    struct stat taken {};
    for (int number = 2; ::lstat(aside.c_str(), &taken) == 0; ++number)
        aside = file + ".damaged-" + std::to_string(number);
    for (const char* part : {"-wal", "-shm", ""})
        if (std::rename((file + part).c_str(), (aside + part).c_str()) == 0) m_putAside = aside;
    if (!Open(file)) Close();
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
    ::sqlite3_busy_timeout(m_database, kPatience);
    ::sqlite3_extended_result_codes(m_database, 0);
    for (const char* order : kOrders)
        if (!Run(order)) return false;
    return true;
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
    return Wrote::No;
}

std::int64_t Journal::NextTurn() {
    Statement last(m_database, "SELECT max(turn) FROM commands");
    return last.HasRow() ? last.Whole(0) + 1 : 1;
}

bool Journal::PutSteps(std::int64_t id, std::span<const Step> steps) {
    Statement put(m_database, "INSERT INTO steps VALUES(?,?,?,?,?,?,?,?,?,?,?,?)");
    for (const Step& step : steps) {
        put.Add(id).Add(step.number).Add(std::int64_t(step.kind)).Add(std::int64_t(step.state));
        put.Add(step.from).Add(step.to).Add(PackLook(step.before)).Add(PackLook(step.after));
        put.Add(step.offset);
        AddBytes(put, step.oldBytes);
        AddBytes(put, step.newBytes);
        put.Add(step.aside);
        if (!put.Run()) return false;
        put.Reset();
    }
    return true;
}

bool Journal::ChangeSteps(std::int64_t id, std::span<const Step> steps) {
    Statement change(m_database,
                     "UPDATE steps SET kind=?, state=?, target=?, after=?, new=?, aside=?"
                     " WHERE command=? AND number=?");
    for (const Step& step : steps) {
        change.Add(std::int64_t(step.kind)).Add(std::int64_t(step.state)).Add(step.to);
        change.Add(PackLook(step.after));
        AddBytes(change, step.newBytes);
        change.Add(step.aside).Add(id).Add(step.number);
        if (!change.Run()) return false;
        change.Reset();
    }
    return true;
}

Wrote Journal::Begin(const std::string& what, const std::string& folder, std::span<const Step> plan,
                     std::int64_t* id) {
    Transaction writes(*this);
    if (!writes) return writes.End(false);
    Statement put(m_database, "INSERT INTO commands(began, what, folder, files, state, turn,"
                              " redoable, process, bytes) VALUES(?,?,?,?,0,?,0,?,?)");
    put.Add(std::int64_t(std::time(nullptr))).AddText(what).Add(folder);
    put.Add(std::int64_t(plan.size())).Add(NextTurn()).Add(ThisProcess()).Add(KeptBytes(plan));
    if (!put.Run()) return writes.End(false);
    *id = ::sqlite3_last_insert_rowid(m_database);
    return writes.End(PutSteps(*id, plan));
}

Wrote Journal::AddSteps(std::int64_t id, std::span<const Step> steps) {
    Transaction writes(*this);
    return writes.End(writes && PutSteps(id, steps) &&
                      Statement(m_database, "UPDATE commands SET bytes=bytes+? WHERE id=?")
                          .Add(KeptBytes(steps))
                          .Add(id)
                          .Run());
}

Wrote Journal::End(std::int64_t id, const std::string& what, std::int64_t files,
                   std::span<const Step> changed, CommandState state) {
    Transaction writes(*this);
    if (!writes || !ChangeSteps(id, changed)) return writes.End(false);
    if (!Run("UPDATE commands SET redoable=0 WHERE redoable=1")) return writes.End(false);
    return writes.End(
        Statement(m_database, "UPDATE commands SET what=?, files=?, state=?, turn=? WHERE id=?")
            .AddText(what)
            .Add(files)
            .Add(std::int64_t(state))
            .Add(NextTurn())
            .Add(id)
            .Run());
}

Wrote Journal::Drop(std::int64_t id) {
    Transaction writes(*this);
    return writes.End(writes &&
                      Statement(m_database, "DELETE FROM steps WHERE command=?").Add(id).Run() &&
                      Statement(m_database, "DELETE FROM commands WHERE id=?").Add(id).Run());
}

Wrote Journal::Turn(std::int64_t id, CommandState to) {
    Transaction writes(*this);
    return writes.End(writes &&
                      Statement(m_database, "UPDATE commands SET state=?, process=? WHERE id=?")
                          .Add(std::int64_t(to))
                          .Add(ThisProcess())
                          .Add(id)
                          .Run());
}

Wrote Journal::EndTurn(std::int64_t id, CommandState state, std::span<const Step> changed,
                       Behind behind) {
    Transaction writes(*this);
    if (!writes || !ChangeSteps(id, changed)) return writes.End(false);
    std::int64_t turn = NextTurn();
    if (behind == Behind::AllOthers) {
        Statement first(m_database, "SELECT min(turn) FROM commands");
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
    Statement all(m_database, "SELECT number, kind, state, source, target, before, after, place,"
                              " old, new, aside FROM steps WHERE command=? ORDER BY number");
    all.Add(id);
    while (all.HasRow()) {
        Step step;
        step.number = all.Whole(0);
        step.kind = static_cast<StepKind>(all.Whole(1));
        step.state = static_cast<StepState>(all.Whole(2));
        step.from = all.Bytes(3);
        step.to = all.Bytes(4);
        step.before = UnpackLook(all.Bytes(5));
        step.after = UnpackLook(all.Bytes(6));
        step.offset = all.Whole(7);
        step.oldBytes = BytesOf(all, 8);
        step.newBytes = BytesOf(all, 9);
        step.aside = all.Bytes(10);
        steps.push_back(std::move(step));
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
    Statement last(m_database, Select("WHERE state=1 ORDER BY turn DESC LIMIT 1").c_str());
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
                      Run("DELETE FROM steps WHERE command IN (SELECT id FROM commands WHERE"
                          " state IN (1, 2, 5))") &&
                      Run("DELETE FROM commands WHERE state IN (1, 2, 5)"));
}

Wrote Journal::Prune(std::int64_t days, std::int64_t bytes) {
    constexpr std::int64_t kDay = 24 * 3600;
    Transaction writes(*this);
    if (!writes) return writes.End(false);
    std::int64_t oldest = 0; // that stays
    {
        Statement sums(m_database, "SELECT id, began, bytes FROM commands ORDER BY id DESC");
        std::int64_t sum = 0;
        const std::int64_t since = std::time(nullptr) - days * kDay;
        while (sums.HasRow()) {
            sum += sums.Whole(2);
            if (sum > bytes || sums.Whole(1) < since) break;
            oldest = sums.Whole(0);
        }
        if (oldest == 0) oldest = std::numeric_limits<std::int64_t>::max();
    }
    return writes.End(
        Statement(m_database, "DELETE FROM steps WHERE command IN (SELECT id FROM"
                              " commands WHERE state IN (1, 2, 5) AND id<?)")
            .Add(oldest)
            .Run() &&
        Statement(m_database, "DELETE FROM commands WHERE state IN (1, 2, 5) AND id<?")
            .Add(oldest)
            .Run());
}

} // namespace tarn
