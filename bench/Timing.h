// Time of one act, and the middle of several.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace tarn::bench {

inline double Milliseconds(const std::function<void()>& act) {
    const auto start = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

inline double Median(std::vector<double> times) {
    std::nth_element(times.begin(), times.begin() + static_cast<long>(times.size() / 2),
                     times.end());
    return times[times.size() / 2];
}

} // namespace tarn::bench
