#include "sky/night/ReportReading.h"

#include "common/paths.h"
#include "common/worker.h"
#include "facts/PictureReading.h"
#include "imaging/JpegWriter.h"
#include "imaging/PictureLoader.h"
#include "imaging/PicturesAhead.h"
#include "imaging/fits/KeptCards.h"
#include "imaging/fits/ScreenStretch.h"
#include "platform/CanonicalPath.h"
#include "sky/judging/Judging.h"
#include "sky/measures/MeasureStore.h"
#include "sky/night/MeasuresFile.h"

#include <ctime>
#include <map>
#include <set>

namespace tarn {

namespace {

// The longitudes of a folder count one way.
void LookAtTheSky(const NightSources& sources, ReadNights& nights) {
    std::map<std::string, std::vector<std::size_t>> folders;
    for (std::size_t i = 0; i < nights.frames.size(); ++i)
        if (nights.frames[i].IsRead())
            folders[CanonicalPath(FolderOf(nights.frames[i].path))].push_back(i);
    for (const auto& [folder, indices] : folders) {
        std::vector<FrameWhere> wheres;
        for (const std::size_t index : indices) wheres.push_back(nights.frames[index].header.where);
        SkyOfFolder sky = SkyOver(wheres, sources.site);
        for (std::size_t i = 0; i < indices.size(); ++i)
            nights.frames[indices[i]].sky = std::move(sky.rows[i]);
        if (sky.hasUnsure) nights.longitudes.push_back(folder + ": " + SaidOfLongitudes(sky.sense));
    }
}

void Judge(std::vector<ReportFrame>& frames) {
    std::vector<std::size_t> indices;
    std::vector<FrameMeasures> measures;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (!frames[i].measures) continue;
        indices.push_back(i);
        measures.push_back(*frames[i].measures);
    }
    JudgedFrames judged = JudgeFrames(measures);
    for (std::size_t i = 0; i < indices.size(); ++i) {
        ReportFrame& frame = frames[indices[i]];
        frame.transparency = judged.transparency[i];
        frame.score = judged.scores[i];
        frame.look = std::move(judged.looks[i]);
    }
}

void TakeThumbnails(std::vector<ReportFrame>& frames, const std::vector<ReportNight>& nights) {
    constexpr int kSide = 480; // pixels
    constexpr int kQuality = 85;
    const AutomaticStretchOnly automatic;
    PicturesAhead ahead;
    PictureReading reading(ahead);
    for (const ReportNight& night : nights)
        for (const auto& index : {night.best, night.worst}) {
            if (!index || !frames[*index].thumbnail.empty()) continue;
            ReadPicture read = reading.Read(frames[*index].path, {kSide, kSide});
            if (read.standIn) continue;
            const QSize size = QSize(read.picture.Width(), read.picture.Height())
                                   .scaled(kSide, kSide, Qt::KeepAspectRatio)
                                   .expandedTo({1, 1});
            read.picture.Scale(size.width(), size.height());
            std::string untold; // its caption stands alone then
            frames[*index].thumbnail = EncodeJpeg(read.picture.FullPicture(), kQuality, &untold);
        }
}

} // namespace

ReadNights ReadFramesOfNights(const NightSources& sources, const ReadingProgress& progress) {
    ReadNights nights;
    MeasureStore store(MeasuresFile());
    std::set<std::string> known; // one file may be named in several ways
    for (const std::string& path : sources.paths) {
        if (!progress(nights.frames.size(), sources.paths.size())) {
            nights.cancelled = true;
            return nights;
        }
        if (!known.insert(CanonicalPath(path)).second) continue;
        if (IsSumOfFrames(path)) {
            nights.longitudes.push_back(LastPart(path) + " is a sum of frames, and not counted");
            continue;
        }
        ReportFrame frame;
        frame.path = path;
        std::string thrown;
        frame.header = Guarded(thrown, [&] { return ReadFrameHeader(path, sources.zoneMinutes); });
        if (!thrown.empty()) frame.header.fault = thrown;
        if (frame.IsRead()) frame.measures = store.Find(path, PictureLoader::LookAt(path));
        nights.frames.push_back(std::move(frame));
    }
    progress(sources.paths.size(), sources.paths.size());
    LookAtTheSky(sources, nights);
    Judge(nights.frames);
    return nights;
}

void Compose(ReportDocument& document, const ReportChoice& choice, double zoneHours,
             const std::string& foot) {
    document.rows = IntegrationOf(document.frames);
    document.nights = NightsOf(document.frames, zoneHours);
    if (choice.pictures) TakeThumbnails(document.frames, document.nights);
    document.report = ReportOf(document.frames, document.nights, document.rows, choice, foot);
    document.report.remarks.insert(document.report.remarks.end(), document.longitudes.begin(),
                                   document.longitudes.end());
}

double SystemZoneHours() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    return double(local.tm_gmtoff) / 3600;
}

} // namespace tarn
