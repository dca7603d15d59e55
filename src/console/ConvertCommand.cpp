#include "console/ConvertCommand.h"

#include "console/Arguments.h"

#include <climits>
#include <cstdio>
#include <filesystem>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--quality", "N"},
                                   {.name = "--max-width", .value = "N", .excludesNext = true},
                                   {"--max-height", "N"},
                                   {"--text", "TEXT"},
                                   {"--to", "FOLDER"}};
constexpr UsageLine kLines[] = {{kOptions, "FILE..."}};
constexpr char kFont[] = "Arial"; // what a new user's slides are written in
constexpr int kBestQuality = 100;

bool ReadOptions(const Arguments& arguments, ConvertOptions& options, std::string& fault) {
    options.text = arguments.ValueOf("--text");
    options.font = kFont;
    return arguments.ReadNumber("--quality", 1, kBestQuality, options.quality, fault) &&
           arguments.ReadNumber("--max-width", kLeastLimit, INT_MAX, options.maxWidth, fault) &&
           arguments.ReadNumber("--max-height", kLeastLimit, INT_MAX, options.maxHeight, fault);
}

} // namespace

constinit const Usage kConvertUsage{"convert", kLines};

int RunConvert(std::span<const std::string> words, const PictureConverter& convert) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    ConvertOptions options;
    if (!arguments || !ReadOptions(*arguments, options, fault))
        return ComplainOfUsage(fault, kConvertUsage);
    if (arguments->Operands().empty()) return ComplainOfUsage("no file given", kConvertUsage);
    const std::string folder = arguments->ValueOf("--to");
    std::error_code code;
    if (arguments->Has("--to") && !std::filesystem::is_directory(folder, code)) {
        ComplainOfFile(folder, "is not a folder");
        return kExitFailedFile;
    }
    options.spared = arguments->Operands();
    int exitStatus = kExitSuccess;
    for (const std::string& path : arguments->Operands()) {
        const ConvertedFile converted = convert(path, folder, options);
        if (converted.error.empty()) {
            std::printf("%s -> %s\n", path.c_str(), converted.target.c_str());
            continue;
        }
        ComplainOfFile(path, converted.error);
        exitStatus = kExitFailedFile;
    }
    return exitStatus;
}

} // namespace tarn
