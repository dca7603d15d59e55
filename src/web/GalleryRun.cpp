#include "web/GalleryRun.h"

#include "common/paths.h"
#include "common/worker.h"
#include "platform/WholeFile.h"
#include "web/PageText.h"
#include "web/SavedValues.h"
#include "web/SystemError.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <map>
#include <set>

namespace tarn {

namespace {

constexpr int kStretch = 32; // pictures
constexpr std::chrono::milliseconds kPatience(50);

GalleryRunFacts RunFactsOf(const GalleryPlan& plan) {
    GalleryRunFacts run;
    run.frames = plan.frames;
    run.count = int(plan.items.size());
    run.thumbnailSize = plan.thumbnailSize;
    run.version = ToPageBytes(plan.version);
    run.subFolder = ToPageBytes(plan.subFolder);
    run.indexName = ToPageBytes(LastPart(plan.indexPath));
    run.now = ToPageBytes(plan.now);
    return run;
}

bool IsPicturePage(std::string_view name) {
    return name.starts_with("ImageT") && name.ends_with(".html");
}

// The picture's name behind "T<digits>_"; empty when the file is no thumbnail.
std::string_view PictureOf(std::string_view thumbnail) {
    const std::size_t end = thumbnail.find_first_not_of("0123456789", 1);
    if (!thumbnail.starts_with('T') || end == std::string_view::npos || end == 1 ||
        thumbnail[end] != '_')
        return {};
    return thumbnail.substr(end + 1);
}

int SizeOf(std::string_view thumbnail) {
    return std::atoi(std::string(thumbnail.substr(1)).c_str());
}

// Whether the run itself makes a file of this name, beside the chosen one.
bool IsTaken(const GalleryPlan& plan, const std::string& name) {
    const bool frame = plan.frames && (name == kFrameTopName || name == kFrameThumbsName);
    return frame || name == kStyleName || name == kZoomScript || IsPicturePage(name);
}

struct Unread {
    std::string picture;
    std::string why;
};

} // namespace

std::vector<GalleryItem> PairThumbnails(const std::vector<std::string>& thumbnails,
                                        const std::vector<std::string>& pictures, int size) {
    const std::set<std::string_view> known(pictures.begin(), pictures.end());
    std::vector<GalleryItem> items;
    std::map<std::string_view, std::size_t> at;
    for (const std::string& thumbnail : thumbnails) {
        const std::string_view picture = PictureOf(thumbnail);
        if (!known.contains(picture)) continue;
        const auto [found, isNew] = at.emplace(picture, items.size());
        if (isNew)
            items.push_back({std::string(picture), thumbnail});
        else if (SizeOf(thumbnail) == size)
            items[found->second].thumbnail = thumbnail;
    }
    return items;
}

GalleryRun::GalleryRun(Files& files, GalleryPlan plan, GallerySources sources)
    : m_files(files), m_plan(std::move(plan)), m_sources(std::move(sources)),
      m_settings(InPageBytes(m_plan.settings)), m_run(RunFactsOf(m_plan)),
      m_folder(FolderOf(m_plan.indexPath)), m_cells(m_settings, m_run) {
    const std::string index = LastPart(m_plan.indexPath);
    std::string error = std::strerror(EEXIST);
    if (!IsTaken(m_plan, index)) m_staged = m_files.Stage(m_folder, &error);
    if (!m_staged) {
        Fail(index, error);
        return;
    }
    if (!Stage(kStyleName, GalleryStyle(m_settings))) return;
    if (m_run.frames) {
        if (!Stage(index, GalleryIndexHead(m_settings, m_run)) ||
            !Stage(kFrameTopName, GalleryFrameTop(m_settings, m_run)))
            return;
        m_index = GalleryFrameThumbsHead(m_settings, m_run);
    } else {
        m_index = GalleryIndexHead(m_settings, m_run);
    }
}

bool GalleryRun::Fail(const std::string& name, const std::string& error) {
    const std::string path = JoinPath(m_folder, name);
    if (name == kZoomScript)
        m_fault = {"Copy javascript file error",
                   ErrorBoxText("Error creating javascript file", path, error)};
    else if (IsPicturePage(name) && name != LastPart(m_plan.indexPath))
        m_fault = {"Write html image file error",
                   ErrorBoxText("Error writting to html image file", path, error)};
    else
        m_fault = {"Write html thumbnail file error",
                   ErrorBoxText("Error writting to html thumbnail file", path, error)};
    m_staged.reset();
    m_ends = true;
    if (m_coming.valid()) m_coming.wait(); // whoever asks the sources next is alone with them
    return false;
}

bool GalleryRun::Stage(const std::string& name, std::string_view bytes) {
    std::string error;
    if (!m_staged->Write(name, bytes, &error)) return Fail(name, error);
    m_names.push_back(name);
    return true;
}

bool GalleryRun::StageScript() {
    if (m_scriptStaged) return true;
    std::string error;
    const auto bytes = ReadWhole(m_files, m_plan.script, kLargestScript, &error);
    if (!bytes) return Fail(kZoomScript, error);
    m_scriptStaged = Stage(kZoomScript, *bytes);
    return m_scriptStaged;
}

GalleryPicture GalleryRun::FactsOf(const GalleryItem& item) const {
    const std::string path = JoinPath(m_plan.pictureFolder, item.picture);
    GalleryPicture picture;
    picture.name = ToPageBytes(item.picture);
    picture.thumbnail = ToPageBytes(item.thumbnail);
    if (MakesPages()) std::tie(picture.width, picture.height) = m_sources.uprightSize(path);
    picture.fileBytes = m_sources.fileBytes(path);
    if (MakesPages() && m_settings.HtmlThumbData != 0)
        for (const std::string& row : m_sources.panelRows(path))
            picture.panel.push_back(ToPageBytes(row));
    return picture;
}

std::vector<GalleryPicture> GalleryRun::ReadFrom(int first) const {
    std::vector<GalleryPicture> read;
    for (int i = first; i < std::min(first + kStretch, m_run.count) && !m_ends; ++i) try {
            read.push_back(FactsOf(m_plan.items[std::size_t(i)]));
        } catch (...) {
            throw Unread{m_plan.items[std::size_t(i)].picture, ThrownText()};
        }
    return read;
}

// Pages of one stretch of pictures are written while the next is read. False while it is.
bool GalleryRun::TakeStretch() {
    const auto coming = [this](int first) {
        return std::async([this, first] { return ReadFrom(first); });
    };
    if (!m_coming.valid()) m_coming = coming(m_done);
    if (m_coming.wait_for(kPatience) == std::future_status::timeout) return false;
    try {
        m_read = m_coming.get();
    } catch (const Unread& fault) {
        return Fail(LastPart(m_plan.indexPath), "'" + fault.picture + "' - " + fault.why);
    }
    if (m_done + kStretch < m_run.count) m_coming = coming(m_done + kStretch);
    return true;
}

bool GalleryRun::Step() {
    if (m_fault || m_done == m_run.count) return false;
    const int place = m_done % kStretch;
    if (place == 0 && !TakeStretch()) return true;
    GalleryPicture& picture = m_read[std::size_t(place)];
    const GalleryItem& item = m_plan.items[std::size_t(m_done)];
    picture.note =
        m_sources.noteBytes(JoinPath(m_plan.pictureFolder, item.picture)).substr(0, kNoteBytes);
    ++m_done;
    m_index += m_cells.Next(picture);
    if (!MakesPages()) return true;
    if (m_settings.ThumbNoLinkPic != 0 && !StageScript()) return false;
    return Stage(PicturePageName(m_done), GalleryPicturePage(m_settings, m_run, picture, m_done));
}

std::vector<std::string> GalleryRun::OldPages() const {
    std::vector<std::string> old;
    for (std::string& name : m_files.FileNames(m_folder).value_or(std::vector<std::string>())) {
        const bool frame = name == kFrameTopName || name == kFrameThumbsName;
        if (IsPicturePage(name) || name.ends_with(".js") || (frame && !m_run.frames))
            old.push_back(std::move(name));
    }
    return old;
}

// Whether a page that stays in the folder needs the script that the run takes away with the old.
bool GalleryRun::CallsScript(const std::vector<std::string>& going) const {
    if (std::find(going.begin(), going.end(), kZoomScript) == going.end()) return false;
    const auto has = [](const std::vector<std::string>& names, const std::string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    for (const std::string& name :
         m_files.FileNames(m_folder).value_or(std::vector<std::string>())) {
        if (!IsPageName(name) || has(going, name) || has(m_names, name)) continue;
        const auto bytes = m_files.Read(JoinPath(m_folder, name), kLargestPage);
        if (bytes && bytes->find(kZoomScript) != std::string::npos) return true;
    }
    return false;
}

// What cannot be thrown away stays; what has the name of a new page is written over.
GalleryRun::Thrown GalleryRun::TakeOldAway() {
    std::vector<std::string> paths;
    for (const std::string& name : OldPages()) paths.push_back(JoinPath(m_folder, name));
    const std::vector<std::string> where = m_files.TrashAll(paths);
    Thrown thrown;
    for (std::size_t i = 0; i < paths.size(); ++i)
        if (!where[i].empty()) thrown.emplace_back(where[i], paths[i]);
    return thrown;
}

bool GalleryRun::StagePages() {
    m_index += GalleryIndexFoot(m_settings, m_run);
    return Stage(m_run.frames ? kFrameThumbsName : LastPart(m_plan.indexPath), m_index) &&
           (!CallsScript(OldPages()) || StageScript());
}

bool GalleryRun::Finish() {
    if (m_fault || !StagePages()) return false;
    const Thrown thrown = TakeOldAway();
    std::string error;
    std::string failed;
    const bool placed = m_staged->Place(&error, &failed);
    if (!placed) {
        for (const auto& [where, path] : thrown) {
            std::string stays;
            m_files.Restore(where, path, &stays);
        }
        Fail(failed, error);
    }
    m_staged.reset();
    return placed;
}

} // namespace tarn
