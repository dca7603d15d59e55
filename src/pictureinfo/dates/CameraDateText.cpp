#include "pictureinfo/dates/CameraDateText.h"

#include "common/dates.h"
#include "common/numbers.h"

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
constexpr Field kTime{11, 8};

constexpr int kLastHour = 23;
constexpr int kLastSecond = 59;

std::string_view TextOf(std::string_view date, Field field) {
    return date.size() < field.at ? std::string_view() : date.substr(field.at, field.digits);
}

std::optional<int> NumberOf(std::string_view date, Field field) {
    return ParseInt32(TextOf(date, field));
}

std::string WithNumber(std::string_view date, Field field, int number) {
    std::string changed(date);
    if (date.size() >= field.at + field.digits)
        changed.replace(field.at, field.digits,
                        FormatPadded(number, static_cast<int>(field.digits)));
    return changed;
}

} // namespace

std::optional<std::int64_t> FileTimeOf(std::string_view cameraDate) {
    const auto year = NumberOf(cameraDate, kYear);
    const auto month = NumberOf(cameraDate, kMonth);
    const auto day = NumberOf(cameraDate, kDay);
    const auto hour = NumberOf(cameraDate, kHour);
    const auto minute = NumberOf(cameraDate, kMinute);
    const auto second = NumberOf(cameraDate, kSecond);
    if (!year || !month || !day || !hour || !minute || !second) return {};
    return ToFileTime({*year, *month, *day, *hour, *minute, *second});
}

std::optional<std::string> WithHourMoved(std::string_view cameraDate, int by) {
    const int hour = NumberOf(cameraDate, kHour).value_or(0) + by;
    if (hour < 0 || hour > kLastHour) return {};
    return WithNumber(cameraDate, kHour, hour);
}

std::string WithSecondAdded(std::string_view cameraDate) {
    const int second = NumberOf(cameraDate, kSecond).value_or(0) + 1;
    const bool inMinute = second >= 0 && second <= kLastSecond;
    return WithNumber(cameraDate, kSecond, inMinute ? second : 0);
}

std::optional<PictureDateText> TextsOf(std::string_view cameraDate) {
    const auto time = ParseTimeOfDay(TextOf(cameraDate, kTime));
    if (!time) return {};
    const auto text = [&](Field field) { return std::string(TextOf(cameraDate, field)); };
    const auto number = [&](Field field) { return NumberOf(cameraDate, field).value_or(0); };
    return PictureDateText{text(kMonth) + "/" + text(kDay) + "/" + text(kYear) + " " +
                               FormatTimeText(*time / 3600, *time / 60 % 60, *time % 60),
                           WeekdayName(number(kYear), number(kMonth), number(kDay)).value_or("")};
}

} // namespace tarn
