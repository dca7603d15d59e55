#include "common/dates.h"

#include "common/numbers.h"
#include "common/text.h"

#include <array>
#include <chrono>
#include <ctime>

namespace tarn {

namespace {

std::chrono::year_month_day CalendarDay(int year, int month, int day) {
    return {std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
            std::chrono::day(static_cast<unsigned>(day))};
}

bool IsCalendarDay(int year, int month, int day) {
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return false;
    return CalendarDay(year, month, day).ok();
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// A number of `minDigits` to 2 digits taken from the front of the text; -1 when there is none.
int TakeNumber(std::string_view& text, std::size_t minDigits) {
    int value = 0;
    std::size_t count = 0;
    for (; count < 2 && count < text.size() && IsDigit(text[count]); ++count) {
        value = value * 10 + (text[count] - '0');
    }
    text.remove_prefix(count);
    return count < minDigits ? -1 : value;
}

bool TakeColon(std::string_view& text) {
    if (!StartsWith(text, ":")) return false;
    text.remove_prefix(1);
    return true;
}

// Dates are written by the thousand, so in one text.
std::string& AppendPadded(std::string& text, int value, int digits) {
    return text.append(FormatPadded(value, digits));
}

void AppendTime(std::string& text, int hour, int minute, int second) {
    const int onDial = hour % 12 == 0 ? 12 : hour % 12;
    AppendPadded(text, onDial, 1).push_back(':');
    AppendPadded(text, minute, 2).push_back(':');
    AppendPadded(text, second, 2).append(hour < 12 ? " AM" : " PM");
}

} // namespace

bool IsValid(const DateTime& when) {
    const bool onClock = when.hour >= 0 && when.hour < 24 && when.minute >= 0 && when.minute < 60 &&
                         when.second >= 0 && when.second < 60;
    return onClock && IsCalendarDay(when.year, when.month, when.day);
}

std::string FormatDateText(const DateTime& when) {
    std::string text;
    text.reserve(24);
    AppendPadded(text, when.month, 2).push_back('/');
    AppendPadded(text, when.day, 2).push_back('/');
    AppendPadded(text, when.year, 4).push_back(' ');
    AppendTime(text, when.hour, when.minute, when.second);
    return text;
}

std::string FormatTimeText(int hour, int minute, int second) {
    std::string text;
    AppendTime(text, hour, minute, second);
    return text;
}

std::optional<int> ParseTimeOfDay(std::string_view text) {
    text = Trim(text);
    const int hour = TakeNumber(text, 1);
    if (hour < 0 || hour > 23 || !TakeColon(text)) return std::nullopt;
    const int minute = TakeNumber(text, 2);
    if (minute < 0 || minute > 59) return std::nullopt;
    int second = 0;
    if (!text.empty()) {
        if (!TakeColon(text)) return std::nullopt;
        second = TakeNumber(text, 2);
    }
    if (second < 0 || second > 59 || !text.empty()) return std::nullopt;
    return (hour * 60 + minute) * 60 + second;
}

std::optional<std::string> WeekdayName(int year, int month, int day) {
    static constexpr std::array<const char*, 7> kNames = {
        "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    if (!IsCalendarDay(year, month, day)) return std::nullopt;
    const std::chrono::weekday weekday{std::chrono::sys_days(CalendarDay(year, month, day))};
    return kNames[weekday.c_encoding()];
}

DateTime FromFileTime(std::int64_t secondsSinceEpoch) {
    const auto seconds = static_cast<std::time_t>(secondsSinceEpoch);
    std::tm local{};
    localtime_r(&seconds, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

std::optional<std::int64_t> ToFileTime(const DateTime& local) {
    if (!IsValid(local)) return std::nullopt;
    std::tm fields{};
    fields.tm_year = local.year - 1900;
    fields.tm_mon = local.month - 1;
    fields.tm_mday = local.day;
    fields.tm_hour = local.hour;
    fields.tm_min = local.minute;
    fields.tm_sec = local.second;
    fields.tm_isdst = -1; // the rules in force at that date decide
    return static_cast<std::int64_t>(std::mktime(&fields));
}

std::string NowText() {
    return FormatDateText(FromFileTime(std::time(nullptr)));
}

} // namespace tarn
