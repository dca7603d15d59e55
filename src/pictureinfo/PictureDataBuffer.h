// The bytes in which tags are looked up. Index 0 is the first entry of the first directory, ten
// bytes behind the start of the data's own header. An index outside gives nothing.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tarn {

enum class ByteOrder { Intel, Motorola };

// A view; the bytes belong to the reader.
class PictureDataBuffer {
public:
    static constexpr int kSize = 20001;

    explicit PictureDataBuffer(std::span<const std::uint8_t, kSize> bytes) : m_bytes(bytes) {}

    std::optional<std::int64_t> Byte(int index) const {
        if (!Has(index)) return std::nullopt;
        return At(index);
    }

    // The number high * 256 + low.
    std::optional<std::int64_t> Pair(int highIndex, int lowIndex) const {
        if (!Has(highIndex) || !Has(lowIndex)) return std::nullopt;
        return At(highIndex) * 256 + At(lowIndex);
    }

    // Unsigned numbers of two and four bytes.
    std::optional<std::int64_t> Word(int index, ByteOrder order) const {
        return order == ByteOrder::Intel ? Pair(index + 1, index) : Pair(index, index + 1);
    }

    std::optional<std::int64_t> Long(int index, ByteOrder order) const {
        const bool intel = order == ByteOrder::Intel;
        const auto high = Word(intel ? index + 2 : index, order);
        const auto low = Word(intel ? index : index + 2, order);
        if (!high || !low) return std::nullopt;
        return *high * 65536 + *low;
    }

    // Those of `count` bytes from an index on that lie inside, one code page character a byte.
    std::string_view Text(int index, int count) const {
        const int first = std::clamp(index, 0, kSize);
        const int end = std::clamp(index + std::max(count, 0), first, kSize);
        const auto* const start = reinterpret_cast<const char*>(m_bytes.data());
        return {start + first, static_cast<std::size_t>(end - first)};
    }

private:
    static bool Has(int index) { return static_cast<unsigned>(index) < kSize; } // none below 0
    std::int64_t At(int index) const { return m_bytes[static_cast<std::size_t>(index)]; }

    std::span<const std::uint8_t, kSize> m_bytes;
};

} // namespace tarn
