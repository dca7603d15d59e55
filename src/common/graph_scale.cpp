#include "common/graph_scale.h"

#include "common/numbers.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tarn {

namespace {

constexpr double kAir = 0.05;   // of the range, on both sides
constexpr double kFence = 1.5;  // times the bulk, beyond it
constexpr double kLeast = 1e-9; // of a value, that a range spans

std::vector<double> Sorted(std::span<const double> values) {
    std::vector<double> sorted;
    std::copy_if(values.begin(), values.end(), std::back_inserter(sorted),
                 [](double value) { return std::isfinite(value); });
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

GraphRange WithAir(double low, double high) {
    double width = high - low;
    if (!(width > kLeast * std::max(std::abs(low), std::abs(high))))
        width = std::max(std::abs(low) * 2 * kAir, 1e-6);
    const double air = high > low ? kAir * width : width;
    return {low - air, high + air};
}

double Quantile(const std::vector<double>& sorted, double part) {
    const double place = part * double(sorted.size() - 1);
    const auto below = std::size_t(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (place - double(below)) * (sorted[above] - sorted[below]);
}

// 1, 2 or 5 times a power of ten.
double RoundStep(double least) {
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double times : {1.0, 2.0, 5.0})
        if (times * power >= least * (1 - 1e-9)) return times * power;
    return 10 * power;
}

std::string DayText(std::int64_t seconds) {
    const auto day = std::chrono::floor<std::chrono::days>(
        std::chrono::sys_seconds(std::chrono::seconds(seconds)));
    const std::chrono::year_month_day date(day);
    return FormatPadded(int(date.year()), 4) + "-" + FormatPadded(unsigned(date.month()), 2) + "-" +
           FormatPadded(unsigned(date.day()), 2);
}

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 60 * kMinute;
constexpr std::int64_t kDay = 24 * kHour;

std::int64_t OfDay(std::int64_t seconds) {
    return ((seconds % kDay) + kDay) % kDay;
}

std::string TimeText(std::int64_t seconds, bool withSeconds) {
    const std::int64_t time = OfDay(seconds);
    std::string text =
        FormatPadded(time / kHour, 2) + ":" + FormatPadded(time % kHour / kMinute, 2);
    if (withSeconds) text += ":" + FormatPadded(time % kMinute, 2);
    return text;
}

} // namespace

GraphRange WholeRange(std::span<const double> values) {
    const std::vector<double> sorted = Sorted(values);
    return sorted.empty() ? GraphRange() : WithAir(sorted.front(), sorted.back());
}

// The bulk lies between the tenth and the ninetieth of a hundred.
GraphRange RobustRange(std::span<const double> values) {
    const std::vector<double> sorted = Sorted(values);
    if (sorted.empty()) return {};
    const double low = Quantile(sorted, 0.1);
    const double high = Quantile(sorted, 0.9);
    const double fence = kFence * (high - low);
    if (!(fence > 0)) return WithAir(sorted.front(), sorted.back());
    const auto inside = [&](double value) { return value >= low - fence && value <= high + fence; };
    const auto first = std::find_if(sorted.begin(), sorted.end(), inside);
    const auto last = std::find_if(sorted.rbegin(), sorted.rend(), inside);
    return WithAir(*first, *last);
}

std::vector<GraphTick> RoundTicks(const GraphRange& range, int most) {
    std::vector<GraphTick> ticks;
    const double width = range.high - range.low;
    if (!(width > 0) || !std::isfinite(width)) return ticks;
    double step = RoundStep(width / std::max(2, most));
    const auto count = [&] {
        return std::floor(range.high / step) - std::ceil(range.low / step) + 1;
    };
    while (count() > most) step = RoundStep(step * 1.5);
    const int digits = std::max(0, int(-std::floor(std::log10(step) + 1e-9)));
    for (double at = std::ceil(range.low / step); at <= std::floor(range.high / step); ++at)
        ticks.push_back({at * step, FormatFixed(at == 0 ? 0 : at * step, digits)});
    return ticks;
}

std::vector<GraphTick> TimeTicks(const GraphRange& range, int most) {
    constexpr std::int64_t kSteps[] = {1,
                                       2,
                                       5,
                                       10,
                                       30,
                                       kMinute,
                                       2 * kMinute,
                                       5 * kMinute,
                                       10 * kMinute,
                                       15 * kMinute,
                                       30 * kMinute,
                                       kHour,
                                       2 * kHour,
                                       3 * kHour,
                                       6 * kHour,
                                       12 * kHour};
    std::vector<GraphTick> ticks;
    const double width = range.high - range.low;
    if (!(width > 0) || !std::isfinite(width)) return ticks;
    std::int64_t step = kDay;
    while (width / double(step) >= most) step *= 2;
    for (const std::int64_t each : kSteps)
        if (width / double(each) < most) {
            step = each;
            break;
        }
    for (auto at = std::int64_t(std::ceil(range.low / double(step))) * step;
         double(at) <= range.high; at += step)
        ticks.push_back({double(at), step >= kDay || OfDay(at) == 0
                                         ? DayText(at).substr(5)
                                         : TimeText(at, step < kMinute)});
    return ticks;
}

std::string ClockText(std::int64_t seconds) {
    return DayText(seconds) + " " + TimeText(seconds, true);
}

} // namespace tarn
