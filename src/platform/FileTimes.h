// The times of a file, for what does without the toolkit too.
#pragma once

#include <cstdint>
#include <string>

namespace tarn {

// Last access and last modification, seconds since 1970. False, with the system's text, when the
// file may not be written.
bool SetFileTimes(const std::string& path, std::int64_t when, std::string* error);

// Last modification to the nanosecond; last access is now.
bool PutFileTimeBack(const std::string& path, std::int64_t seconds, std::int64_t nanoseconds,
                     std::string* error);

} // namespace tarn
