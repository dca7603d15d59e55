#include "console/ThumbnailsCommand.h"

#include "console/Arguments.h"
#include "console/MarkFilter.h"

#include <cstdio>
#include <filesystem>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--size", "N"},    {"--subfolder", "NAME"},
                                   {"--notes", "DIR"}, {"--update"},
                                   kKeptOption,        kStarsOption};
constexpr UsageLine kLines[] = {{kOptions, "FOLDER"}};
constexpr int kLeastSize = 16;
constexpr int kMostSize = 9999;

bool IsFolder(const std::string& path) {
    std::error_code code;
    if (std::filesystem::is_directory(path, code)) return true;
    ComplainOfFile(path, "is not a folder");
    return false;
}

} // namespace

constinit const Usage kThumbnailsUsage{"thumbnails", kLines};

int RunThumbnails(std::span<const std::string> words, const ThumbnailMaker& make) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    ThumbnailOrder order;
    MarkFilter filter;
    if (!arguments || !arguments->ReadNumber("--size", kLeastSize, kMostSize, order.width, fault) ||
        !TakeFilter(*arguments, filter, fault))
        return ComplainOfUsage(fault, kThumbnailsUsage);
    if (arguments->Operands().size() != 1)
        return ComplainOfUsage("one folder is needed", kThumbnailsUsage);
    order.folder = arguments->Operands().front();
    if (arguments->Has("--subfolder")) order.subFolder = arguments->ValueOf("--subfolder");
    order.notes = arguments->ValueOf("--notes");
    order.update = arguments->Has("--update");
    if (!IsFolder(order.folder) || (arguments->Has("--notes") && !IsFolder(order.notes)))
        return kExitFailedFile;
    if (filter.IsOn())
        order.narrow = [filter, folder = order.folder](std::vector<std::string>& names) {
            Narrow(filter, folder, names);
        };
    int exitStatus = kExitSuccess;
    order.made = [](const std::string& text) { std::printf("%s\n", text.c_str()); };
    order.failed = [&exitStatus](const std::string& path, const std::string& why) {
        ComplainOfFile(path, why);
        exitStatus = kExitFailedFile;
    };
    const ThumbnailOutcome outcome = make(order);
    if (!outcome.fault.empty()) {
        ComplainOfFile(order.folder, outcome.fault);
        return kExitFailedFile;
    }
    std::printf("%s\n", outcome.report.c_str());
    return exitStatus;
}

} // namespace tarn
