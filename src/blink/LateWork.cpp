#include "blink/LateWork.h"

#include "common/stop_flag.h"

#include <utility>

namespace tarn {

LateWork::LateWork(std::function<void()> told) : m_told(std::move(told)) {
    m_worker = Worker([this] { Run(); });
}

LateWork::~LateWork() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
        *m_givenUp = true;
    }
    m_changed.notify_all();
    m_worker.Join();
}

void LateWork::Begin(Task task) {
    {
        const std::lock_guard lock(m_mutex);
        *m_givenUp = true;
        m_givenUp = std::make_shared<std::atomic<bool>>(false);
        m_task = std::move(task);
        m_answer = nullptr;
    }
    m_changed.notify_all();
}

void LateWork::GiveUp() {
    const std::lock_guard lock(m_mutex);
    *m_givenUp = true;
    m_task = nullptr;
    m_answer = nullptr;
}

bool LateWork::IsBusy() const {
    const std::lock_guard lock(m_mutex);
    return !*m_givenUp && (m_task || m_works);
}

void LateWork::Take() {
    Answer answer;
    {
        const std::lock_guard lock(m_mutex);
        answer = std::exchange(m_answer, nullptr);
    }
    if (answer) answer();
}

void LateWork::Run() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || m_task; });
        if (m_ends) return;
        const Task task = std::exchange(m_task, nullptr);
        const std::shared_ptr<std::atomic<bool>> givenUp = m_givenUp;
        m_works = true;
        lock.unlock();
        std::string thrown;
        Answer answer;
        {
            const HeedsStop heeds(*givenUp);
            answer = Guarded(thrown, [&] { return task(*givenUp); });
        }
        if (!thrown.empty())
            answer = [this, thrown] {
                if (onThrown) onThrown(thrown);
            };
        lock.lock();
        m_works = false;
        if (*givenUp || !answer) continue;
        m_answer = std::move(answer);
        lock.unlock();
        m_told();
        lock.lock();
    }
}

} // namespace tarn
