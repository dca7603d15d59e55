#include "console/StackCommand.h"

#include "common/numbers.h"
#include "console/Arguments.h"
#include "console/LeftOut.h"
#include "console/StackTarget.h"
#include "console/TableRow.h"

#include <cstdio>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--csv"}, {"--to", "OUT.fits"}, {"--reject", "SIGMA"}};
constexpr UsageLine kLines[] = {{kOptions, "FOLDER|FILE..."}};

constexpr double kLeastSigmas = 1;
constexpr double kMostSigmas = 100;

bool ReadSigmas(const Arguments& arguments, double& sigmas, std::string& fault) {
    if (!arguments.Has("--reject")) return true;
    const auto number = ParseNumber(arguments.ValueOf("--reject"));
    if (number && (*number == 0 || (*number >= kLeastSigmas && *number <= kMostSigmas))) {
        sigmas = *number;
        return true;
    }
    fault = "--reject must be a number from 1 to 100, or 0 to leave nothing out";
    return false;
}

void PrintRow(bool csv, const std::string& path, const StackedFrame& frame) {
    TableRow row(csv);
    row.Add(path).Add(frame.used ? 1 : 0);
    row.AddValue(frame.used ? frame.weight : kNotMeasured);
    row.Add(frame.used ? std::to_string(frame.rejected) : std::string());
    row.Add(frame.fault).Print();
}

// Where there is no sum none of them is in it.
void TellFaultOfAll(StackResult& result) {
    for (StackedFrame& frame : result.frames) {
        frame.used = false;
        if (frame.fault.empty()) frame.fault = "no sum: " + result.fault;
    }
}

} // namespace

constinit const Usage kStackUsage{"stack", kLines};

int RunStack(std::span<const std::string> words, const Stackers& stackers) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    double sigmas = StackOrder().sigmas;
    if (!arguments || !ReadSigmas(*arguments, sigmas, fault))
        return ComplainOfUsage(fault, kStackUsage);
    if (arguments->Operands().empty()) return ComplainOfUsage("no file given", kStackUsage);
    std::vector<NamedFrame> named = FramesOf(arguments->Operands());
    const std::string target = arguments->ValueOf("--to");
    if (!target.empty()) fault = CheckTarget(target, named);
    if (!fault.empty()) {
        ComplainOfFile(target, fault);
        return kExitFailedFile;
    }
    const bool csv = arguments->Has("--csv");
    const MeasuredFrames frames = Measure(named, stackers.measure);
    const std::vector<std::string> left =
        LeftOut(frames.paths, arguments->Operands(), stackers.marks);
    const SeriesPlan plan = PlanSeries(frames.measures, left);
    StackResult result = stackers.sum({frames.paths, plan, sigmas, target});
    if (!result.fault.empty()) TellFaultOfAll(result);
    PrintColumnNames(csv, {"file", "used", "weight", "rejected_pixels", "error"});
    int exitStatus = kExitSuccess;
    for (std::size_t i = 0; i < frames.paths.size(); ++i) {
        PrintRow(csv, frames.paths[i], result.frames[i]);
        const std::string& told = result.frames[i].fault;
        if (!told.empty() && told != left[i]) exitStatus = kExitFailedFile;
    }
    if (result.fault.empty()) return exitStatus;
    std::fflush(stdout);
    ComplainOfFile(target.empty() ? "sum" : target, result.fault);
    return kExitFailedFile;
}

} // namespace tarn
