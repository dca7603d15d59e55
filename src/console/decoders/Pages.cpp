#include "console/decoders/Pages.h"

#include "common/dates.h"
#include "common/paths.h"
#include "common/patterns.h"
#include "common/text.h"
#include "console/decoders/OpenHistory.h"
#include "console/decoders/Thumbnails.h"
#include "history/Changes.h"
#include "notes/NoteNames.h"
#include "notes/NoteStore.h"
#include "notes/NoteText.h"
#include "platform/Files.h"
#include "platform/ProgramFiles.h"
#include "platform/WholeFile.h"
#include "web/FileEntries.h"
#include "web/PageBuild.h"
#include "web/SavedValues.h"

#include <algorithm>

namespace tarn {

namespace {

std::string NowOf(const PageRequest& request) {
    return request.now.empty() ? NowText() : request.now;
}

// The first lines of a box are the title, the page and an empty line: the error is its last line.
std::string ErrorOf(const GalleryFault& fault) {
    return fault.title + ": " + fault.text.substr(fault.text.rfind('\n') + 1);
}

class Notes {
public:
    Notes(Files& files, const std::string& folder) : m_store(files), m_folder(folder) {
        if (!folder.empty()) m_store.index.SetFolder(folder);
    }
    std::string Bytes(const std::string& picture) const {
        if (m_folder.empty()) return {};
        return m_store.Read(NotePath(m_folder, LastPart(picture))).value_or(std::string());
    }

private:
    NoteStore m_store;
    std::string m_folder;
};

bool AddAll(const PageRequest& request, const HtmlSettings& settings, Files& files, PageBuild& page,
            PageResult& result) {
    DiskFacts disk;
    const Notes notes(files, request.notes);
    std::vector<std::string> names = request.names;
    if (request.reverse) std::reverse(names.begin(), names.end());
    for (const std::string& name : names) {
        if (IsLabelPicture(settings, name)) continue;
        const std::string path = JoinPath(request.folder, name);
        EntryFacts facts = EntryOf(disk, files, path, request.previewWidth, request.previewHeight);
        if (disk.Unread().contains(path))
            result.complaints.push_back(path + ": cannot be read");
        else if (facts.width == 0 && !IsTextEntry(facts.type))
            result.complaints.push_back(path + ": not a picture that can be read");
        facts.note = WithBoxLineEnds(WithoutOldMarks(notes.Bytes(path)));
        FindCompanions(files, settings, path, facts);
        if (!page.Add(files, settings, settings.HtmlExifInfo != 0, facts)) return false;
    }
    return true;
}

// What the form warns of.
void ComplainOfLinks(const GalleryPlan& plan, const Files& files, PageResult& result) {
    if (!files.IsSameFile(FolderOf(plan.indexPath), plan.pictureFolder))
        result.complaints.push_back(
            plan.indexPath + ": in another folder than the pictures, its links will not find them");
    for (const GalleryItem& item : plan.items)
        if (BreaksItsLink(item.picture))
            result.complaints.push_back(item.picture +
                                        ": browsers cannot open it, because of its name");
    if (LimitHidesPictures(plan.settings))
        result.complaints.push_back("html_thumb_cs_value: the limit '" +
                                    plan.settings.HtmlThumbCsValue + "' is no number above 0");
}

void MakeMissingThumbnails(const PageRequest& request, Files& files, PageResult& result) {
    ThumbnailOrder order;
    order.folder = request.folder;
    order.subFolder = request.subFolder;
    order.width = request.thumbnailSize;
    order.update = true;
    order.narrow = [&](std::vector<std::string>& names) { names = request.names; };
    order.made = [](const std::string&) {};
    order.failed = [&](const std::string& path, const std::string& fault) {
        result.complaints.push_back(path + ": " + fault);
    };
    files.MakeFolder(JoinPath(request.folder, request.subFolder), &result.error);
    result.error = MakeThumbnails(order).fault;
}

GalleryPlan PlanOf(const PageRequest& request, const Files& files) {
    const std::string thumbnails = JoinPath(request.folder, request.subFolder);
    GalleryPlan plan;
    plan.settings = request.gallery;
    plan.frames = request.frames;
    plan.indexPath = request.out;
    plan.pictureFolder = request.folder;
    plan.subFolder = request.subFolder;
    plan.thumbnailSize = request.thumbnailSize;
    plan.version = request.version;
    plan.now = NowOf(request);
    plan.script = ProgramFile(kZoomScript);
    plan.items = PairThumbnails(
        InListOrder(files.FileNames(thumbnails).value_or(std::vector<std::string>())),
        request.names, request.thumbnailSize);
    return plan;
}

void RunGallery(const PageRequest& request, GalleryPlan plan, Files& files, PageResult& result) {
    if (request.gallery.CheckOrder != 0) std::reverse(plan.items.begin(), plan.items.end());
    DiskFacts disk;
    const Notes notes(files, request.notes);
    GalleryRun run(files, std::move(plan),
                   SourcesOf(disk, [&](const std::string& path) { return notes.Bytes(path); }));
    while (run.Step()) {
    }
    for (const std::string& path : disk.Unread())
        result.complaints.push_back(path + ": cannot be read");
    if (run.Finish())
        result.count = run.Count();
    else
        result.error = ErrorOf(*run.Fault());
}

} // namespace

PageResult WritePage(const PageRequest& request) {
    OpenHistory open;
    Files* files = open.files.get();
    PageResult result;
    PageBuild page(request.version);
    Changes changes(open.history, "Page '" + LastPart(request.out) + "'");
    page.Choose(request.out, request.folder);
    HtmlSettings settings = request.page;
    if (request.append && settings.HtmlAppendOption != 0) {
        std::string error;
        const auto saved = ReadWhole(*files, request.out, kLargestPage, &error);
        if (saved) ReadSavedValues(*saved, settings);
        if (!saved) result.complaints.push_back(request.out + ": " + error);
    }
    for (const std::string& pair : request.set) {
        const std::size_t at = pair.find('=');
        SetSavedValue(settings, pair.substr(0, at), pair.substr(at + 1));
    }
    const bool begun =
        request.append ? page.Append(changes, NowOf(request))
                       : page.Begin(changes, settings, NowOf(request), ProgramFile(kZoomScript));
    if (!begun || !AddAll(request, settings, changes, page, result) || !page.Close(changes))
        result.error = ErrorOf(page.Fault());
    result.count = page.Count();
    return result;
}

PageResult WriteGallery(const PageRequest& request) {
    OpenHistory open;
    Files* files = open.files.get();
    PageResult result;
    if (request.thumbnails) MakeMissingThumbnails(request, *files, result);
    if (!result.error.empty()) return result;
    GalleryPlan plan = PlanOf(request, *files);
    const std::size_t missing = request.names.size() - plan.items.size();
    if (missing > 0)
        result.complaints.push_back(std::to_string(missing) +
                                    " pictures have no thumbnail; --thumbnails makes them");
    if (plan.items.empty()) {
        result.error = kNoThumbnails;
        return result;
    }
    ComplainOfLinks(plan, *files, result);
    Changes changes(open.history, "Gallery '" + LastPart(request.out) + "'");
    RunGallery(request, std::move(plan), changes, result);
    return result;
}

} // namespace tarn
