// Pictures decoded before they are asked for: while one stands on the screen, worker threads decode
// those that will probably come next, at the size in which they will be shown.
#pragma once

#include "common/worker.h"
#include "imaging/PictureLoader.h"

#include <QSize>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

struct PictureWish {
    std::string path;
    QSize wanted; // as for ImgX::LoadFile: the box to fit into, empty for all pixels

    // Sizes to which the picture of these pixels will be scaled, as stored: the worker prepares
    // them too. Runs on a worker thread, so it holds only values. May be left out.
    std::function<std::vector<QSize>(QSize picture)> shown;
};

// Everything but the workers' own part is for the interface thread. A source is given away once and
// for all: no worker touches it again.
class PicturesAhead {
public:
    // The memory for pixels in bytes.
    explicit PicturesAhead(std::int64_t budget = DefaultBudget());
    ~PicturesAhead(); // waits for decodes under way
    PicturesAhead(const PicturesAhead&) = delete;
    PicturesAhead& operator=(const PicturesAhead&) = delete;

    // A quarter of the machine's memory, at most 2 GB.
    static std::int64_t DefaultBudget();

    // What to decode while nothing else happens, the nearest first. Replaces what was wished
    // before; what was decoded and is wished no more goes, but for what was taken or kept since
    // the last call: the picture now shown is the first on the way back. What the budget has no
    // room for waits. Asks the disk nothing: the workers look whether what is at hand is still so.
    void Expect(const std::vector<PictureWish>& wishes);

    // The file's source with at least these pixels decoded, if they are ready or in the making
    // (then it waits for them). Null when they are not, or when the file is another one by now,
    // which `now` shows, a look at it just taken.
    std::shared_ptr<PictureSource> Take(const std::string& path, QSize wanted, const FileLook& now);
    std::shared_ptr<PictureSource> Take(const std::string& path, QSize wanted);

    // Why no reader could read the file as it is at that look, where a worker has just found that
    // out; told once.
    std::optional<std::string> TakeRefusal(const std::string& path, const FileLook& now);

    // Sees to it that the file is read before all others, and waits so long at most. True when Take
    // or TakeRefusal have an answer without reading; else `ready` is called once they have, on a
    // worker thread, unless another file is awaited by then. What was awaited before is broken off.
    bool Await(const std::string& path, QSize wanted, const FileLook& now,
               std::chrono::milliseconds patience, std::function<void()> ready);

    // A source that was decoded elsewhere, as if it had been taken.
    void Keep(const std::string& path, QSize wanted, std::shared_ptr<PictureSource> source);

    // The program has set the file's times itself: what is kept of it counts for the new ones.
    void TimesWereSet(const std::string& path);

    // Of what is decoded and being decoded.
    std::int64_t BytesHeld() const;

    // Until nothing more will be decoded for the present wishes.
    void WaitUntilDone();

private:
    struct Picture;
    using Pictures = std::vector<std::shared_ptr<Picture>>;

    enum class Serves { All, Awaited };
    void Work(Serves serves);
    static bool IsIn(const Pictures& pictures, const std::shared_ptr<Picture>& picture);
    void Decode(Picture& picture, std::unique_lock<std::mutex>& lock);
    static void TellReady(Picture& picture, std::unique_lock<std::mutex>& lock);
    void LookAgain(const std::shared_ptr<Picture>& picture, std::unique_lock<std::mutex>& lock);
    void Finish(Picture& picture, std::shared_ptr<PictureSource> source);
    std::shared_ptr<Picture> NextToDecode(Serves serves);
    std::shared_ptr<Picture> NextToLookAt() const;
    bool MakeRoom(std::size_t before, std::int64_t bytes);
    std::int64_t Used() const;
    std::shared_ptr<Picture> Find(const std::string& path, QSize wanted) const;
    std::shared_ptr<Picture> Wished(const PictureWish& wish) const;
    std::shared_ptr<Picture> Awaited(const PictureWish& wish, const FileLook& now);
    void Drop(const Picture* picture);

    const std::int64_t m_budget;
    mutable std::mutex m_mutex; // guards all below
    std::condition_variable m_changed;
    Pictures m_pictures; // in the order of the wishes, then those no longer wished
    Pictures m_dropped;  // their pixels are given back by a worker, which takes time
    int m_working = 0;   // decodes under way
    bool m_ends = false;
    std::vector<Worker> m_workers;
};

} // namespace tarn
