#include "sky/night/LateJudging.h"

#include "sky/night/LowPriority.h"

#include <utility>

namespace tarn {

LateJudging::LateJudging(std::function<void()> told) : m_told(std::move(told)) {
    m_worker = Worker([this] { Work(); });
}

LateJudging::~LateJudging() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_worker.Join();
}

void LateJudging::Ask(int ticket, std::vector<FrameMeasures> frames) {
    {
        const std::lock_guard lock(m_mutex);
        m_ticket = ticket;
        m_asked = std::move(frames);
    }
    m_changed.notify_all();
}

bool LateJudging::IsBusy() const {
    const std::lock_guard lock(m_mutex);
    return m_works || m_asked;
}

std::optional<LateJudging::Answer> LateJudging::Take() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_answer, {});
}

void LateJudging::Work() {
    BeLowOf("judging");
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || m_asked; });
        if (m_ends) return;
        const std::vector<FrameMeasures> frames = std::move(*m_asked);
        m_asked.reset();
        m_works = true;
        const int ticket = m_ticket;
        lock.unlock();
        std::string untold; // they stay without a score
        JudgedFrames judged = Guarded(untold, [&] { return JudgeFrames(frames); });
        lock.lock();
        m_works = false;
        m_answer = Answer{ticket, std::move(judged)};
        lock.unlock();
        m_told();
        lock.lock();
    }
}

} // namespace tarn
