#include "console/StarsCommand.h"

#include "console/Arguments.h"
#include "console/TableRow.h"
#include "sky/align/Align.h"
#include "sky/stars/Series.h"

#include <cmath>
#include <cstdio>
#include <map>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--list"}, {"--csv"}};
constexpr UsageLine kLines[] = {{kOptions, "FILE|FOLDER..."}};

struct Frames : MeasuredFrames {
    std::vector<double> transparency;
    std::vector<double> scores;
};

// Each series for itself; a frame alone has neither.
void Judge(Frames& frames) {
    frames.transparency.assign(frames.paths.size(), kNotMeasured);
    frames.scores.assign(frames.paths.size(), kNotMeasured);
    std::map<std::string, std::vector<std::size_t>> series;
    for (std::size_t i = 0; i < frames.paths.size(); ++i)
        if (std::isfinite(frames.measures[i].hfr)) series[frames.measures[i].series].push_back(i);
    for (const auto& [_, members] : series) {
        if (members.size() < 2) continue;
        std::vector<FrameMeasures> measures;
        for (const std::size_t member : members) measures.push_back(frames.measures[member]);
        const std::size_t reference = ReferenceOf(measures);
        const std::vector<double> transparency =
            TransparencyOf(measures, reference, MapsOnto(reference, measures));
        const std::vector<double> scores = ScoresOf(measures, transparency);
        for (std::size_t i = 0; i < members.size(); ++i) {
            frames.transparency[members[i]] = transparency[i];
            frames.scores[members[i]] = scores[i];
        }
    }
}

int PrintFrames(const std::vector<std::string>& operands, bool csv,
                const StarMeasurers& measurers) {
    Frames frames{MeasureOperands(operands, measurers.measure), {}, {}};
    Judge(frames);
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
        row.Add(frames.transparency[i], 3).AddValue(measures.sharpness);
        row.Add(frames.scores[i], 1).Add(measures.fault).Print();
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
