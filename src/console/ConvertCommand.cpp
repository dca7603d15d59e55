#include "console/ConvertCommand.h"

#include "console/Arguments.h"

#include <charconv>
#include <climits>
#include <cstdio>
#include <filesystem>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--quality", true},
                                   {"--max-width", true},
                                   {"--max-height", true},
                                   {"--text", true},
                                   {"--to", true}};
constexpr char kFont[] = "Arial"; // what a new user's slides are written in
constexpr int kBestQuality = 100;

// The last one given counts.
std::string ValueOf(const Arguments& arguments, std::string_view option) {
    const auto values = arguments.Values(option);
    return values.empty() ? std::string() : values.back();
}

// A plain whole number of the range into `value`, which stays when the option was not given. False
// with the fault when it is none.
bool ReadNumber(const Arguments& arguments, std::string_view option, int least, int most,
                int& value, std::string& fault) {
    if (!arguments.Has(option)) return true;
    const std::string text = ValueOf(arguments, option);
    int number = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (code == std::errc() && end == text.data() + text.size() && number >= least &&
        number <= most) {
        value = number;
        return true;
    }
    fault = std::string(option) + " must be a whole number, " +
            (most == INT_MAX ? "at least " + std::to_string(least)
                             : std::to_string(least) + " to " + std::to_string(most));
    return false;
}

bool ReadOptions(const Arguments& arguments, ConvertOptions& options, std::string& fault) {
    if (arguments.Has("--max-width") && arguments.Has("--max-height")) {
        fault = "only one of --max-width and --max-height can be given";
        return false;
    }
    options.text = ValueOf(arguments, "--text");
    options.font = kFont;
    return ReadNumber(arguments, "--quality", 1, kBestQuality, options.quality, fault) &&
           ReadNumber(arguments, "--max-width", kLeastLimit, INT_MAX, options.maxWidth, fault) &&
           ReadNumber(arguments, "--max-height", kLeastLimit, INT_MAX, options.maxHeight, fault);
}

} // namespace

int RunConvert(std::span<const std::string> words, const PictureConverter& convert) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    ConvertOptions options;
    if (!arguments || !ReadOptions(*arguments, options, fault))
        return ComplainOfUsage(fault, kConvertUsage);
    if (arguments->Operands().empty()) return ComplainOfUsage("no file given", kConvertUsage);
    const std::string folder = ValueOf(*arguments, "--to");
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
