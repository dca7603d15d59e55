#include "pictureinfo/PictureDataBuffer.h"

#include <algorithm>

namespace tarn {

void PictureDataBuffer::Fill(std::span<const std::uint8_t> bytes) {
    std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), kSize), bytes_.begin());
}

std::optional<std::int64_t> PictureDataBuffer::Byte(int index) const {
    if (index < 0 || index >= kSize) return std::nullopt;
    return bytes_[static_cast<std::size_t>(index)];
}

std::optional<std::int64_t> PictureDataBuffer::Pair(int highIndex, int lowIndex) const {
    const auto high = Byte(highIndex);
    const auto low = Byte(lowIndex);
    if (!high || !low) return std::nullopt;
    return *high * 256 + *low;
}

std::optional<std::int64_t> PictureDataBuffer::Word(int index, ByteOrder order) const {
    return order == ByteOrder::Intel ? Pair(index + 1, index) : Pair(index, index + 1);
}

std::optional<std::int64_t> PictureDataBuffer::Long(int index, ByteOrder order) const {
    const bool intel = order == ByteOrder::Intel;
    const auto high = Word(intel ? index + 2 : index, order);
    const auto low = Word(intel ? index : index + 2, order);
    if (!high || !low) return std::nullopt;
    return *high * 65536 + *low;
}

std::string_view PictureDataBuffer::Text(int index, int count) const {
    const int first = std::clamp(index, 0, kSize);
    const int end = std::clamp(index + std::max(count, 0), first, kSize);
    const char* const start = reinterpret_cast<const char*>(bytes_.data());
    return {start + first, static_cast<std::size_t>(end - first)};
}

} // namespace tarn
