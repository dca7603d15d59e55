#include "imaging/fits/FitsDates.h"

#include "common/dates.h"
#include "common/numbers.h"

#include <algorithm>
#include <string_view>

namespace tarn {

namespace {

constexpr std::size_t kDayLength = 10;   // "2024-11-05"
constexpr std::size_t kWholeLength = 19; // "2024-11-05T21:14:33"

struct DateParts {
    std::string clock; // date and time of day, with a blank between
    std::string zone;  // "Z", "-07:00"; empty for none
};

bool IsDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// "-07:00" for "-0700", "-07" and "-07:00"; empty for anything else.
std::string ZoneText(std::string_view zone) {
    std::string digits(zone.substr(1));
    std::erase(digits, ':');
    if (digits.size() == 2) digits += "00";
    if (digits.size() != 4 || !IsDigits(digits)) return {};
    return std::string(1, zone.front()) + digits.substr(0, 2) + ":" + digits.substr(2);
}

DateParts PartsOf(const std::string& date) {
    DateParts parts{date, {}};
    const auto between = date.find_first_of("T ");
    if (between == std::string::npos) return parts;
    parts.clock[between] = ' ';
    const auto end = date.find_first_of("Zz+-", between);
    if (end == std::string::npos) return parts;
    const bool universal = date[end] == 'Z' || date[end] == 'z';
    parts.zone = universal ? (end + 1 == date.size() ? "Z" : "")
                           : ZoneText(std::string_view(date).substr(end));
    if (parts.zone.empty()) return parts;
    parts.clock.resize(end);
    parts.clock.erase(parts.clock.find_last_not_of(' ') + 1);
    return parts;
}

} // namespace

std::string ShownFitsDate(const FitsHeader& header) {
    const DateParts parts = PartsOf(header.date);
    if (parts.clock.size() <= kDayLength || parts.clock[kDayLength] != ' ') return parts.clock;
    if (parts.zone == "Z") return parts.clock + " UT";
    if (!parts.zone.empty()) return parts.clock + " UTC" + parts.zone;
    const bool universal = header.timeSystem.empty() || header.timeSystem == "UTC";
    return parts.clock + " " + (universal ? "UT" : header.timeSystem);
}

std::string CameraDateOf(const FitsHeader& header) {
    std::string date = PartsOf(header.date).clock.substr(0, kWholeLength);
    if (date.size() < kWholeLength) return {};
    const auto number = [&](std::size_t at, std::size_t digits) {
        const std::string text = date.substr(at, digits);
        return IsDigits(text) ? ParseInt32(text).value_or(0) : -1;
    };
    if (number(17, 2) == 60) date.replace(17, 2, "59"); // a second put in, which no clock shows
    const DateTime when{number(0, 4),  number(5, 2),  number(8, 2),
                        number(11, 2), number(14, 2), number(17, 2)};
    if (date[4] != '-' || date[7] != '-' || date[10] != ' ' || !IsValid(when)) return {};
    date[4] = date[7] = ':';
    return date;
}

} // namespace tarn
