// Open files by number, for the other files of this folder.
#pragma once

#include <unistd.h>

#include <cerrno>
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

} // namespace tarn
