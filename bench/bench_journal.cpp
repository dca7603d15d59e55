// What the history costs: a delete that is written down beside one that is not, in turn, and the
// first page of a history of 100,000 commands.
#include "Timing.h"
#include "history/Changes.h"
#include "history/History.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sqlite3.h>

namespace {

namespace fs = std::filesystem;

constexpr int kDeletes = 200;
constexpr int kCommands = 100000;

std::string NewFile(const std::string& folder, int number) {
    std::string path = folder + "/" + std::to_string(number) + ".jpg";
    std::ofstream(path) << "x";
    return path;
}

void Tell(const char* what, std::vector<double> milliseconds) {
    std::sort(milliseconds.begin(), milliseconds.end());
    std::printf("%-34s median %.2f ms, 99 %% within %.2f, longest %.2f\n", what,
                milliseconds[milliseconds.size() / 2], milliseconds[milliseconds.size() * 99 / 100],
                milliseconds.back());
}

using tarn::bench::Milliseconds;

void Deletes(const std::string& folder) {
    const auto files = tarn::MakeFiles();
    tarn::History history(*files, folder + "/history.db");
    std::vector<double> bare;
    std::vector<double> journalled;
    std::string error;
    for (int i = 0; i < kDeletes; ++i) {
        const std::string one = NewFile(folder, 2 * i);
        const std::string other = NewFile(folder, 2 * i + 1);
        bare.push_back(Milliseconds([&] { files->Trash(one, &error); }));
        journalled.push_back(Milliseconds([&] {
            tarn::Changes changes(history, "Delete");
            changes.ThrowAway(other, &error);
        }));
    }
    if (!error.empty()) std::fprintf(stderr, "%s\n", error.c_str());
    Tell("delete, not written down", bare);
    Tell("delete, written down", journalled);
}

// One by one they would take a quarter of an hour.
void Multiply(const std::string& file) {
    sqlite3* database = nullptr;
    ::sqlite3_open(file.c_str(), &database);
    ::sqlite3_exec(database,
                   "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i+1 FROM n WHERE i<100000)"
                   " INSERT INTO commands SELECT i, began, what, folder, files, state, i, redoable,"
                   " process, bytes FROM commands, n WHERE id=1",
                   nullptr, nullptr, nullptr);
    ::sqlite3_exec(database,
                   "INSERT INTO plans SELECT id, 1, (SELECT steps FROM plans WHERE command=1)"
                   " FROM commands WHERE id>1",
                   nullptr, nullptr, nullptr);
    ::sqlite3_close(database);
}

void Opening(const std::string& folder) {
    const auto files = tarn::MakeFiles();
    {
        tarn::Journal journal(folder + "/many.db");
        std::vector<tarn::Step> steps(1);
        steps[0].from = folder + "/M31_0001.jpg";
        steps[0].number = 1;
        std::int64_t id = 0;
        journal.Begin("Delete 'M31_0001.jpg'", folder, steps, &id);
        journal.End(id, "Delete 'M31_0001.jpg'", 1, {});
    }
    Multiply(folder + "/many.db");
    tarn::History history(*files, folder + "/many.db");
    std::size_t rows = 0;
    const double first = Milliseconds([&] {
        rows = history.List({500}).size();
        history.NextToUndo();
        history.NextToRedo();
        history.BrokenOff();
    });
    const double found = Milliseconds([&] { history.List({500, 0, "nowhere"}); });
    std::printf("%d commands: opened, %zu rows %.1f ms; a text that none has %.1f ms\n", kCommands,
                rows, first, found);
}

} // namespace

int main(int argc, char** argv) {
    const std::string folder =
        argc > 1 ? argv[1] : (fs::temp_directory_path() / "bench_journal").string();
    fs::create_directories(folder);
    ::setenv("XDG_DATA_HOME", (folder + "/data").c_str(), 1);
    Deletes(folder);
    Opening(folder);
    fs::remove_all(folder);
    return 0;
}
