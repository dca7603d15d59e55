// Work on a row of things, shared by two threads where that is worth its while.
#pragma once

#include <cstddef>
#include <exception>
#include <thread>

namespace tarn {

// Below so many a second thread costs more than it brings.
inline constexpr std::size_t kWorthTwoThreads = 64;

// Calls work(begin, end) for the halves of 0 to count; together they cover it once.
template <typename Work> void InTwoThreads(std::size_t count, const Work& work) {
    if (count < kWorthTwoThreads) {
        work(std::size_t(0), count);
        return;
    }
    const std::size_t middle = count / 2;
    std::exception_ptr fault; // of want of memory
    std::thread second([&] {
        try {
            work(middle, count);
        } catch (...) {
            fault = std::current_exception();
        }
    });
    try {
        work(std::size_t(0), middle);
    } catch (...) {
        second.join();
        throw;
    }
    second.join();
    if (fault) std::rethrow_exception(fault);
}

} // namespace tarn
