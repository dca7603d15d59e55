#include "thumbnails/GridPictures.h"

#include "clips/ClipFrame.h"
#include "common/stop_flag.h"
#include "imaging/fits/ScreenStretch.h"
#include "sky/clips/SharpestFrame.h"
#include "thumbnails/ScalePicture.h"

#include <algorithm>
#include <optional>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr int kLowest = 19;
constexpr std::size_t kMostKept = 500; // sharpest frames

std::optional<std::int64_t> ModifiedTime(const std::string& path) {
    struct stat facts {};
    if (path.empty() || ::stat(path.c_str(), &facts) != 0) return {};
    return facts.st_mtim.tv_sec;
}

// Never larger than the picture.
QImage Fitted(const std::string& path, int side) {
    return ScalePicture(
               path,
               [side](QSize picture) {
                   const QSize box(side, side);
                   return picture.width() <= side && picture.height() <= side
                              ? picture
                              : picture.scaled(box, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
               })
        .pixels;
}

} // namespace

QImage GridPicture(const GridWish& wish, const SharedCache& cache) {
    const auto modified = ModifiedTime(wish.picture);
    if (!modified) return {};
    const auto made = ModifiedTime(wish.thumbnail);
    if (made && *made >= *modified) {
        QImage thumbnail = Fitted(wish.thumbnail, cache.Side());
        if (!thumbnail.isNull()) return thumbnail;
    }
    const AutomaticStretchOnly automatic; // other programs look into the cache, too
    QImage picture = cache.Read(wish.picture, *modified);
    if (!picture.isNull()) return picture;
    picture =
        wish.isClip ? FirstFrame(wish.picture, cache.Side()) : Fitted(wish.picture, cache.Side());
    if (!picture.isNull()) cache.Write(wish.picture, *modified, picture);
    return picture;
}

GridPictures::GridPictures(int side, Deliver deliver)
    : m_cache(side), m_deliver(std::move(deliver)), m_worker([this] { Work(); }) {}

GridPictures::~GridPictures() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_worker.Join();
}

void GridPictures::Expect(int generation, std::vector<GridWish> wishes) {
    {
        const std::lock_guard lock(m_mutex);
        if (generation != m_generation) m_clips.clear();
        m_generation = generation;
        m_wishes = std::move(wishes);
        std::reverse(m_wishes.begin(), m_wishes.end());
    }
    m_changed.notify_all();
}

void GridPictures::Work() {
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), kLowest); // this thread alone
    const HeedsStop heeds(m_ends);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || !m_wishes.empty() || !m_clips.empty(); });
        if (m_ends) return;
        const int generation = m_generation;
        std::string untold; // the cell stays without a picture, or with the first frame
        if (m_wishes.empty()) {
            const std::string clip = std::move(m_clips.back());
            m_clips.pop_back();
            lock.unlock();
            const QImage picture = Guarded(untold, [&] { return Sharpest(clip); });
            if (!picture.isNull()) m_deliver(generation, clip, picture);
        } else {
            const GridWish wish = std::move(m_wishes.back());
            m_wishes.pop_back();
            if (wish.sharpest) m_clips.insert(m_clips.begin(), wish.picture);
            lock.unlock();
            m_deliver(generation, wish.picture,
                      Guarded(untold, [&] { return GridPicture(wish, m_cache); }));
        }
        lock.lock();
    }
}

// Never in the shared cache, where other programs look for the first one.
QImage GridPictures::Sharpest(const std::string& picture) {
    struct stat status {};
    if (::stat(picture.c_str(), &status) != 0) return {};
    const FileLook look = LookOf(status);
    const auto kept = m_sharpest.find(picture);
    if (kept != m_sharpest.end() && kept->second.look == look) return kept->second.picture;
    if (m_sharpest.size() >= kMostKept) m_sharpest.clear();
    return (m_sharpest[picture] = {look, SharpestFrame(picture, m_cache.Side())}).picture;
}

} // namespace tarn
