// The bytes in which tags are looked up. Index 0 is the first entry of the first directory, ten
// bytes behind the start of the data's own header. An index outside gives nothing.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tarn {

enum class ByteOrder { Intel, Motorola };

class PictureDataBuffer {
public:
    static constexpr int kSize = 20001;

    // Puts bytes over the start of the buffer, at most kSize of them; those behind stay.
    void Fill(std::span<const std::uint8_t> bytes);

    std::optional<std::int64_t> Byte(int index) const;

    // The number high * 256 + low.
    std::optional<std::int64_t> Pair(int highIndex, int lowIndex) const;

    // Unsigned numbers of two and four bytes.
    std::optional<std::int64_t> Word(int index, ByteOrder order) const;
    std::optional<std::int64_t> Long(int index, ByteOrder order) const;

    // Those of `count` bytes from an index on that lie inside, one code page character a byte.
    std::string_view Text(int index, int count) const;

private:
    std::array<std::uint8_t, kSize> bytes_{};
};

} // namespace tarn
