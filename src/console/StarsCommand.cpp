#include "console/StarsCommand.h"

#include "console/Arguments.h"
#include "console/TableRow.h"
#include "sky/judging/Judging.h"

#include <cmath>
#include <cstdio>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--list"}, {"--csv"}};
constexpr UsageLine kLines[] = {{kOptions, "FILE|FOLDER..."}};

int PrintFrames(const std::vector<std::string>& operands, bool csv,
                const StarMeasurers& measurers) {
    const MeasuredFrames frames = MeasureOperands(operands, measurers.measure);
    const JudgedFrames judged = JudgeFrames(frames.measures);
    PrintColumnNames(csv, {"file", "width", "height", "stars", "hfr", "fwhm", "eccentricity",
                           "background", "noise", "saturated", "transparency", "sharpness", "score",
                           "error"});
    int exitStatus = kExitSuccess;
    for (std::size_t i = 0; i < frames.paths.size(); ++i) {
        const FrameMeasures& measures = frames.measures[i];
        const bool isRead = measures.width > 0;
        TableRow row(csv);
        row.Add(frames.paths[i]);
        for (const int number : {measures.width, measures.height, measures.stars})
            row.Add(isRead ? std::to_string(number) : std::string());
        row.Add(measures.hfr, 3).Add(measures.fwhm, 3).Add(measures.eccentricity, 3);
        row.AddValue(measures.background).AddValue(measures.noise);
        row.Add(isRead ? std::to_string(measures.saturated) : std::string());
        row.Add(judged.transparency[i], 3).AddValue(measures.sharpness);
        row.Add(judged.scores[i], 1).Add(measures.fault).Print();
        if (!measures.fault.empty()) exitStatus = kExitFailedFile;
    }
    return exitStatus;
}

int PrintSources(const std::string& path, bool csv, const StarMeasurers& measurers) {
    std::string fault;
    const std::vector<MeasuredStar> sources = measurers.list(path, fault);
    PrintColumnNames(
        csv, {"x", "y", "flux", "peak", "hfr", "fwhm", "eccentricity", "angle", "saturated"});
    for (const MeasuredStar& source : sources) {
        TableRow row(csv);
        row.Add(source.x, 3).Add(source.y, 3).AddValue(source.flux).AddValue(source.peak);
        row.Add(source.hfr, 3).Add(source.fwhm, 3).Add(source.eccentricity, 3);
        row.Add(source.angle, 1).Add(source.kind == SourceKind::Saturated ? 1 : 0).Print();
    }
    if (fault.empty()) return kExitSuccess;
    std::fflush(stdout);
    ComplainOfFile(path, fault);
    return kExitFailedFile;
}

} // namespace

constinit const Usage kStarsUsage{"stars", kLines};

int RunStars(std::span<const std::string> words, const StarMeasurers& measurers) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kStarsUsage);
    const std::vector<std::string>& operands = arguments->Operands();
    if (operands.empty()) return ComplainOfUsage("no file given", kStarsUsage);
    const bool csv = arguments->Has("--csv");
    if (!arguments->Has("--list")) return PrintFrames(operands, csv, measurers);
    if (operands.size() != 1) return ComplainOfUsage("--list takes one file", kStarsUsage);
    return PrintSources(operands.front(), csv, measurers);
}

} // namespace tarn
