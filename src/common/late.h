// Work for one wish at a time on a thread of its own: the last wish is what counts, and the answer
// to an earlier one is dropped.
#pragma once

#include "common/worker.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace tarn {

template <typename Wish, typename Answer> class Late {
public:
    // Both are called on the thread. What `work` throws gives a default answer.
    Late(std::function<Answer(const Wish&)> work, std::function<void()> told)
        : m_work(std::move(work)), m_told(std::move(told)), m_worker([this] { Run(); }) {}
    ~Late() {
        {
            const std::lock_guard lock(m_mutex);
            m_ends = true;
        }
        m_changed.notify_all();
        m_worker.Join();
    }
    Late(const Late&) = delete;
    Late& operator=(const Late&) = delete;

    void Ask(std::optional<Wish> wish) { // without one: none any more
        {
            const std::lock_guard lock(m_mutex);
            m_wish = std::move(wish);
            m_answer.reset();
            ++m_number;
        }
        m_changed.notify_all();
    }

    // To the last wish.
    std::optional<Answer> Take() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_answer, {});
    }

private:
    void Run() {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return m_ends || m_wish; });
            if (m_ends) return;
            const Wish wish = *std::exchange(m_wish, {});
            const int number = m_number;
            lock.unlock();
            std::string thrown;
            Answer answer = Guarded(thrown, [&] { return m_work(wish); });
            lock.lock();
            if (number != m_number) continue;
            m_answer = std::move(answer);
            lock.unlock();
            m_told();
            lock.lock();
        }
    }

    const std::function<Answer(const Wish&)> m_work;
    const std::function<void()> m_told;
    std::mutex m_mutex; // of all below but the last
    std::condition_variable m_changed;
    bool m_ends = false;
    int m_number = 0; // of the last wish
    std::optional<Wish> m_wish;
    std::optional<Answer> m_answer;
    Worker m_worker; // last: it uses all above
};

} // namespace tarn
