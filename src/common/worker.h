// Threads of the program's own, and what becomes of what is thrown on them: it never ends the
// program. Who works through many things catches at each one, with its name, and goes on.
#pragma once

#include <cstdio>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tarn {

inline thread_local bool isWorkerThread = false;
inline bool IsWorkerThread() {
    return isWorkerThread;
}

// Called at the beginning of each; null: nothing is to be done.
inline void (*workerBegins)() = nullptr;

// What to tell of what was thrown; in a catch block.
inline std::string ThrownText() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return "Not enough memory";
    } catch (const std::length_error&) { // more than any memory has
        return "Not enough memory";
    } catch (const std::exception& fault) {
        return fault.what();
    } catch (...) {
        return "An unknown fault";
    }
}

// The work's result; where it throws, a default one and `error`.
template <typename Work> auto Guarded(std::string& error, const Work& work) -> decltype(work()) {
    try {
        return work();
    } catch (...) {
        error = ThrownText();
        return {};
    }
}

// A thread that is joined by its owner, or when it goes.
class Worker {
public:
    Worker() = default;
    template <typename Work>
    explicit Worker(Work work)
        : m_thread([work = std::move(work)]() mutable {
              isWorkerThread = true;
              if (workerBegins) workerBegins();
              try {
                  work();
              } catch (...) {
                  std::fprintf(stderr, "A worker has ended: %s\n", ThrownText().c_str());
              }
          }) {}
    Worker(Worker&&) = default;
    Worker& operator=(Worker&&) = default;
    ~Worker() { Join(); }

    void Join() {
        if (m_thread.joinable()) m_thread.join();
    }
    bool IsRunning() const { return m_thread.joinable(); } // begun and not yet joined

private:
    std::thread m_thread;
};

// The same work on so many threads, until all are done: what it threw, or nothing. What only some
// of them have finished is not whole.
template <typename Work> std::string OnWorkers(std::size_t count, const Work& work) {
    std::vector<std::string> thrown(count);
    {
        std::vector<Worker> workers;
        for (std::string& each : thrown)
            workers.emplace_back([&each, &work] { Guarded(each, [&] { return work(), true; }); });
    }
    for (std::string& each : thrown)
        if (!each.empty()) return std::move(each);
    return {};
}

} // namespace tarn
