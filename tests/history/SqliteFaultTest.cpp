// Each call of the database fails once in turn, or all from one on: files are as before or as after
// the command, or as far as the history can take them back.
#include "Acts.h"

#include "history/History.h"
#include "support/ForwardingFiles.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string_view>
#include <utility>

namespace {

struct CallFault {
    int failing = 0; // the number of the call; 0: none
    bool andAllAfter = false;
    int code = SQLITE_IOERR;
    int calls = 0;
    int failed = 0;
    bool isInside = false; // of a call, which makes others itself and trusts them

    bool Fails() {
        if (failing == 0 || isInside) return false;
        ++calls;
        const bool fails = andAllAfter ? calls >= failing : calls == failing;
        failed += int(fails);
        return fails;
    }
};
CallFault theFault;

// What stands in memory, for who goes on without a file, does not err.
bool IsOnDisk(sqlite3* database) {
    const char* file = database ? ::sqlite3_db_filename(database, "main") : nullptr;
    return file && *file;
}

template <typename Call> Call* Real(const char* name) {
    return reinterpret_cast<Call*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// The library is a shared one: whoever calls it passes here.
extern "C" {
int sqlite3_open_v2(const char* file, sqlite3** database, int flags, const char* vfs) {
    static const auto real = Real<decltype(sqlite3_open_v2)>("sqlite3_open_v2");
    if (std::string_view(file) != ":memory:" && theFault.Fails()) {
        *database = nullptr;
        return theFault.code;
    }
    return real(file, database, flags, vfs);
}
int sqlite3_prepare_v2(sqlite3* database, const char* sql, int bytes, sqlite3_stmt** statement,
                       const char** rest) {
    static const auto real = Real<decltype(sqlite3_prepare_v2)>("sqlite3_prepare_v2");
    if (IsOnDisk(database) && theFault.Fails()) {
        *statement = nullptr;
        return theFault.code;
    }
    return real(database, sql, bytes, statement, rest);
}
int sqlite3_step(sqlite3_stmt* statement) {
    static const auto real = Real<decltype(sqlite3_step)>("sqlite3_step");
    const bool fails = IsOnDisk(::sqlite3_db_handle(statement)) && theFault.Fails();
    return fails ? theFault.code : real(statement);
}
int sqlite3_exec(sqlite3* database, const char* sql, int (*row)(void*, int, char**, char**),
                 void* with, char** error) {
    static const auto real = Real<decltype(sqlite3_exec)>("sqlite3_exec");
    const bool fails = IsOnDisk(database) && theFault.Fails();
    if (fails) return theFault.code;
    const bool wasInside = std::exchange(theFault.isInside, true);
    const int code = real(database, sql, row, with, error);
    theFault.isInside = wasInside;
    return code;
}
}

namespace tarn::testing {
namespace {

struct World {
    TestFolder pictures{kOtherDisk};
    TestFolder otherDisk;
    TestFolder state{kOtherDisk};
    ForwardingFiles files;

    explicit World(const Act& act) { FillLongAgo(pictures, act.before); }
    std::string Database() const { return state.Path() + "/history.db"; }
    Tree Whole() const {
        Tree tree = WholeTree(pictures.Path());
        for (auto& [name, bytes] : WholeTree(otherDisk.Path())) tree["there/" + name] = bytes;
        return tree;
    }
    // In a process of its own; whether a call failed.
    bool Run(const Act& act, bool goesWithout, const CallFault& fault) {
        const pid_t child = ::fork();
        if (child == 0) {
            theFault = fault;
            {
                History history(files, Database());
                history.onUnwritable = [&](const std::string&) { return goesWithout; };
                Changes changes(history, act.name);
                if (act.isPlanned) Plan(act, changes, pictures.Path(), otherDisk.Path());
                act.run(changes, pictures.Path(), otherDisk.Path());
            }
            ::_exit(theFault.failed > 0 ? 1 : 0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status)) << "it crashed";
        return WEXITSTATUS(status) == 1;
    }
    // By a later run, when the database is well again: also what is told of as broken off.
    void TakeBack() {
        History history(files, Database());
        const GoOn goOn = [](std::size_t) { return true; };
        for (const CommandRow& row : history.BrokenOff()) history.UndoOf(row.id, goOn);
        if (history.NextToUndo()) history.Undo(goOn);
    }
};

struct Way {
    const char* name;
    int code;
    bool andAllAfter;
    bool goesWithout;
    int stride; // of the calls: those between fail in much the same way
};
constexpr Way kWays[] = {{"one errs", SQLITE_IOERR, false, false, 1},
                         {"one errs, goes without", SQLITE_IOERR, false, true, 5},
                         {"all err from it on", SQLITE_IOERR, true, false, 3},
                         {"full from it on, goes without", SQLITE_FULL, true, true, 5},
                         {"full from it on", SQLITE_FULL, true, false, 5}};

class SqliteFaults : public ::testing::TestWithParam<std::size_t> {};

TEST_P(SqliteFaults, NoCommandIsHalfAndUnknown) {
    const Act& act = Acts()[GetParam()];
    World whole(act);
    const Tree before = whole.Whole();
    whole.Run(act, false, {});
    const Tree after = whole.Whole();
    int runs = 0;
    for (const Way& way : kWays)
        for (int number = 1; !HasFailure(); number += way.stride) {
            World world(act);
            if (!world.Run(act, way.goesWithout, {number, way.andAllAfter, way.code})) break;
            ++runs;
            SCOPED_TRACE(std::string(act.name) + ", " + way.name + ", call " +
                         std::to_string(number));
            if (!way.goesWithout) world.TakeBack();
            const Tree now = world.Whole();
            EXPECT_EQ(now, now == after || way.goesWithout ? after : before);
        }
    std::printf("%-28s %d faults of the database\n", act.name, runs);
    EXPECT_GT(runs, 20);
}

INSTANTIATE_TEST_SUITE_P(EachAct, SqliteFaults, ::testing::Range(std::size_t(0), Acts().size()));

} // namespace
} // namespace tarn::testing
