// The console companion: one subcommand a run, plain text out, no window.
#include "common/version.h"
#include "console/AlignCommand.h"
#include "console/ConvertCommand.h"
#include "console/DatesCommand.h"
#include "console/Decoders.h"
#include "console/FramesCommand.h"
#include "console/HistoryCommands.h"
#include "console/InfoCommand.h"
#include "console/MarkCommands.h"
#include "console/MoversCommand.h"
#include "console/NightCommand.h"
#include "console/PageCommands.h"
#include "console/SheetCommand.h"
#include "console/SkyCommand.h"
#include "console/StackCommand.h"
#include "console/StarsCommand.h"
#include "console/ThumbnailsCommand.h"
#include "decoder/DecoderPool.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <vector>

namespace {

using Words = std::span<const std::string>;

const std::vector<tarn::Subcommand>& Subcommands() {
    using namespace tarn;
    static const std::vector<Subcommand> kSubcommands = {
        {kInfoUsage, [](Words words) { return RunInfo(words, LookAtPicture); }},
        {kConvertUsage, [](Words words) { return RunConvert(words, ConvertToJpeg); }},
        {kPageUsage, [](Words words) { return RunPage(words, kProgramVersion, MakePage); }},
        {kGalleryUsage,
         [](Words words) { return RunGallery(words, kProgramVersion, MakeGallery); }},
        {kSheetUsage, [](Words words) { return RunSheet(words, PrintSheet); }},
        {kThumbnailsUsage, [](Words words) { return RunThumbnails(words, ThumbnailsOfFolder); }},
        {kDatesUsage, [](Words words) { return RunDates(words, SetDates); }},
        {kMarksUsage, [](Words words) { return RunMarks(words, MarksOf); }},
        {kMarkUsage, [](Words words) { return RunMark(words, SetMarksOf); }},
        {kStarsUsage,
         [](Words words) {
             return RunStars(words, {MeasureStars, ListStars});
         }},
        {kAlignUsage, [](Words words) { return RunAlign(words, MeasureStars); }},
        {kSkyUsage, RunSky},
        {kNightUsage, [](Words words) { return RunNight(words, kProgramVersion, ReportNights); }},
        {kMoversUsage,
         [](Words words) {
             return RunMovers(words, {MeasureStars, MarksOf, MoversOfFrames});
         }},
        {kStackUsage,
         [](Words words) {
             return RunStack(words, {MeasureStars, MarksOf, SumOfFrames});
         }},
        {kFramesUsage, [](Words words) { return RunFrames(words, RateFrames, TakeFramesOut); }},
        {kHistoryUsage, [](Words words) { return RunHistory(words, PastCommands); }},
        {kUndoUsage, [](Words words) { return RunUndo(words, UndoCommand); }},
        {kRedoUsage, [](Words words) { return RunRedo(words, RedoCommand); }}};
    return kSubcommands;
}

std::string UsageOfAll() {
    std::string text = "usage: tarn --help | --version\n";
    for (const tarn::Subcommand& known : Subcommands())
        text += "       " + tarn::TextOf(known.usage) + "\n";
    return text;
}

int Run(const std::vector<std::string>& words) {
    if (words.empty()) {
        std::fputs(UsageOfAll().c_str(), stderr);
        return tarn::kExitBadUsage;
    }
    if (words[0] == "--help") {
        std::fputs(UsageOfAll().c_str(), stdout);
        return tarn::kExitSuccess;
    }
    if (words[0] == "--version") {
        std::puts("tarn " TARN_VERSION);
        return tarn::kExitSuccess;
    }
    const auto& all = Subcommands();
    const auto chosen = std::find_if(all.begin(), all.end(), [&](const tarn::Subcommand& known) {
        return known.usage.name == words[0];
    });
    if (chosen == all.end()) {
        std::fputs(("tarn: unknown command " + words[0] + "\n" + UsageOfAll()).c_str(), stderr);
        return tarn::kExitBadUsage;
    }
    const auto options = std::span(words).subspan(1);
    const auto firstOperand = std::find_if(
        options.begin(), options.end(), [](const auto& word) { return word.substr(0, 2) != "--"; });
    if (std::find(options.begin(), firstOperand, "--help") != firstOperand) {
        std::fputs(("usage: " + tarn::TextOf(chosen->usage) + "\n").c_str(), stdout);
        return tarn::kExitSuccess;
    }
    return chosen->run(options);
}

} // namespace

int main(int argc, char** argv) {
    try {
        tarn::UseDecoders();
        const int status = Run({argv + 1, argv + std::max(argc, 1)});
        // Output that did not reach its file is a failure, too.
        return std::fflush(stdout) == 0 && !std::ferror(stdout)
                   ? status
                   : std::max(status, tarn::kExitFailedFile);
    } catch (const std::exception& fault) {
        std::fputs("tarn: ", stderr);
        std::fputs(fault.what(), stderr);
        std::fputs("\n", stderr);
        return tarn::kExitFailedFile;
    } catch (...) {
        std::fputs("tarn: an unknown fault\n", stderr);
        return tarn::kExitFailedFile;
    }
}
