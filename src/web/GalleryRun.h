// Makes a gallery, a picture a step: written beside the folder's files and put into place at the
// end, so that a cancelled or failed run leaves the old gallery as it was.
#pragma once

#include "platform/Files.h"
#include "web/Gallery.h"

#include <atomic>
#include <functional>
#include <future>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarn {

// One cell. Names are UTF-8 and have no folder.
struct GalleryItem {
    std::string picture;
    std::string thumbnail;
};

struct GalleryPlan {
    GallerySettings settings; // texts are UTF-8, as everywhere here
    bool frames = false;
    std::string indexPath; // the chosen file; the other pages stand beside it
    std::string pictureFolder;
    std::string subFolder; // of the thumbnails
    int thumbnailSize = 0;
    std::string version;
    std::string now;
    std::vector<GalleryItem> items; // in the order of the run
    std::string script;             // path of the program's wheelzoom.js, read where it is needed
};

// Where the facts of a picture come from; each is asked once a picture, by its path. All but the
// note are asked ahead, on a thread of the run's own.
struct GallerySources {
    std::function<std::pair<int, int>(const std::string&)> uprightSize; // 0 x 0: not readable
    std::function<long long(const std::string&)> fileBytes;
    std::function<std::string(const std::string&)> noteBytes; // empty: no note
    std::function<std::vector<std::string>(const std::string&)> panelRows;
};

// What ended a run.
struct GalleryFault {
    std::string title; // of the box
    std::string text;
};

// Each thumbnail with the picture whose name it carries behind "T<digits>_", in the order of the
// thumbnails. Of several thumbnails of one picture that of `size` counts, else the first.
std::vector<GalleryItem> PairThumbnails(const std::vector<std::string>& thumbnails,
                                        const std::vector<std::string>& pictures, int size);

// Said of a plan without items.
inline constexpr char kNoThumbnails[] = "there is no picture with a thumbnail";

class GalleryRun {
public:
    // A chosen file with the name of one of the run's own pages is a fault.
    GalleryRun(Files& files, GalleryPlan plan, GallerySources sources);
    GalleryRun(const GalleryRun&) = delete;
    GalleryRun& operator=(const GalleryRun&) = delete;
    ~GalleryRun() { m_ends = true; }

    // The next picture, or a short wait where it is still being read. False when all are done, and
    // after a fault.
    bool Step();

    // Puts the gallery into place and takes the pages of the old one away, to the wastebasket.
    // False after a fault, with nothing changed.
    bool Finish();

    const std::optional<GalleryFault>& Fault() const { return m_fault; }
    int Done() const { return m_done; }
    int Count() const { return m_run.count; }

private:
    using Thrown = std::vector<std::pair<std::string, std::string>>; // where it is, where it was

    bool Stage(const std::string& name, std::string_view bytes);
    bool StageScript();
    bool StagePages();
    bool Fail(const std::string& name, const std::string& error);
    bool MakesPages() const { return m_settings.NoLinkCheck == 0; }
    GalleryPicture FactsOf(const GalleryItem& item) const;
    std::vector<GalleryPicture> ReadFrom(int first) const;
    bool TakeStretch();
    std::vector<std::string> OldPages() const;
    bool CallsScript(const std::vector<std::string>& going) const;
    Thrown TakeOldAway();

    Files& m_files;
    GalleryPlan m_plan;
    GallerySources m_sources;
    GallerySettings m_settings; // as page bytes
    GalleryRunFacts m_run;
    std::string m_folder;
    GalleryCells m_cells;
    std::string m_index; // the page of the cells, as far as it is made
    std::unique_ptr<StagedFiles> m_staged;
    std::vector<std::string> m_names; // staged
    int m_done = 0;
    bool m_scriptStaged = false;
    std::optional<GalleryFault> m_fault;
    std::vector<GalleryPicture> m_read;                // those of the present stretch
    std::atomic<bool> m_ends = false;                  // nothing more is to be read
    std::future<std::vector<GalleryPicture>> m_coming; // last: it reads of the others
};

} // namespace tarn
