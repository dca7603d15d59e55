#include "console/Decoders.h"

#include "console/DecodersModule.h"
#include "platform/Modules.h"

namespace tarn {

namespace {

constexpr char kNotInstalled[] = "the decoders are not installed";

template <typename Result> Result NotInstalled(std::string Result::*fault) {
    Result result;
    result.*fault = kNotInstalled;
    return result;
}

} // namespace

PictureLook LookAtPicture(const std::string& path) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->look(path) : PictureLook();
}

ConvertedFile ConvertToJpeg(const std::string& path, const std::string& folder,
                            const ConvertOptions& options) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->convert(path, folder, options)
                    : NotInstalled(&ConvertedFile::error);
}

PageResult MakePage(const PageRequest& request) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->page(request) : NotInstalled(&PageResult::error);
}

PageResult MakeGallery(const PageRequest& request) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->gallery(request) : NotInstalled(&PageResult::error);
}

SheetResult PrintSheet(const SheetRequest& request) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->sheet(request) : NotInstalled(&SheetResult::error);
}

namespace {

std::vector<FileMark> NoMarks(const std::vector<std::string>& paths) {
    std::vector<FileMark> files;
    for (const std::string& path : paths)
        files.push_back({path, {}, NotInstalled(&FileMark::error).error});
    return files;
}

} // namespace

std::vector<FileMark> MarksOf(const std::vector<std::string>& paths) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->marks(paths) : NoMarks(paths);
}

std::vector<FileMark> SetMarksOf(const std::vector<std::string>& paths, const MarkChange& change) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->setMarks(paths, change) : NoMarks(paths);
}

ThumbnailOutcome ThumbnailsOfFolder(const ThumbnailOrder& order) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->thumbnails(order) : NotInstalled(&ThumbnailOutcome::fault);
}

std::vector<FrameMeasures> MeasureStars(const std::vector<std::string>& paths) {
    if (const auto* decoders = FromModule<DecodersModule>()) return decoders->stars(paths);
    return std::vector<FrameMeasures>(paths.size(), NotInstalled(&FrameMeasures::fault));
}

StackResult SumOfFrames(const SumOrder& order) {
    if (const auto* decoders = FromModule<DecodersModule>()) return decoders->sum(order);
    StackResult result = NotInstalled(&StackResult::fault);
    result.frames.resize(order.paths.size());
    return result;
}

MoversResult MoversOfFrames(const MoversQuest& quest) {
    if (const auto* decoders = FromModule<DecodersModule>()) return decoders->movers(quest);
    MoversResult result = NotInstalled(&MoversResult::fault);
    result.faults.resize(quest.paths.size());
    return result;
}

RatedClip RateFrames(const std::string& path) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->rateClip(path) : NotInstalled(&RatedClip::fault);
}

std::vector<TakenFrame> TakeFramesOut(const TakeOrder& order) {
    if (const auto* decoders = FromModule<DecodersModule>()) return decoders->takeFrames(order);
    return std::vector<TakenFrame>(order.frames.size(), {order.clip, kNotInstalled});
}

std::vector<PastCommand> PastCommands(std::int64_t most) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->past(most) : std::vector<PastCommand>();
}

TurnedCommand UndoCommand(std::optional<std::int64_t> id) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->undo(id) : NotInstalled(&TurnedCommand::text);
}

TurnedCommand RedoCommand(std::optional<std::int64_t> id) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->redo(id) : NotInstalled(&TurnedCommand::text);
}

NightResult ReportNights(const NightRequest& request) {
    const auto* decoders = FromModule<DecodersModule>();
    return decoders ? decoders->night(request) : NotInstalled(&NightResult::error);
}

std::vector<SetDate> SetDates(const std::vector<SetDate>& wanted) {
    if (const auto* decoders = FromModule<DecodersModule>()) return decoders->dates(wanted);
    std::vector<SetDate> all = wanted;
    for (SetDate& each : all) each.error = kNotInstalled;
    return all;
}

std::vector<MeasuredStar> ListStars(const std::string& path, std::string& fault) {
    if (const auto* decoders = FromModule<DecodersModule>()) return decoders->sources(path, fault);
    fault = kNotInstalled;
    return {};
}

} // namespace tarn
