#include "console/FramesCommand.h"

#include "common/numbers.h"
#include "console/Arguments.h"
#include "console/TableRow.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <optional>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--csv"}, {"--best", "N|N%"}, {"--to", "FOLDER"}, {"--align"}};
constexpr UsageLine kLines[] = {{kOptions, "CLIP"}};

constexpr int kDecimals = 2; // of pixels

// How many are wanted of so many; none where it is no such number.
std::optional<std::size_t> CountOf(std::string text, std::size_t all) {
    const bool isShare = !text.empty() && text.back() == '%';
    if (isShare) text.pop_back();
    const auto number = ParseNumber(text);
    if (!number || !(*number > 0) || (isShare ? *number > 100 : *number != std::floor(*number)))
        return {};
    if (isShare) return std::size_t(std::ceil(*number / 100 * double(all)));
    return std::size_t(std::min(*number, 1e9));
}

int PrintRows(bool csv, const RatedClip& clip) {
    PrintColumnNames(csv, {"frame", "utc", "sharpness", "x", "y", "size", "cut", "error"});
    int status = clip.fault.empty() ? kExitSuccess : kExitFailedFile;
    for (std::size_t i = 0; i < clip.frames.size(); ++i) {
        const RatedFrame& frame = clip.frames[i];
        TableRow(csv)
            .Add(std::to_string(i))
            .Add(i < clip.utc.size() ? clip.utc[i] : std::string())
            .AddValue(frame.sharpness)
            .Add(frame.x, kDecimals)
            .Add(frame.y, kDecimals)
            .Add(frame.size, kDecimals)
            .Add(!frame.fault.empty() ? ""
                 : frame.cut          ? "1"
                                      : "0")
            .Add(frame.fault)
            .Print();
        if (!frame.fault.empty()) status = kExitFailedFile;
    }
    if (!clip.fault.empty()) // of the clip, or of what is not there
        TableRow(csv)
            .Add("")
            .Add("")
            .Add("")
            .Add("")
            .Add("")
            .Add("")
            .Add("")
            .Add(clip.fault)
            .Print();
    return status;
}

int TakeBest(const std::string& path, const RatedClip& clip, std::size_t count,
             const Arguments& arguments, const FrameTaker& take) {
    const std::vector<std::size_t> best = BestFrames(clip.frames, count);
    int status = clip.fault.empty() ? kExitSuccess : kExitFailedFile;
    if (best.size() < count) {
        ComplainOfFile(path, "only " + std::to_string(best.size()) + " of " +
                                 std::to_string(clip.frames.size()) + " frames can be trusted");
        status = kExitFailedFile;
    }
    if (best.empty()) return status;
    TakeOrder order;
    order.clip = path;
    order.folder = arguments.ValueOf("--to");
    order.frames = best;
    order.rated = &clip;
    order.align = arguments.Has("--align");
    const std::vector<TakenFrame> taken = take(order);
    for (std::size_t i = 0; i < taken.size(); ++i) {
        if (taken[i].error.empty()) {
            std::printf("frame %zu -> %s\n", best[i], taken[i].path.c_str());
            continue;
        }
        ComplainOfFile(taken[i].path, taken[i].error);
        status = kExitFailedFile;
    }
    return status;
}

std::string FaultOf(const Arguments& arguments) {
    if (arguments.Operands().size() != 1)
        return arguments.Operands().empty() ? "no clip given" : "more than one clip given";
    if (arguments.Has("--best") != arguments.Has("--to")) return "--best and --to go together";
    if (arguments.Has("--align") && !arguments.Has("--best")) return "--align goes with --best";
    if (arguments.Has("--csv") && arguments.Has("--best")) return "--csv is for the list";
    if (arguments.Has("--best") && !CountOf(arguments.ValueOf("--best"), 1))
        return "--best takes a whole number, or a share with %";
    return {};
}

} // namespace

constinit const Usage kFramesUsage{"frames", kLines};

int RunFrames(std::span<const std::string> words, const ClipRater& rate, const FrameTaker& take) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    if (arguments) fault = FaultOf(*arguments);
    if (!fault.empty() || !arguments) return ComplainOfUsage(fault, kFramesUsage);
    const std::string& path = arguments->Operands().front();
    const std::string folder = arguments->ValueOf("--to");
    std::error_code code;
    if (arguments->Has("--to") && !std::filesystem::is_directory(folder, code)) {
        ComplainOfFile(folder, "is not a folder");
        return kExitFailedFile;
    }
    RatedClip clip = rate(path);
    if (clip.frames.empty() && clip.fault.empty()) clip.fault = "The clip has no frames";
    if (!arguments->Has("--best")) return PrintRows(arguments->Has("--csv"), clip);
    if (!clip.fault.empty()) ComplainOfFile(path, clip.fault);
    if (clip.frames.empty()) return kExitFailedFile;
    const std::size_t count = *CountOf(arguments->ValueOf("--best"), clip.frames.size());
    return TakeBest(path, clip, count, *arguments, take);
}

} // namespace tarn
