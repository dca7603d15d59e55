// Work on a row of things, shared by two threads where that is worth its while.
#pragma once

#include "common/stop_flag.h"

#include <cstddef>
#include <exception>
#include <optional>
#include <system_error>
#include <thread>

namespace tarn {

// Below so many a second thread costs more than it brings.
inline constexpr std::size_t kWorthTwoThreads = 64;

// Calls work(begin, end) for the halves of 0 to count; together they cover it once. What is thrown
// in either is thrown once both have ended. Where the system has no thread left, one does it all.
template <typename Work> void InTwoThreads(std::size_t count, const Work& work) {
    std::size_t middle = count < kWorthTwoThreads ? count : count / 2;
    std::exception_ptr fault; // of want of memory
    std::optional<std::thread> second;
    if (middle < count) {
        try {
            second.emplace([&, middle, stop = stopFlagOfThread] {
                stopFlagOfThread = stop;
                try {
                    work(middle, count);
                } catch (...) {
                    fault = std::current_exception();
                }
            });
        } catch (const std::system_error&) {
            middle = count;
        }
    }
    std::exception_ptr own;
    try {
        work(std::size_t(0), middle);
    } catch (...) {
        own = std::current_exception();
    }
    if (second) second->join();
    if (own) std::rethrow_exception(own);
    if (fault) std::rethrow_exception(fault);
}

} // namespace tarn
