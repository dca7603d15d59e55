#include "platform/FileTimes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace tarn {

namespace {

bool Put(const std::string& path, const timespec (&times)[2], std::string* error) {
    // Not by the name: an owner could set the times of a file that he has set to read-only.
    const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
    const bool set = file >= 0 && ::futimens(file, times) == 0;
    if (!set && error) *error = std::strerror(errno);
    if (file >= 0) ::close(file);
    return set;
}

} // namespace

bool SetFileTimes(const std::string& path, std::int64_t when, std::string* error) {
    const timespec time{static_cast<time_t>(when), 0};
    return Put(path, {time, time}, error);
}

bool PutFileTimeBack(const std::string& path, std::int64_t seconds, std::int64_t nanoseconds,
                     std::string* error) {
    return Put(path, {{0, UTIME_NOW}, {static_cast<time_t>(seconds), nanoseconds}}, error);
}

} // namespace tarn
