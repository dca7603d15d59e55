// 10,000 pictures with a note each under other names: the plan and its run, as the window does
// them, beside the bare calls that the same names take. One process, the two in turn, there and
// back; the folder is the one given, or a temporary one.
#include "Timing.h"
#include "common/paths.h"
#include "fileops/RenameRun.h"
#include "history/History.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kFiles = 10000;
constexpr int kRounds = 15;

struct Pair {
    std::string from;
    std::string to;
};

void Fill(const std::string& folder, const char* ending) {
    fs::create_directories(folder);
    for (int i = 0; i < kFiles; ++i)
        std::ofstream(folder + "/IMG_" + std::to_string(10000 + i) + ending) << "x";
}

std::vector<Pair> Pairs(const std::string& folder, const char* ending) {
    std::vector<Pair> pairs;
    for (int i = 0; i < kFiles; ++i) {
        const std::string rest = std::to_string(10000 + i) + ending;
        pairs.push_back({folder + "/IMG_" + rest, folder + "/Moon_" + rest});
    }
    return pairs;
}

void BareRenames(const std::vector<Pair>& pairs, bool back) {
    int failed = 0;
    for (const Pair& pair : pairs)
        failed += ::rename((back ? pair.to : pair.from).c_str(),
                           (back ? pair.from : pair.to).c_str()) != 0;
    if (failed > 0) std::fprintf(stderr, "%d bare renames failed\n", failed);
}

// What the window plans of all before the first; the plan of the notes.
tarn::RenamePlan PlanAll(const tarn::RenamePlan& plan, const std::vector<std::string>& names,
                         const std::string& notes, const std::vector<std::string>& noteNames,
                         tarn::Changes& changes) {
    std::vector<tarn::Step> steps;
    AddSteps(plan, changes, steps);
    tarn::RenamePlan noted =
        tarn::PlanRenames(notes, tarn::NoteRows(plan.rows, names, noteNames, false), noteNames);
    AddSteps(noted, changes, steps);
    changes.Plan(std::move(steps));
    return noted;
}

std::size_t RunAll(tarn::RenamePlan plan, tarn::Changes& changes,
                   std::vector<tarn::RenameRow>& moved) {
    tarn::RenameRun run(std::move(plan), changes);
    while (!run.IsDone()) run.Step();
    moved = run.Moved();
    return run.Faults().size();
}

// As the window's command: names read, planned, done; then the same for the notes.
void Renames(tarn::History& history, const std::string& pictures, const std::string& notes,
             const char* from, const char* to) {
    tarn::Files& files = history.Disk();
    tarn::Changes changes(history, "Rename of 10000 pictures");
    std::vector<tarn::RenameRow> moved;
    std::vector<tarn::RenameRow> movedNotes;
    const auto names = files.FileNames(pictures).value();
    const auto noteNames = files.FileNames(notes).value();
    tarn::RenamePlan plan = tarn::PlanRenames(pictures, tarn::RenameRows(names, from, to), names);
    tarn::RenamePlan noted = PlanAll(plan, names, notes, noteNames, changes);
    std::size_t faults = RunAll(std::move(plan), changes, moved);
    faults += RunAll(std::move(noted), changes, movedNotes);
    if (faults > 0 || moved.size() != kFiles || movedNotes.size() != kFiles)
        std::fprintf(stderr, "the run did not do all\n");
}

} // namespace

int main(int argc, char** argv) {
    std::string home = (argc > 1 ? std::string(argv[1]) : fs::temp_directory_path().string()) +
                       "/bench-rename-XXXXXX";
    if (!::mkdtemp(home.data())) return 1;
    const std::string pictures = home + "/pictures";
    const std::string notes = home + "/notes";
    Fill(pictures, ".jpg");
    Fill(notes, ".enf");
    std::vector<Pair> pairs = Pairs(pictures, ".jpg");
    for (Pair& pair : Pairs(notes, ".enf")) pairs.push_back(std::move(pair));
    const auto files = tarn::MakeFiles();
    tarn::History history(*files, home + "/history.db");
    std::vector<double> bareTimes;
    std::vector<double> times;
    std::vector<double> ratios;
    for (int round = 0; round < kRounds; ++round) {
        bareTimes.push_back(tarn::bench::Milliseconds([&] {
            BareRenames(pairs, false);
            BareRenames(pairs, true);
        }));
        times.push_back(tarn::bench::Milliseconds([&] {
            Renames(history, pictures, notes, "IMG_", "Moon_");
            Renames(history, pictures, notes, "Moon_", "IMG_");
        }));
        ratios.push_back(times.back() / bareTimes.back());
    }
    std::printf("%d bare renames       %7.1f ms\n", 4 * kFiles, tarn::bench::Median(bareTimes));
    std::printf("two batch renames        %7.1f ms   ratio %.2f (goal: at most 1.3)\n",
                tarn::bench::Median(times), tarn::bench::Median(ratios));
    fs::remove_all(home);
    return 0;
}
