// Open files by number, and what they replace, for the other files of this folder.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace tarn {

// False, with the system's text.
inline bool Fail(std::string* error, int code = errno) {
    if (error) *error = std::strerror(code);
    return false;
}

// Closes when it goes.
class Handle {
public:
    explicit Handle(int number) : m_number(number) {}
    ~Handle() {
        if (m_number >= 0) ::close(m_number);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    explicit operator bool() const { return m_number >= 0; }
    int Number() const { return m_number; }

private:
    int m_number;
};

inline bool WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Where a chain of links ends; the path itself when it is none.
inline std::string BehindLinks(const std::string& path) {
    std::array<char, PATH_MAX> real{};
    return ::realpath(path.c_str(), real.data()) ? std::string(real.data()) : path;
}

// Whether this is a link to something outside of the folder that it stands in.
inline bool IsLinkOut(const std::string& path) {
    struct stat info {};
    std::array<char, PATH_MAX> real{};
    if (::lstat(path.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return false;
    if (!::realpath(path.c_str(), real.data())) return false; // it leads nowhere
    const std::size_t end = path.rfind('/');
    std::string folder = BehindLinks(end == std::string::npos ? "."
                                     : end == 0               ? "/"
                                                              : path.substr(0, end));
    if (folder.back() != '/') folder += '/';
    return !std::string_view(real.data()).starts_with(folder);
}

// Whether something stands there, behind links, that is never replaced by a file.
inline constexpr const char* kNoFile = "Not a file but a pipe or a device";
inline bool IsPipeOrDevice(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && !S_ISREG(info.st_mode) && !S_ISDIR(info.st_mode);
}

// The mode of a file for the one that replaces it, which may belong to somebody else: nobody gets
// leave to run it as its owner.
inline mode_t ModeOf(const std::string& target) {
    struct stat info {};
    return ::stat(target.c_str(), &info) == 0 ? info.st_mode & 0777 : 0600;
}

} // namespace tarn
