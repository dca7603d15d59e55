#include "console/decoders/Thumbnails.h"

#include "common/codepage.h"
#include "common/paths.h"
#include "common/patterns.h"
#include "notes/NoteNames.h"
#include "notes/NoteStore.h"
#include "notes/NoteText.h"
#include "platform/Files.h"
#include "thumbnails/ThumbFolder.h"
#include "thumbnails/ThumbRun.h"

#include <algorithm>

namespace tarn {

namespace {

// As a new user's picture list shows the folder.
std::optional<std::vector<std::string>>
ListedPictures(const Files& files, const std::string& folder, std::string* error) {
    auto names = files.FileNames(folder, error);
    if (!names) return names;
    const NamePatterns pictures(kPictureTypes);
    std::erase_if(*names, [&](const std::string& name) { return !pictures.Matches(name); });
    return InListOrder(std::move(*names));
}

} // namespace

ThumbnailOutcome MakeThumbnails(const ThumbnailOrder& order) {
    const std::unique_ptr<Files> files = MakeFiles();
    const std::string pictures = files->Absolute(order.folder);
    const std::string folder = ThumbnailFolder(pictures, order.subFolder);
    if (folder.empty()) return {{}, kBadSubFolder};
    ThumbnailOutcome outcome;
    const auto names = ListedPictures(*files, pictures, &outcome.fault);
    if (!names) return outcome;
    if (!order.update) {
        ClearThumbnails(*files, folder);
        MakeThumbnailFolder(*files, pictures, order.subFolder);
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
    ThumbRun run(PlanThumbnails(*names, {}, request, order.update, *files), request, *files);
    while (!run.Done()) {
        const std::string picture = JoinPath(order.folder, run.Next().name);
        if (run.Step())
            order.made(run.Progress());
        else
            order.failed(picture, run.Fault());
    }
    outcome.report = run.Report(false);
    return outcome;
}

} // namespace tarn
