// Small pictures for the list, made one after the other on a worker thread of low priority. What is
// wished for last is all that is made: rows that were scrolled past are passed over.
#pragma once

#include "common/file_look.h"
#include "common/worker.h"
#include "thumbnails/SharedCache.h"

#include <QImage>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace tarn {

struct GridWish {
    std::string picture;   // full path
    std::string thumbnail; // path of its thumbnail, taken when it is not older
    bool isClip = false;   // its first frame is meant
    bool sharpest = false; // and later, once nothing else is wished for, its sharpest
};

// A picture that fits into the square; null when the file cannot be shown.
QImage GridPicture(const GridWish& wish, const SharedCache& cache);

class GridPictures {
public:
    // Rung on the worker's thread; the generation is that of the wish.
    using Deliver =
        std::function<void(int generation, const std::string& picture, const QImage& image)>;

    GridPictures(int side, Deliver deliver);
    ~GridPictures(); // breaks the picture in work off
    GridPictures(const GridPictures&) = delete;
    GridPictures& operator=(const GridPictures&) = delete;

    void Expect(int generation, std::vector<GridWish> wishes);

private:
    void Work();
    QImage Sharpest(const std::string& picture);

    const SharedCache m_cache;
    const Deliver m_deliver;
    std::mutex m_mutex; // guards the rest
    std::condition_variable m_changed;
    std::vector<GridWish> m_wishes;   // the next one last
    std::vector<std::string> m_clips; // of which the sharpest frame is still to come; the same
    int m_generation = 0;
    std::atomic<bool> m_ends = false;

    struct Kept {
        FileLook look;
        QImage picture;
    };
    std::map<std::string, Kept> m_sharpest; // of the thread alone, by path
    Worker m_worker;
};

} // namespace tarn
