#include "console/AlignCommand.h"

#include "console/Arguments.h"
#include "console/TableRow.h"
#include "sky/align/Align.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--csv"}, {"--reference", "FILE"}};
constexpr UsageLine kLines[] = {{kOptions, "FOLDER|FILE..."}};

constexpr int kDecimals = 3;    // of pixels
constexpr int kMapDecimals = 8; // a thousandth of a pixel at the far end of a frame

// None where no frame has stars.
std::optional<std::size_t> SharpestOf(const std::vector<FrameMeasures>& frames) {
    std::size_t most = 0;
    for (const FrameMeasures& frame : frames) most = std::max(most, frame.brightest.size());
    std::optional<std::size_t> sharpest;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (!std::isfinite(frames[i].hfr) || 2 * frames[i].brightest.size() < most) continue;
        if (!sharpest || frames[i].hfr < frames[*sharpest].hfr) sharpest = i;
    }
    return sharpest;
}

void PrintRow(bool csv, const std::string& path, const Alignment& alignment) {
    TableRow row(csv);
    row.Add(path);
    const bool isFound = alignment.fault.empty();
    const FrameMap& map = alignment.map;
    for (const double part : {map.a, map.b, map.c, map.d, map.e, map.f})
        row.Add(isFound ? part : kNotMeasured, kMapDecimals);
    row.Add(isFound ? std::to_string(alignment.matched) : std::string());
    row.Add(isFound ? alignment.residual : kNotMeasured, kDecimals);
    row.Add(alignment.fault).Print();
}

Alignment AlignmentOf(const FrameMeasures& frame, const FrameMeasures& reference) {
    if (!frame.brightest.empty()) return Align(frame.brightest, reference.brightest);
    Alignment none;
    none.fault = frame.fault.empty() ? "no stars" : frame.fault;
    return none;
}

} // namespace

constinit const Usage kAlignUsage{"align", kLines};

int RunAlign(std::span<const std::string> words, const FrameMeasurer& measure) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kAlignUsage);
    if (arguments->Operands().empty()) return ComplainOfUsage("no file given", kAlignUsage);
    const bool csv = arguments->Has("--csv");
    const MeasuredFrames frames = MeasureOperands(arguments->Operands(), measure);
    FrameMeasures reference;
    if (arguments->Has("--reference")) {
        const std::string path = arguments->ValueOf("--reference");
        reference = measure({path}).front();
        if (reference.brightest.empty()) {
            ComplainOfFile(path, reference.fault.empty() ? "no stars" : reference.fault);
            return kExitFailedFile;
        }
    } else if (const auto sharpest = SharpestOf(frames.measures)) {
        reference = frames.measures[*sharpest];
    }
    PrintColumnNames(csv, {"file", "a", "b", "c", "d", "e", "f", "matched", "residual", "error"});
    int exitStatus = kExitSuccess;
    for (std::size_t i = 0; i < frames.paths.size(); ++i) {
        const Alignment alignment = AlignmentOf(frames.measures[i], reference);
        PrintRow(csv, frames.paths[i], alignment);
        if (!alignment.fault.empty()) exitStatus = kExitFailedFile;
    }
    return exitStatus;
}

} // namespace tarn
