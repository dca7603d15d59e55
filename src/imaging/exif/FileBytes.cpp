#include "imaging/exif/FileBytes.h"

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

std::optional<std::size_t> ReadAt(int file, std::int64_t place, std::span<char> buffer) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const ssize_t got = ::pread(file, buffer.data() + filled, buffer.size() - filled,
                                    static_cast<off_t>(place + std::int64_t(filled)));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && filled == 0) return {};
        if (got <= 0) break;
        filled += static_cast<std::size_t>(got);
    }
    return filled;
}

FileBytes::FileBytes(int file) : m_file(file) {
    struct stat facts {};
    if (::fstat(file, &facts) == 0 && S_ISREG(facts.st_mode)) m_size = facts.st_size;
}

std::optional<std::string> FileBytes::Read(std::int64_t place, std::size_t count) const {
    if (place < 0 || place >= m_size) return std::string();
    std::string bytes(std::min<std::uint64_t>(count, std::uint64_t(m_size - place)), '\0');
    const auto filled = ReadAt(m_file, place, bytes);
    if (!filled) return {};
    bytes.resize(*filled);
    return bytes;
}

std::uint64_t NumberAt(std::string_view bytes, std::size_t place, int size, bool highFirst) {
    std::uint64_t number = 0;
    for (int i = 0; i < size; ++i) {
        const std::size_t at = place + std::size_t(highFirst ? i : size - 1 - i);
        number = number << 8 | std::uint8_t(at < bytes.size() ? bytes[at] : 0);
    }
    return number;
}

} // namespace tarn
