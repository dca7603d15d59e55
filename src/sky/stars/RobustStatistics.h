// Middles and spreads that a few wild values do not move.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <vector>

namespace tarn {

inline constexpr double kDeviationOfMad = 1.4826; // of a normal distribution

// The values are put into another order. NaN without any; of an even number the mean of both
// middle ones.
template <typename Value> Value MedianInPlace(std::span<Value> values) {
    if (values.empty()) return std::numeric_limits<Value>::quiet_NaN();
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 == 1) return *middle;
    return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

inline double MedianOf(std::vector<double> values) {
    return MedianInPlace(std::span(values));
}

// As a standard deviation. NaN without values.
inline double DeviationOf(std::vector<double> values) {
    const double median = MedianInPlace(std::span(values));
    for (double& value : values) value = std::abs(value - median);
    return kDeviationOfMad * MedianInPlace(std::span(values));
}

} // namespace tarn
