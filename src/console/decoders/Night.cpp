#include "console/decoders/Night.h"

#include "common/codepage.h"
#include "common/dates.h"
#include "common/paths.h"
#include "console/decoders/Marks.h"
#include "console/decoders/OpenHistory.h"
#include "history/Changes.h"
#include "notes/NoteNames.h"
#include "notes/NoteStore.h"
#include "notes/NoteText.h"
#include "sky/night/ReportReading.h"
#include "sky/paper/SaveReport.h"
#include "widgets/printing/PageSizes.h"

namespace tarn {

namespace {

void TakeMarks(std::vector<ReportFrame>& frames, NightResult& result) {
    std::vector<std::string> paths;
    for (const ReportFrame& frame : frames)
        if (frame.IsRead()) paths.push_back(frame.path);
    const std::vector<FileMark> marks = ReadMarks(paths);
    std::size_t next = 0;
    for (ReportFrame& frame : frames) {
        if (!frame.IsRead()) continue;
        const FileMark& found = marks[next++];
        frame.mark = found.mark;
        if (!found.error.empty()) result.complaints.push_back(found.path + ": " + found.error);
    }
}

void TakeNotes(const std::string& folder, Files& files, std::vector<ReportFrame>& frames) {
    if (folder.empty()) return;
    NoteStore store(files);
    store.index.SetFolder(folder);
    for (ReportFrame& frame : frames)
        if (const auto bytes = store.Read(NotePath(folder, LastPart(frame.path))))
            frame.note = FromCodePage(WithoutOldMarks(*bytes));
}

} // namespace

NightResult WriteNight(const NightRequest& request) {
    NightResult result;
    if (!IsKnownPaper(request.paper)) {
        result.badPaper = request.paper;
        return result;
    }
    OpenHistory open;
    ReadNights read = ReadFramesOfNights({request.paths, request.site, {}},
                                         [](std::size_t, std::size_t) { return true; });
    ReportDocument document;
    document.frames = std::move(read.frames);
    document.longitudes = read.longitudes;
    result.complaints = std::move(read.longitudes);
    TakeMarks(document.frames, result);
    document.rows = IntegrationOf(document.frames);
    result.rows = document.rows;
    if (request.html.empty() && request.pdf.empty()) return result;
    TakeNotes(request.notes, *open.files, document.frames);
    const std::string now = request.now.empty() ? NowText() : request.now;
    Compose(document, {}, SystemZoneHours(), "Tarn View " + request.version + ", " + now);
    const bool page = !request.html.empty();
    const std::string& out = page ? request.html : request.pdf;
    Changes changes(open.history, "Night report '" + LastPart(out) + "'");
    SaveReport(changes, document, page ? ReportKind::Page : ReportKind::Pdf, out, request.paper,
               &result.error);
    return result;
}

} // namespace tarn
