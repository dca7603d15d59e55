// A file read by places, without moving the place of others who read it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tarn {

// Fills the buffer from a place on as far as the file goes: how many bytes; none where reading
// fails at once.
std::optional<std::size_t> ReadAt(int file, std::int64_t place, std::span<char> buffer);

class FileBytes {
public:
    explicit FileBytes(int file); // the system's number; it stays open
    std::int64_t Size() const { return m_size; }

    // Those that there are, `count` at most; none where reading fails at once.
    std::optional<std::string> Read(std::int64_t place, std::size_t count) const;

    // The same, empty where reading fails.
    std::string At(std::int64_t place, std::size_t count) const {
        return Read(place, count).value_or(std::string());
    }

private:
    int m_file;
    std::int64_t m_size = 0;
};

// The number that stands at a place of some bytes, 0 beyond their end.
std::uint64_t NumberAt(std::string_view bytes, std::size_t place, int size, bool highFirst);

} // namespace tarn
