// Whether the work of this thread is still wanted. Who gives work to a thread sets a flag over it;
// whoever works long there looks, and breaks off.
#pragma once

#include <atomic>
#include <utility>

namespace tarn {

inline thread_local const std::atomic<bool>* stopFlagOfThread = nullptr;

// While one lives, its thread heeds the flag.
class HeedsStop {
public:
    explicit HeedsStop(const std::atomic<bool>& flag)
        : m_before(std::exchange(stopFlagOfThread, &flag)) {}
    ~HeedsStop() { stopFlagOfThread = m_before; }
    HeedsStop(const HeedsStop&) = delete;
    HeedsStop& operator=(const HeedsStop&) = delete;

private:
    const std::atomic<bool>* m_before;
};

inline bool HasStopFlag() {
    return stopFlagOfThread != nullptr;
}

inline bool IsStopped() {
    return stopFlagOfThread && stopFlagOfThread->load(std::memory_order_relaxed);
}

} // namespace tarn
