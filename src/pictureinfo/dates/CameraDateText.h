// A camera's date as text, "yyyy:mm:dd hh:mm:ss", taken apart by position alone: whatever stands
// between the numbers is passed over.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarn {

inline constexpr std::size_t kCameraDateLength = 19;

// The date as a file time, seconds since 1970, the text taken as local time. None when it is no
// date, or none that every file system could keep: those begin with 1601.
std::optional<std::int64_t> FileTimeOf(std::string_view cameraDate);

// The hour moved by one. None when that would cross into another day; an hour that is none, above
// 23, may still be moved down.
std::optional<std::string> WithHourMoved(std::string_view cameraDate, int by);

// The next second of the same minute: 00 follows 59.
std::string WithSecondAdded(std::string_view cameraDate);

// Seconds from one date to the other, by the calendar alone: a camera's clock knows no summer time.
// None when one is no date.
std::optional<std::int64_t> SecondsBetween(std::string_view from, std::string_view to);

// So many seconds later, digits alone changed. None when it is no date, or would leave the years
// that file times have, 1601 to 9999.
std::optional<std::string> WithSeconds(std::string_view cameraDate, std::int64_t seconds);

// As the program shows a picture's date.
struct PictureDateText {
    std::string date;    // "06/22/2004 8:15:30 PM"
    std::string weekday; // empty when there is no such day
};

// Only the time must be one; none when it is not.
std::optional<PictureDateText> TextsOf(std::string_view cameraDate);

} // namespace tarn
