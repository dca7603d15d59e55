#include "console/StarsCommand.h"

#include "common/numbers.h"
#include "common/paths.h"
#include "console/Arguments.h"
#include "console/ListedPictures.h"
#include "sky/stars/Series.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--list"}, {"--csv"}};
constexpr UsageLine kLines[] = {{kOptions, "FILE|FOLDER..."}};

// What a folder is looked through for.
constexpr char kTypes[] =
    "*.fits;*.fit;*.fts;*.fit*.gz;*.fz;*.xisf;*.cr2;*.cr3;*.nef;*.arw;*.dng;*.raf;*.orf;*.rw2;"
    "*.pef;*.jpg;*.jpeg;*.tif;*.tiff;*.png;*.heic;*.heif;*.avif;*.jxl;*.webp;*.bmp";

// Fields of one row, divided as is asked.
class Row {
public:
    explicit Row(bool csv) : m_csv(csv) {}

    Row& Add(std::string_view field) {
        if (m_begun) m_text += m_csv ? ',' : '\t';
        m_begun = true;
        m_text += m_csv ? Quoted(field) : OnOneLine(field);
        return *this;
    }
    Row& Add(const char* field) { return Add(std::string_view(field)); }
    Row& Add(int number) { return Add(std::to_string(number)); }
    Row& Add(double value, int decimals) {
        return Add(std::isfinite(value) ? FormatFixed(value, decimals) : std::string());
    }
    // Of a value in the units of the file, which may be far below 1.
    Row& AddValue(double value) {
        return Add(std::isfinite(value) ? ShortestSingle(float(value)) : std::string());
    }
    void Print() const { std::puts(m_text.c_str()); }

private:
    static std::string Quoted(std::string_view field) {
        if (field.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(field);
        std::string quoted = "\"";
        for (const char sign : field) {
            if (sign == '"') quoted += sign;
            quoted += sign;
        }
        return quoted + "\"";
    }
    static std::string OnOneLine(std::string_view field) {
        std::string line(field);
        for (char& sign : line)
            if (sign == '\t' || sign == '\n' || sign == '\r') sign = ' ';
        return line;
    }

    bool m_csv;
    bool m_begun = false;
    std::string m_text;
};

void PrintNames(bool csv, std::initializer_list<const char*> names) {
    Row row(csv);
    for (const char* name : names) row.Add(name);
    row.Print();
}

struct Frames {
    std::vector<std::string> paths;
    std::vector<FrameMeasures> measures;
    std::vector<double> transparency;
    std::vector<double> scores;
};

// A folder that cannot be read has a row, too.
Frames FramesOf(const std::vector<std::string>& operands, const StarMeasurers& measurers) {
    Frames frames;
    std::vector<std::string> files;
    std::map<std::size_t, std::string> faults; // of rows that are no files
    for (const std::string& operand : operands) {
        std::error_code code;
        if (!std::filesystem::is_directory(operand, code)) {
            frames.paths.push_back(operand);
            files.push_back(operand);
            continue;
        }
        const auto names = ListedFiles(operand, kTypes);
        if (!names) {
            faults[frames.paths.size()] = "is not a folder that can be read";
            frames.paths.push_back(operand);
            continue;
        }
        for (const std::string& name : *names) {
            frames.paths.push_back(JoinPath(operand, name));
            files.push_back(frames.paths.back());
        }
    }
    std::vector<FrameMeasures> measured = measurers.measure(files);
    std::size_t next = 0;
    for (std::size_t i = 0; i < frames.paths.size(); ++i) {
        const auto fault = faults.find(i);
        FrameMeasures row;
        if (fault != faults.end())
            row.fault = fault->second;
        else
            row = std::move(measured[next++]);
        frames.measures.push_back(std::move(row));
    }
    return frames;
}

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
        const std::vector<double> transparency = TransparencyOf(measures);
        const std::vector<double> scores = ScoresOf(measures, transparency);
        for (std::size_t i = 0; i < members.size(); ++i) {
            frames.transparency[members[i]] = transparency[i];
            frames.scores[members[i]] = scores[i];
        }
    }
}

int PrintFrames(const std::vector<std::string>& operands, bool csv,
                const StarMeasurers& measurers) {
    Frames frames = FramesOf(operands, measurers);
    Judge(frames);
    PrintNames(csv,
               {"file", "width", "height", "stars", "hfr", "fwhm", "eccentricity", "background",
                "noise", "saturated", "transparency", "sharpness", "score", "error"});
    int exitStatus = kExitSuccess;
    for (std::size_t i = 0; i < frames.paths.size(); ++i) {
        const FrameMeasures& measures = frames.measures[i];
        const bool isRead = measures.width > 0;
        Row row(csv);
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
    PrintNames(csv,
               {"x", "y", "flux", "peak", "hfr", "fwhm", "eccentricity", "angle", "saturated"});
    for (const MeasuredStar& source : sources) {
        Row row(csv);
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
