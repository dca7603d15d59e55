#include "console/decoders/Thumbnails.h"

#include "common/codepage.h"
#include "common/paths.h"
#include "console/ListedPictures.h"
#include "console/decoders/OpenHistory.h"
#include "history/Changes.h"
#include "navigation/HiddenFiles.h"
#include "notes/NoteNames.h"
#include "notes/NoteStore.h"
#include "notes/NoteText.h"
#include "platform/Files.h"
#include "thumbnails/ThumbFolder.h"
#include "thumbnails/ThumbRun.h"

namespace tarn {

namespace {

// Why a folder gave nothing to make thumbnails of.
std::string WhyNone(const Files& files, const std::string& folder) {
    SelectionState newUser;
    newUser.FileTypes = newUser.PictureTypes;
    const std::string hidden = HiddenText(
        CountHidden(newUser, files.FileNames(folder).value_or(std::vector<std::string>())));
    return "; no pictures are listed in the folder" + (hidden.empty() ? "" : ", " + hidden);
}

} // namespace

ThumbnailOutcome MakeThumbnails(const ThumbnailOrder& order) {
    OpenHistory open;
    const Files* files = open.files.get();
    const std::string pictures = files->Absolute(order.folder);
    const std::string folder = ThumbnailFolder(*files, pictures, order.subFolder, order.notes);
    if (folder.empty()) return {{}, kBadSubFolder};
    ThumbnailOutcome outcome;
    Changes changes(open.history, "Thumbnails in '" + folder + "'");
    auto names = ListedPictures(pictures);
    if (!names) return {{}, "is not a folder that can be read"};
    if (order.narrow) order.narrow(*names);
    if (!order.update) {
        const ClearFaults faults = ClearThumbnails(changes, folder);
        if (faults.count > 0) order.failed(folder, faults.Text());
        MakeThumbnailFolder(changes, pictures, order.subFolder);
    }
    NoteStore store(*files);
    if (!order.notes.empty()) store.index.SetFolder(order.notes);
    ThumbRequest request;
    request.pictures = pictures;
    request.subFolder = order.subFolder;
    request.width = order.width;
    request.notes = order.notes;
    request.noteOf = [&](const std::string& picture) {
        const auto bytes = store.Read(NotePath(order.notes, LastPart(picture)));
        return bytes ? FromCodePage(WithoutOldMarks(*bytes)) : std::string();
    };
    const bool none = PlanThumbnails(*names, {}, request, false, *files).empty();
    ThumbRun run(PlanThumbnails(*names, {}, request, order.update, *files), request, changes);
    while (!run.Done()) {
        const std::string picture = JoinPath(order.folder, run.Next().name);
        if (run.Step()) order.made(run.Progress());
        if (!run.Fault().empty()) order.failed(picture, run.Fault());
    }
    outcome.report = run.Report(false) + (none ? WhyNone(*files, pictures) : std::string());
    return outcome;
}

} // namespace tarn
