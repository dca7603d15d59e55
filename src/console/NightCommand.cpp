#include "console/NightCommand.h"

#include "console/Arguments.h"
#include "console/NamedFrames.h"
#include "console/SiteOption.h"
#include "console/TableRow.h"

#include <cstdio>
#include <filesystem>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--csv"},
                                   {"--html", "OUT.html", false, true},
                                   {"--pdf", "OUT.pdf"},
                                   {"--site", "LAT,LON,HEIGHT"},
                                   {"--notes", "DIR"},
                                   {"--now", "TEXT"},
                                   {"--paper", "A4"}};
constexpr UsageLine kLines[] = {{kOptions, "FOLDER..."}};

std::string Absolute(const std::string& path) {
    std::error_code code;
    const auto absolute = std::filesystem::absolute(path, code);
    return code || path.empty() ? path : absolute.lexically_normal().string();
}

void PrintRows(bool csv, const std::vector<IntegrationRow>& rows) {
    const auto print = [&](const auto& cells) {
        TableRow line(csv);
        for (const auto& cell : cells) line.Add(cell);
        line.Print();
    };
    print(IntegrationColumns());
    for (const IntegrationRow& row : rows) print(IntegrationCells(row));
}

// The exit status when they will not do, else -1.
int TakeOptions(const Arguments& arguments, NightRequest& request) {
    std::string fault;
    if (arguments.Has("--site")) {
        request.site = ParseSite(arguments.ValueOf("--site"), fault);
        if (!request.site) return ComplainOfUsage(fault, kNightUsage);
    }
    for (const char* out : {"--html", "--pdf"})
        if (arguments.Has(out) && arguments.ValueOf(out).empty())
            return ComplainOfUsage(std::string(out) + " needs the name of a file", kNightUsage);
    request.html = Absolute(arguments.ValueOf("--html"));
    request.pdf = Absolute(arguments.ValueOf("--pdf"));
    request.notes = arguments.ValueOf("--notes");
    request.now = arguments.ValueOf("--now");
    if (arguments.Has("--paper")) request.paper = arguments.ValueOf("--paper");
    std::error_code code;
    if (request.notes.empty() || std::filesystem::is_directory(request.notes, code)) return -1;
    ComplainOfFile(request.notes, "is not a folder");
    return kExitFailedFile;
}

} // namespace

constinit const Usage kNightUsage{"night", kLines};

int RunNight(std::span<const std::string> words, std::string_view version,
             const NightReporter& report) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kNightUsage);
    if (arguments->Operands().empty()) return ComplainOfUsage("no folder given", kNightUsage);
    NightRequest request;
    request.version = version;
    if (const int status = TakeOptions(*arguments, request); status >= 0) return status;
    std::vector<IntegrationRow> unread;
    for (const NamedFrame& frame : FramesOf(arguments->Operands())) {
        if (frame.fault.empty())
            request.paths.push_back(Absolute(frame.path));
        else
            unread.emplace_back().error = frame.path + ": " + frame.fault;
    }
    NightResult result = report(request);
    if (!result.badPaper.empty())
        return ComplainOfUsage("no paper is called " + result.badPaper, kNightUsage);
    result.rows.insert(result.rows.end(), unread.begin(), unread.end());
    PrintRows(arguments->Has("--csv"), result.rows);
    std::fflush(stdout);
    for (const std::string& complaint : result.complaints)
        std::fprintf(stderr, "tarn: %s\n", complaint.c_str());
    if (!result.error.empty())
        ComplainOfFile(request.html.empty() ? request.pdf : request.html, result.error);
    bool failed = !result.error.empty();
    for (const IntegrationRow& row : result.rows) failed = failed || !row.error.empty();
    return failed ? kExitFailedFile : kExitSuccess;
}

} // namespace tarn
