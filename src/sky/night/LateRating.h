// The frames of one clip rated on a thread of its own, of low priority; the last clip asked for is
// what counts. What was rated whole is kept as long as this one lives.
#pragma once

#include "common/worker.h"
#include "sky/frames/RatedClip.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

class LateRating {
public:
    // `told` is called on the thread of this one, a few times a second.
    explicit LateRating(std::function<void()> told);
    ~LateRating();
    LateRating(const LateRating&) = delete;
    LateRating& operator=(const LateRating&) = delete;

    void Ask(const std::string& path); // empty: none any more
    void Cancel();                     // what is rated by then is the answer

    struct News {
        std::string path;
        std::vector<RatedFrame> frames;         // since the last ones
        std::shared_ptr<const RatedClip> whole; // once all are rated, or no more can be
    };
    std::optional<News> Take(); // of the clip that was asked for last

private:
    using Whole = std::shared_ptr<const RatedClip>;

    void Work();
    Whole KeptOf(const std::string& path);
    Whole Rate(const std::string& path);
    void Keep(const std::string& path, const Whole& clip);

    const std::function<void()> m_told;
    std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    bool m_ends = false;
    bool m_isAsked = false; // and not begun
    std::string m_asked;
    std::vector<RatedFrame> m_new;
    Whole m_whole;
    std::list<std::pair<std::string, Whole>> m_kept; // by path, the last first

    std::atomic<bool> m_stop = false; // the clip in work
    std::atomic<bool> m_isCancelled = false;
    Worker m_worker; // last: it uses all above
};

} // namespace tarn
