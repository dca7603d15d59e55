#include "pictureinfo/dates/CameraDateText.h"

#include "common/codepage.h"
#include "common/dates.h"
#include "common/numbers.h"
#include "pictureinfo/CameraDataText.h"

#include <chrono>
#include <utility>

namespace tarn {

namespace {

// Places of the numbers, counted from 0, and how many digits they have.
struct Field {
    std::size_t at;
    std::size_t digits;
};
constexpr Field kYear{0, 4};
constexpr Field kMonth{5, 2};
constexpr Field kDay{8, 2};
constexpr Field kHour{11, 2};
constexpr Field kMinute{14, 2};
constexpr Field kSecond{17, 2};

constexpr int kFirstYear = 1601; // of file times
constexpr int kLastYear = 9999;
constexpr int kLastHour = 23;
constexpr int kLastSecond = 59;

// Places are counted in characters: a byte of the code page each.
std::string BytesOf(std::string_view date) {
    return ToCodePage(date).value_or(std::string());
}

std::optional<int> NumberOf(std::string_view bytes, Field field) {
    if (bytes.size() < field.at) return {};
    return ParseInt32(bytes.substr(field.at, field.digits));
}

std::string WithNumber(std::string_view date, Field field, int number) {
    std::string bytes = BytesOf(date);
    if (bytes.size() < field.at + field.digits) return std::string(date);
    bytes.replace(field.at, field.digits, FormatPadded(number, static_cast<int>(field.digits)));
    return FromCodePage(bytes);
}

std::optional<DateTime> DateOf(std::string_view cameraDate) {
    const std::string bytes = BytesOf(cameraDate);
    const auto year = NumberOf(bytes, kYear);
    const auto month = NumberOf(bytes, kMonth);
    const auto day = NumberOf(bytes, kDay);
    const auto hour = NumberOf(bytes, kHour);
    const auto minute = NumberOf(bytes, kMinute);
    const auto second = NumberOf(bytes, kSecond);
    if (!year || !month || !day || !hour || !minute || !second || *year < kFirstYear) return {};
    return DateTime{*year, *month, *day, *hour, *minute, *second};
}

// On a clock that is never put forward or back.
std::optional<std::chrono::sys_seconds> OnEvenClock(std::string_view cameraDate) {
    const auto date = DateOf(cameraDate);
    if (!date || !IsValid(*date)) return {};
    const std::chrono::year_month_day day(std::chrono::year(date->year),
                                          std::chrono::month(unsigned(date->month)),
                                          std::chrono::day(unsigned(date->day)));
    return std::chrono::sys_days(day) + std::chrono::hours(date->hour) +
           std::chrono::minutes(date->minute) + std::chrono::seconds(date->second);
}

} // namespace

std::optional<std::int64_t> FileTimeOf(std::string_view cameraDate) {
    const auto date = DateOf(cameraDate);
    return date ? ToFileTime(*date) : std::nullopt;
}

std::optional<std::int64_t> SecondsBetween(std::string_view from, std::string_view to) {
    const auto first = OnEvenClock(from);
    const auto last = OnEvenClock(to);
    if (!first || !last) return {};
    return (*last - *first).count();
}

std::optional<std::string> WithSeconds(std::string_view cameraDate, std::int64_t seconds) {
    constexpr std::int64_t kMost = std::int64_t(400) * 366 * 86400; // of any use
    const auto date = OnEvenClock(cameraDate);
    if (!date || seconds < -kMost || seconds > kMost) return {};
    const auto moved = *date + std::chrono::seconds(seconds);
    const auto midnight = std::chrono::floor<std::chrono::days>(moved);
    const std::chrono::year_month_day day(midnight);
    const std::chrono::hh_mm_ss time(moved - midnight);
    if (int(day.year()) < kFirstYear || int(day.year()) > kLastYear) return {};
    std::string text(cameraDate);
    for (const auto& [field, number] : {std::pair(kYear, int(day.year())),
                                        {kMonth, int(unsigned(day.month()))},
                                        {kDay, int(unsigned(day.day()))},
                                        {kHour, int(time.hours().count())},
                                        {kMinute, int(time.minutes().count())},
                                        {kSecond, int(time.seconds().count())}})
        text = WithNumber(text, field, number);
    return text;
}

std::optional<std::string> WithHourMoved(std::string_view cameraDate, int by) {
    const int hour = NumberOf(BytesOf(cameraDate), kHour).value_or(0) + by;
    if (hour < 0 || (by > 0 && hour > kLastHour)) return {};
    return WithNumber(cameraDate, kHour, hour);
}

std::string WithSecondAdded(std::string_view cameraDate) {
    const int second = NumberOf(BytesOf(cameraDate), kSecond).value_or(0) + 1;
    const bool inMinute = second >= 0 && second <= kLastSecond;
    return WithNumber(cameraDate, kSecond, inMinute ? second : 0);
}

std::optional<PictureDateText> TextsOf(std::string_view cameraDate) {
    const std::string bytes = BytesOf(cameraDate);
    auto text = ShownCameraDate(bytes);
    if (!text) return {};
    const auto number = [&](Field field) { return NumberOf(bytes, field).value_or(0); };
    return PictureDateText{std::move(*text),
                           WeekdayName(number(kYear), number(kMonth), number(kDay)).value_or("")};
}

} // namespace tarn
