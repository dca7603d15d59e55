#include "console/SheetCommand.h"

#include "common/paths.h"
#include "console/Arguments.h"
#include "console/ListedPictures.h"
#include "console/MarkFilter.h"

#include <algorithm>
#include <filesystem>

namespace tarn {

namespace {

constexpr std::string_view kContactSheets[] = {"2x2", "3x4", "4x6", "5x8"};
constexpr std::string_view kDataSheets[] = {kDataSheet};
constexpr OptionRule kSheetOptions[] = {{"--notes", "DIR"}, {"--no-print-notes"}, {"--now", "TEXT"},
                                        {"--paper", "A4"},  kKeptOption,          kStarsOption};
constexpr OptionRule kDataOptions[] = {{"--notes", "DIR"}, {"--now", "TEXT"}, {"--paper", "A4"}};
constexpr UsageLine kLines[] = {{kSheetOptions, "OUT.pdf FOLDER", kContactSheets},
                                {kDataOptions, "OUT.pdf FILE", kDataSheets}};

// Null when there is no such layout.
const UsageLine* LineOf(std::string_view layout) {
    for (const UsageLine& line : kLines)
        if (std::find(line.choices.begin(), line.choices.end(), layout) != line.choices.end())
            return &line;
    return nullptr;
}

void TakeOptions(const Arguments& arguments, SheetRequest& request) {
    const auto take = [&](std::string_view option, std::string& value) {
        if (arguments.Has(option)) value = arguments.Values(option).back();
    };
    take("--notes", request.notes);
    take("--now", request.now);
    take("--paper", request.paper);
    request.printNotes = !arguments.Has("--no-print-notes");
}

// False when the source cannot be printed; the message is out.
bool TakeSource(const std::string& source, const MarkFilter& filter, SheetRequest& request) {
    if (request.layout == kDataSheet) {
        request.folder = FolderOf(source);
        request.names = {LastPart(source)};
        if (source.find(kSeparator) == std::string::npos) request.folder = ".";
        return true;
    }
    auto names = ListedPictures(source);
    const bool hasSome = names && !names->empty();
    if (names) Narrow(filter, source, *names);
    if (!names) {
        ComplainOfFile(source, "is not a folder that can be read");
    } else if (names->empty()) {
        ComplainOfFile(source, hasSome ? "has no pictures with such marks" : "has no pictures");
    }
    if (!names || names->empty()) return false;
    request.folder = source;
    request.names = *names;
    return true;
}

int Print(const SheetRequest& request, const SheetPrinter& print) {
    const SheetResult result = print(request);
    if (!result.badPaper.empty())
        return ComplainOfUsage("no paper is called " + result.badPaper, kSheetUsage);
    for (const SheetResult::Failure& failure : result.failures)
        ComplainOfFile(failure.path, failure.fault);
    if (!result.error.empty()) ComplainOfFile(request.out, result.error);
    return result.failures.empty() && result.error.empty() ? kExitSuccess : kExitFailedFile;
}

} // namespace

constinit const Usage kSheetUsage{"sheet", kLines};

int RunSheet(std::span<const std::string> words, const SheetPrinter& print) {
    if (words.empty()) return ComplainOfUsage("no sheet given", kSheetUsage);
    SheetRequest request;
    request.layout = words.front();
    const UsageLine* line = LineOf(request.layout);
    if (!line) return ComplainOfUsage("unknown sheet " + request.layout, kSheetUsage);
    std::string fault;
    const auto arguments = Arguments::Parse(words.subspan(1), line->options, fault);
    MarkFilter filter;
    if (!arguments || !TakeFilter(*arguments, filter, fault))
        return ComplainOfUsage(fault, kSheetUsage);
    if (arguments->Operands().size() != 2)
        return ComplainOfUsage("a PDF file and what goes into it are needed", kSheetUsage);
    TakeOptions(*arguments, request);
    std::error_code code;
    if (!request.notes.empty() && !std::filesystem::is_directory(request.notes, code)) {
        ComplainOfFile(request.notes, "is not a folder");
        return kExitFailedFile;
    }
    request.out = arguments->Operands()[0];
    if (!TakeSource(arguments->Operands()[1], filter, request)) return kExitFailedFile;
    return Print(request, print);
}

} // namespace tarn
