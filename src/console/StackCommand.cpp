#include "console/StackCommand.h"

#include "common/numbers.h"
#include "console/Arguments.h"
#include "console/RejectedFrames.h"
#include "console/TableRow.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--csv"}, {"--to", "OUT.fits"}, {"--reject", "SIGMA"}};
constexpr UsageLine kLines[] = {{kOptions, "FOLDER|FILE..."}};

constexpr double kLeastSigmas = 1;
constexpr double kMostSigmas = 100;
constexpr int kDecimals = 4; // of weights

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

// A sum over one of its own frames would throw that away.
bool IsAmong(const std::string& target, const std::vector<std::string>& files) {
    return std::any_of(files.begin(), files.end(), [&](const std::string& file) {
        std::error_code code;
        return std::filesystem::equivalent(file, target, code);
    });
}

void PrintRow(bool csv, const std::string& path, const StackedFrame& frame) {
    TableRow row(csv);
    row.Add(path).Add(frame.used ? 1 : 0);
    row.Add(frame.used ? frame.weight : kNotMeasured, kDecimals);
    row.Add(frame.used ? std::to_string(frame.rejected) : std::string());
    row.Add(frame.fault).Print();
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
    const std::string target = arguments->ValueOf("--to");
    if (!target.empty() && IsAmong(target, arguments->Operands())) {
        ComplainOfFile(target, "is itself one of the frames, or their folder");
        return kExitFailedFile;
    }
    const bool csv = arguments->Has("--csv");
    const MeasuredFrames frames = MeasureOperands(arguments->Operands(), stackers.measure, target);
    const SeriesPlan plan =
        PlanSeries(frames.measures, RejectedFrames(frames.paths, stackers.marks));
    const StackResult result = stackers.sum({frames.paths, plan, sigmas, target});
    PrintColumnNames(csv, {"file", "used", "weight", "rejected_pixels", "error"});
    int exitStatus = kExitSuccess;
    for (std::size_t i = 0; i < frames.paths.size(); ++i) {
        PrintRow(csv, frames.paths[i], result.frames[i]);
        const std::string& told = result.frames[i].fault;
        if (!told.empty() && told != kMarkedRejected) exitStatus = kExitFailedFile;
    }
    if (result.fault.empty()) return exitStatus;
    std::fflush(stdout);
    ComplainOfFile(target.empty() ? "sum" : target, result.fault);
    return kExitFailedFile;
}

} // namespace tarn
