#include "notes/ExposureSum.h"

#include "common/numbers.h"
#include "common/text.h"

#include <cmath>

namespace tarn {

namespace {

constexpr double kMostWhole = 32767;
constexpr double kMostShown = 1e15; // what can be shown digit by digit
constexpr std::size_t kWholeRow = 3;

// An empty box counts as 0.
std::optional<double> Number(std::string_view text) {
    return Trim(text).empty() ? 0 : ParseNumber(text);
}

std::optional<double> Within(double value, double most) {
    if (!std::isfinite(value) || value > most || value < -most - 1) return {};
    return value;
}

// As a whole number of 16 bits, halves to even.
std::optional<double> Whole(double value) {
    const auto held = Within(value, kMostShown);
    return held ? Within(static_cast<double>(RoundHalfEven(*held)), kMostWhole) : std::nullopt;
}

struct Clock {
    long long hours;
    long long minutes;
    long long seconds;
};

// A product of decimal fractions that is whole on paper is whole here: 10.2 x 100.
double Snapped(double time) {
    const double whole = std::round(time);
    return std::abs(time - whole) < 1e-9 * std::max(1.0, std::abs(whole)) ? whole : time;
}

Clock ClockOf(double exact) {
    const double time = Snapped(exact);
    const double hours = std::trunc(time / 3600);
    const double minutes = std::trunc((time - hours * 3600) / 60);
    return {std::llround(hours), std::llround(minutes),
            RoundHalfEven(time - hours * 3600 - minutes * 60)};
}

std::string TimeText(const std::optional<double>& time) {
    if (!time) return "out of range";
    const Clock clock = ClockOf(*time);
    return FormatGrouped(std::llround(*time)) + " seconds, h:m:s (" + std::to_string(clock.hours) +
           ":" + FormatPadded(clock.minutes, 2) + ":" + FormatPadded(clock.seconds, 2) + ")";
}

} // namespace

ExposureSum::ExposureSum(const std::array<ExposureInput, kExposureRows>& rows) {
    m_total = 0;
    for (std::size_t i = 0; i < kExposureRows; ++i) {
        auto seconds = Number(rows[i].seconds);
        auto frames = Number(rows[i].frames);
        if (!seconds || !frames) continue;
        if (i == kWholeRow) {
            seconds = Whole(*seconds);
            frames = Whole(*frames);
        }
        Row& row = m_rows[i];
        if (!seconds || !frames) {
            row.product.reset();
        } else {
            const double product = *seconds * *frames;
            row = {*seconds, *frames,
                   i == kWholeRow ? Whole(product) : Within(product, kMostShown)};
        }
        m_total = m_total && row.product ? std::optional(*m_total + *row.product) : std::nullopt;
    }
    if (m_total) m_total = Whole(*m_total);
}

std::string ExposureSum::RowText(std::size_t row) const {
    return TimeText(m_rows[row].product);
}

std::string ExposureSum::TotalText() const {
    return TimeText(m_total) + (m_total ? " Total" : "");
}

std::optional<std::string> ExposureSum::FillText() const {
    if (!m_total) return {};
    const Clock clock = ClockOf(*m_total);
    std::string text = std::to_string(clock.hours) + "h " + std::to_string(clock.minutes) + "m " +
                       std::to_string(clock.seconds) + "s ";
    for (std::size_t i = 0; i < kExposureRows; ++i) {
        const Row& row = m_rows[i];
        if (!row.product || *row.product <= 0) continue;
        text += (i == 0 ? " (" : ", (") + FormatFixed(row.frames, 0) + " at " +
                FormatFixed(row.seconds, 0) + "sec.)";
    }
    return text;
}

} // namespace tarn
