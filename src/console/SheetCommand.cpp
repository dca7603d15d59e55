#include "console/SheetCommand.h"

#include "common/paths.h"
#include "console/Arguments.h"
#include "console/ListedPictures.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace tarn {

namespace {

constexpr std::array<std::string_view, 5> kLayouts{"2x2", "3x4", "4x6", "5x8", kDataSheet};
constexpr OptionRule kSheetOptions[] = {
    {"--notes", true}, {"--no-print-notes"}, {"--now", true}, {"--paper", true}};
constexpr OptionRule kDataOptions[] = {{"--notes", true}, {"--now", true}, {"--paper", true}};

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
bool TakeSource(const std::string& source, SheetRequest& request) {
    if (request.layout == kDataSheet) {
        request.folder = FolderOf(source);
        request.names = {LastPart(source)};
        if (source.find(kSeparator) == std::string::npos) request.folder = ".";
        return true;
    }
    const auto names = ListedPictures(source);
    if (!names) {
        ComplainOfFile(source, "is not a folder that can be read");
    } else if (names->empty()) {
        ComplainOfFile(source, "has no pictures");
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

int RunSheet(std::span<const std::string> words, const SheetPrinter& print) {
    if (words.empty()) return ComplainOfUsage("no sheet given", kSheetUsage);
    SheetRequest request;
    request.layout = words.front();
    if (std::find(kLayouts.begin(), kLayouts.end(), request.layout) == kLayouts.end())
        return ComplainOfUsage("unknown sheet " + request.layout, kSheetUsage);
    const auto rules = request.layout == kDataSheet ? std::span<const OptionRule>(kDataOptions)
                                                    : std::span<const OptionRule>(kSheetOptions);
    std::string fault;
    const auto arguments = Arguments::Parse(words.subspan(1), rules, fault);
    if (!arguments) return ComplainOfUsage(fault, kSheetUsage);
    if (arguments->Operands().size() != 2)
        return ComplainOfUsage("a PDF file and what goes into it are needed", kSheetUsage);
    TakeOptions(*arguments, request);
    std::error_code code;
    if (!request.notes.empty() && !std::filesystem::is_directory(request.notes, code)) {
        ComplainOfFile(request.notes, "is not a folder");
        return kExitFailedFile;
    }
    request.out = arguments->Operands()[0];
    if (!TakeSource(arguments->Operands()[1], request)) return kExitFailedFile;
    return Print(request, print);
}

} // namespace tarn
