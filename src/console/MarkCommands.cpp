#include "console/MarkCommands.h"

#include "common/csv.h"
#include "common/paths.h"
#include "console/Arguments.h"
#include "console/ListedPictures.h"

#include <cstdio>
#include <filesystem>

namespace tarn {

namespace {

constexpr OptionRule kMarksOptions[] = {{"--csv"}};
constexpr UsageLine kMarksLines[] = {{kMarksOptions, "FOLDER|FILE..."}};
constexpr OptionRule kMarkOptions[] = {{"--keep", {}, false, true},
                                       {"--reject", {}, false, true},
                                       {"--rating", "N", false, true},
                                       {"--clear"}};
constexpr UsageLine kMarkLines[] = {{kMarkOptions, "FILE..."}};

const char* WordOf(Decision decision) {
    return decision == Decision::Keep ? "keep" : decision == Decision::Reject ? "reject" : "";
}

void PrintCsv(const FileMark& file) {
    const bool known = file.error.empty();
    std::printf("%s,%s,%s\n", CsvField(file.path).c_str(), WordOf(file.mark.decision),
                known ? std::to_string(file.mark.stars).c_str() : "");
}

void PrintRow(const FileMark& file) {
    if (!file.error.empty()) return;
    const char* word = WordOf(file.mark.decision);
    std::printf("%-6s %d %s\n", *word ? word : "-", file.mark.stars, file.path.c_str());
}

// The pictures of folders and the files themselves, in the order given; false where a folder cannot
// be read.
bool Gather(const std::vector<std::string>& operands, std::vector<std::string>& paths) {
    bool all = true;
    for (const std::string& operand : operands) {
        std::error_code code;
        if (!std::filesystem::is_directory(operand, code)) {
            paths.push_back(operand);
            continue;
        }
        const auto names = ListedPictures(operand);
        if (!names) ComplainOfFile(operand, "is not a folder that can be read");
        all = all && names;
        for (const std::string& name : names.value_or(std::vector<std::string>()))
            paths.push_back(JoinPath(operand, name));
    }
    return all;
}

int Complain(const std::vector<FileMark>& files) {
    int status = kExitSuccess;
    for (const FileMark& file : files) {
        if (file.error.empty()) continue;
        ComplainOfFile(file.path, file.error);
        status = kExitFailedFile;
    }
    return status;
}

// None when it is not exactly one of them, or no such rating.
std::optional<MarkChange> ChangeOf(const Arguments& arguments, std::string& fault) {
    const int given = arguments.Has("--keep") + arguments.Has("--reject") +
                      arguments.Has("--rating") + arguments.Has("--clear");
    if (given != 1) {
        fault = "one of --keep, --reject, --rating and --clear is needed";
        return {};
    }
    if (arguments.Has("--keep")) return Decide(Decision::Keep);
    if (arguments.Has("--reject")) return Decide(Decision::Reject);
    if (arguments.Has("--clear")) return ClearMark();
    int stars = 0;
    if (!arguments.ReadNumber("--rating", 0, kMostStars, stars, fault)) return {};
    return Rate(stars);
}

} // namespace

constinit const Usage kMarksUsage{"marks", kMarksLines};
constinit const Usage kMarkUsage{"mark", kMarkLines};

int RunMarks(std::span<const std::string> words, const MarkReader& read) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kMarksOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kMarksUsage);
    if (arguments->Operands().empty())
        return ComplainOfUsage("no folder or file given", kMarksUsage);
    std::vector<std::string> paths;
    const bool all = Gather(arguments->Operands(), paths);
    const std::vector<FileMark> files = read(paths);
    if (arguments->Has("--csv")) std::puts("file,mark,rating");
    for (const FileMark& file : files) arguments->Has("--csv") ? PrintCsv(file) : PrintRow(file);
    const int status = Complain(files);
    return all ? status : kExitFailedFile;
}

int RunMark(std::span<const std::string> words, const MarkSetter& set) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kMarkOptions, fault);
    const auto change = arguments ? ChangeOf(*arguments, fault) : std::nullopt;
    if (!change) return ComplainOfUsage(fault, kMarkUsage);
    if (arguments->Operands().empty()) return ComplainOfUsage("no file given", kMarkUsage);
    return Complain(set(arguments->Operands(), *change));
}

} // namespace tarn
