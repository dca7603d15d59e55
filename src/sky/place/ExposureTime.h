// When a frame was exposed. Times are seconds since 1970, UTC, leap seconds not counted.
#pragma once

#include "common/header_words.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

struct ExposureTime {
    std::optional<double> start;
    std::optional<double> middle;    // of the exposure; the start where its length is not known
    std::optional<double> exposure;  // seconds
    std::optional<double> zoneHours; // east of UTC, where the header says it in some way
    bool localIsUtc = false;         // local time and UTC are said to be the same
    std::vector<std::string> faults; // what is missing or contradicts
};

// DATE-AVG and MJD-AVG win for the middle. A date of 2000-01-01 is that of a clock that was not
// set: no time.
ExposureTime ExposureTimeOf(const HeaderWords& words);

// The same of a camera, by its clock ("2024:05:01 22:10:03", as it writes it) and what it says of
// its zone ("+02:00"); without, minutes east of UTC, or none: the system's zone. `utc` is the time
// of a receiver of satellites, where the camera has one: it shows a clock that is off.
struct CameraTime {
    std::string date;
    std::string fraction; // of its second, digits
    std::string zone;
    std::optional<double> exposure; // seconds
    std::optional<double> utc;
};
ExposureTime ExposureTimeOf(const CameraTime& camera, std::optional<int> zoneMinutes);

// "2024-05-01T22:10:03Z", with a fraction where there is one, to the millisecond.
std::string UtcText(double seconds);

// Seconds of such a date with time of day, "T" or a blank between; a zone behind it is counted in.
// None for what is no date with a time.
std::optional<double> ParseUtc(std::string_view text);

// How far atomic time is ahead of UTC then, seconds.
double LeapSecondsAt(double utc);

} // namespace tarn
