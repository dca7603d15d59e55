// Dates and times of day, in local time, and their one form as text:
// "06/22/2004 8:15:30 PM" (month and day two digits, hour without leading zero, always English).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarn {

struct DateTime {
    int year = 0;
    int month = 0; // 1..12
    int day = 0;   // 1..31
    int hour = 0;  // 0..23
    int minute = 0;
    int second = 0;

    bool operator==(const DateTime&) const = default;
};

// Whether such a day is in the calendar (years 1 to 9999) and such a time on the clock.
bool IsValid(const DateTime& when);

std::string FormatDateText(const DateTime& when);

// "8:15:30 PM".
std::string FormatTimeText(int hour, int minute, int second);

// "h:mm" or "h:mm:ss", blanks around allowed, hour below 24, as seconds of the day; none for
// anything else, an empty text too.
std::optional<int> ParseTimeOfDay(std::string_view text);

// English name of the day of the week; none when the date is not in the calendar.
std::optional<std::string> WeekdayName(int year, int month, int day);

// A file time (seconds since 1970, UTC) as local date and time, and back. Back gives none for what
// is not valid.
DateTime FromFileTime(std::int64_t secondsSinceEpoch);
std::optional<std::int64_t> ToFileTime(const DateTime& local);

std::string NowText(); // this moment as FormatDateText gives it

} // namespace tarn
