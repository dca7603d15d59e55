// The module that the console companion loads when it needs to look into pictures.
#include "console/DecodersModule.h"
#include "common/worker.h"
#include "console/decoders/ClipFiles.h"
#include "console/decoders/Conversion.h"
#include "console/decoders/Marks.h"
#include "console/decoders/Moving.h"
#include "console/decoders/Night.h"
#include "console/decoders/Pages.h"
#include "console/decoders/Past.h"
#include "console/decoders/Sheets.h"
#include "console/decoders/Stars.h"
#include "console/decoders/Sums.h"
#include "console/decoders/Thumbnails.h"
#include "decoder/DecoderPool.h"
#include "imaging/PictureLoader.h"
#include "imaging/fits/FitsLines.h"
#include "sky/clips/ClipRating.h"
#include "sky/planes/MeasurePicture.h"

#include <QGuiApplication>

namespace tarn {

namespace {

int argc = 1;
char name[] = "tarn";
char* argv[] = {name, nullptr};

// What every command here begins with. Tells the toolkit where its plug-ins are looked for, and
// with text where its fonts are. Lives to the end of the process: what the toolkit takes down on
// the way out may not outlive it.
void NeedApplication(bool withFonts) {
    if (QCoreApplication::instance()) return;
    UseDecoders();
    if (!withFonts) {
        new QCoreApplication(argc, argv);
        return;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    new QGuiApplication(argc, argv);
}

template <typename Result, typename Work> Result Kept(const Work& work) {
    std::string thrown;
    Result result = Guarded(thrown, work);
    if (!thrown.empty()) result.error = thrown;
    return result;
}

PictureLook Look(const std::string& path) {
    NeedApplication(false);
    PictureLook look;
    const PictureHeader header = PictureLoader::ReadHeader(path, look.fault);
    if (!header.size.isEmpty()) {
        look.width = header.size.width();
        look.height = header.size.height();
    }
    if (!header.fits) return look;
    std::string untold; // without its words the file is as one without any
    SkyFacts sky = Guarded(untold, [&] { return SkyFactsOf(path); });
    look.cameraDate = std::move(sky.cameraDate);
    look.lines = std::move(sky.lines);
    return look;
}

ConvertedFile Convert(const std::string& path, const std::string& folder,
                      const ConvertOptions& options) {
    NeedApplication(!options.text.empty());
    return Kept<ConvertedFile>([&] { return WriteConverted(path, folder, options); });
}

PageResult Page(const PageRequest& request) {
    NeedApplication(false);
    return Kept<PageResult>([&] { return WritePage(request); });
}

PageResult Gallery(const PageRequest& request) {
    NeedApplication(false);
    return Kept<PageResult>([&] { return WriteGallery(request); });
}

SheetResult Sheet(const SheetRequest& request) {
    NeedApplication(true);
    return Kept<SheetResult>([&] { return WriteSheet(request); });
}

ThumbnailOutcome Thumbnails(const ThumbnailOrder& order) {
    NeedApplication(false);
    return MakeThumbnails(order);
}

std::vector<FrameMeasures> Stars(const std::vector<std::string>& paths) {
    NeedApplication(false);
    return MeasureFiles(paths);
}

std::vector<MeasuredStar> Sources(const std::string& path, std::string& fault) {
    NeedApplication(false);
    return ListSourcesOf(path, fault);
}

StackResult Sum(const SumOrder& order) {
    NeedApplication(false);
    std::string thrown;
    StackResult result = Guarded(thrown, [&] { return MakeSum(order); });
    if (!thrown.empty()) result.fault = thrown;
    result.frames.resize(order.paths.size());
    return result;
}

MoversResult Movers(const MoversQuest& quest) {
    NeedApplication(false);
    std::string thrown;
    MoversResult result = Guarded(thrown, [&] { return FindInFiles(quest); });
    if (!thrown.empty()) result.fault = thrown;
    result.faults.resize(quest.paths.size());
    return result;
}

std::vector<PastCommand> Past(std::int64_t most) {
    NeedApplication(false);
    return ReadPast(most);
}

TurnedCommand Undo(std::optional<std::int64_t> id) {
    NeedApplication(false);
    return UndoPast(id);
}

TurnedCommand Redo(std::optional<std::int64_t> id) {
    NeedApplication(false);
    return RedoPast(id);
}

NightResult Night(const NightRequest& request) {
    NeedApplication(!request.pdf.empty());
    return Kept<NightResult>([&] { return WriteNight(request); });
}

RatedClip ClipOf(const std::string& path) {
    NeedApplication(false);
    std::string thrown;
    RatedClip clip = Guarded(thrown, [&] { return RateClip(path); });
    if (!thrown.empty()) clip.fault = thrown;
    return clip;
}

std::vector<TakenFrame> FramesOut(const TakeOrder& order) {
    NeedApplication(false);
    return TakeBestOut(order);
}

std::vector<SetDate> Dates(const std::vector<SetDate>& wanted) {
    NeedApplication(false);
    return SetFileDates(wanted);
}

} // namespace

extern "C" const DecodersModule TarnModule{
    Look, Convert, Page, Gallery, Sheet, Thumbnails, ReadMarks, WriteMarks, Stars, Sources,
    Sum,  Movers,  Past, Undo,    Redo,  Night,      ClipOf,    FramesOut,  Dates};

} // namespace tarn
