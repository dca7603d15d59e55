#include "sky/night/LateStars.h"

#include "common/stop_flag.h"
#include "imaging/PictureLoader.h"
#include "sky/night/LowPriority.h"

#include <utility>

namespace tarn {

LateStars::LateStars(std::function<void()> told) : m_told(std::move(told)) {
    m_worker = Worker([this] { Work(); });
}

LateStars::~LateStars() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_worker.Join();
}

void LateStars::Ask(const std::string& path) {
    {
        const std::lock_guard lock(m_mutex);
        m_asked = path;
        m_isAsked = !path.empty();
        m_answer.reset();
    }
    m_changed.notify_all();
}

std::optional<StarsOfFile> LateStars::Take() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_answer, {});
}

void LateStars::Work() {
    BeLowOf("stars");
    const HeedsStop heeds(m_ends);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || m_isAsked; });
        if (m_ends) return;
        StarsOfFile stars;
        stars.path = m_asked;
        m_isAsked = false;
        lock.unlock();
        stars.look = PictureLoader::LookAt(stars.path);
        stars.listed = StarsIn(stars.path);
        lock.lock();
        if (m_isAsked || stars.path != m_asked) continue; // another is wanted by now
        m_answer = std::move(stars);
        lock.unlock();
        m_told();
        lock.lock();
    }
}

} // namespace tarn
