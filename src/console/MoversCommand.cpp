#include "console/MoversCommand.h"

#include "console/Arguments.h"
#include "console/LeftOut.h"
#include "console/TableRow.h"

#include <cstdio>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--csv"}};
constexpr UsageLine kLines[] = {{kOptions, "FOLDER|FILE..."}};

constexpr int kPlaceDecimals = 2;
constexpr int kSpeedDecimals = 2;
constexpr int kAngleDecimals = 1;

void PrintMover(bool csv, int number, const Mover& mover, const std::vector<std::string>& paths) {
    for (const MoverSight& sight : mover.sights) {
        TableRow row(csv);
        row.Add(number).Add(paths[sight.number]);
        row.Add(sight.x, kPlaceDecimals).Add(sight.y, kPlaceDecimals).AddValue(sight.flux);
        row.Add(mover.speed, kSpeedDecimals).Add(mover.angle, kAngleDecimals).Add("").Print();
    }
}

void PrintFault(bool csv, const std::string& path, const std::string& fault) {
    TableRow row(csv);
    row.Add("").Add(path);
    for (int i = 0; i < 5; ++i) row.Add("");
    row.Add(fault).Print();
}

} // namespace

constinit const Usage kMoversUsage{"movers", kLines};

int RunMovers(std::span<const std::string> words, const MoversParts& parts) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kMoversUsage);
    if (arguments->Operands().empty()) return ComplainOfUsage("no file given", kMoversUsage);
    const bool csv = arguments->Has("--csv");
    const MeasuredFrames frames = MeasureOperands(arguments->Operands(), parts.measure);
    const std::vector<std::string> left = LeftOut(frames.paths, arguments->Operands(), parts.marks);
    const SeriesPlan plan = PlanSeries(frames.measures, left);
    const MoversResult result = parts.find({frames.paths, frames.measures, plan});
    PrintColumnNames(csv, {"track", "file", "x", "y", "flux", "speed", "angle", "error"});
    int number = 0;
    for (const Mover& mover : result.movers) PrintMover(csv, ++number, mover, frames.paths);
    int exitStatus = kExitSuccess;
    for (std::size_t i = 0; i < frames.paths.size(); ++i) {
        if (result.faults[i].empty()) continue;
        PrintFault(csv, frames.paths[i], result.faults[i]);
        if (result.faults[i] != left[i]) exitStatus = kExitFailedFile;
    }
    if (result.fault.empty()) return exitStatus;
    std::fflush(stdout);
    std::fprintf(stderr, "tarn: nothing was looked for: %s\n", result.fault.c_str());
    return kExitFailedFile;
}

} // namespace tarn
