#include "follow/WorseFrame.h"

#include "common/paths.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace tarn {

namespace {

constexpr std::size_t kLast = 20;
constexpr std::size_t kFewest = 8;
constexpr double kSigmas = 3;
constexpr double kRobust = 1.4826;
constexpr double kLeastPart = 0.02; // of the median: frames that are all alike

double MedianOf(std::vector<double> values) {
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

std::optional<double> UsualWhereWorse(const JudgedFrame& frame,
                                      const std::vector<const JudgedFrame*>& others) {
    if (!std::isfinite(frame.measures.hfr)) return {};
    std::vector<const JudgedFrame*> before;
    for (const JudgedFrame* other : others)
        if (other->path != frame.path && other->measures.series == frame.measures.series &&
            std::isfinite(other->measures.hfr) && other->taken <= frame.taken)
            before.push_back(other);
    // Those without a time stand in the order of the list.
    std::stable_sort(before.begin(), before.end(), [](const JudgedFrame* a, const JudgedFrame* b) {
        return a->taken < b->taken;
    });
    if (before.size() > kLast) before.erase(before.begin(), before.end() - std::ptrdiff_t(kLast));
    if (before.size() < kFewest) return {};
    std::vector<double> sizes;
    for (const JudgedFrame* each : before) sizes.push_back(each->measures.hfr);
    const double median = MedianOf(sizes);
    for (double& size : sizes) size = std::abs(size - median);
    const double sigma = std::max(kRobust * MedianOf(sizes), kLeastPart * median);
    return frame.measures.hfr > median + kSigmas * sigma ? std::optional(median) : std::nullopt;
}

std::string WorseSaid(const JudgedFrame& frame, double usual) {
    std::array<char, 60> sizes{};
    std::snprintf(sizes.data(), sizes.size(), "HFR %.2f, theirs %.2f", frame.measures.hfr, usual);
    return "'" + LastPart(frame.path) + "' is worse than the frames before it: " + sizes.data();
}

} // namespace tarn
