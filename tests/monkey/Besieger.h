// Does to the decoder processes what can happen to them: kills, stops, lets go on, and starves them
// of memory, at random.
#pragma once

#include "common/worker.h"

#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <vector>

namespace tarn::testing {

class Besieger {
public:
    explicit Besieger(std::uint64_t seed);
    ~Besieger(); // lets all go on that are stopped
    Besieger(const Besieger&) = delete;
    Besieger& operator=(const Besieger&) = delete;

    int Killed() const { return m_killed; }
    int Stopped() const { return m_stopped; }
    int Starved() const { return m_starved; }

private:
    void Work(std::uint64_t seed);

    std::atomic<bool> m_ends = false;
    std::atomic<int> m_killed = 0;
    std::atomic<int> m_stopped = 0;
    std::atomic<int> m_starved = 0;
    Worker m_worker;
};

} // namespace tarn::testing
