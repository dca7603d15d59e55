// Pictures whose dates are wrong by one amount, since their camera's clock was. No widgets.
#pragma once

#include "platform/Files.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarn {

class Changes;

struct ClockPicture {
    std::string path;
    std::string camera;       // as the panel names it; empty where the file does not say
    std::string date;         // "2024:05:01 22:10:03", as its camera wrote it
    std::size_t position = 0; // of the date in the file, bytes
    std::string fault;        // why its date cannot be changed; empty when it can
};

ClockPicture ReadClockPicture(const Files& files, const std::string& path);

// "1 h 0 min 12 s behind": a clock that shows `seconds` too little; "ahead" below 0.
std::string ClockErrorText(std::int64_t seconds);

// What such an error mostly comes from; empty where nothing is known.
std::string UsualCauseOf(std::int64_t seconds);

// Which picture failed, and why.
struct ClockFault {
    std::string path;
    std::string why;
};

// All dates moved, and the files' own times with them. `goOn` is asked before each, with how many
// are done; false ends it there, and what is done stands. The number of files passed.
std::size_t SetClockRight(Changes& changes, const std::vector<ClockPicture>& pictures,
                          std::int64_t seconds, const std::function<bool(std::size_t)>& goOn,
                          std::vector<ClockFault>& faults);

} // namespace tarn
