// One piece of long work at a time, on a thread of its own: somebody waits for it. The last one
// that was begun counts.
#pragma once

#include "common/worker.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace tarn {

class LateWork {
public:
    using Answer = std::function<void()>;
    // What it returns is done by Take, unless it was given up meanwhile. Readings of files on its
    // thread are broken off when it is.
    using Task = std::function<Answer(std::atomic<bool>& givenUp)>;

    // `told` is called on the thread of this one, when there is an answer.
    explicit LateWork(std::function<void()> told);
    ~LateWork(); // gives up what is in work, and waits for it
    LateWork(const LateWork&) = delete;
    LateWork& operator=(const LateWork&) = delete;

    // Done by Take in place of an answer, when something was thrown.
    std::function<void(const std::string& fault)> onThrown;

    void Begin(Task task); // what was before is given up
    void GiveUp();
    bool IsBusy() const;
    void Take(); // on the thread that asks

private:
    void Run();

    const std::function<void()> m_told;
    mutable std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    bool m_ends = false;
    bool m_works = false;
    Task m_task; // not begun
    std::shared_ptr<std::atomic<bool>> m_givenUp = std::make_shared<std::atomic<bool>>(false);
    Answer m_answer;
    Worker m_worker; // last: it uses all above
};

} // namespace tarn
