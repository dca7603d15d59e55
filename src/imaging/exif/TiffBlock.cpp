#include "imaging/exif/TiffBlock.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t kEntryBytes = 12;
constexpr std::size_t kMostEntries = 512;
constexpr unsigned kLong = 4;

} // namespace

std::uint64_t TiffEntry::Bytes() const {
    constexpr std::uint8_t kSizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return type < std::size(kSizes) ? std::uint64_t(count) * kSizes[type] : 0;
}

// The number behind the byte order differs from maker to maker.
TiffBlock::TiffBlock(const FileBytes& file, Span block) : m_file(file), m_block(block) {
    const std::string head = At(0, 8);
    if (!head.starts_with("II") && !head.starts_with("MM")) return;
    m_highFirst = head[0] == 'M';
    m_first = std::int64_t(NumberAt(head, 4, 4, m_highFirst));
}

std::string TiffBlock::At(std::int64_t offset, std::size_t count) const {
    if (offset < 0 || offset >= m_block.length) return {};
    count = std::min<std::uint64_t>(count, std::uint64_t(m_block.length - offset));
    return m_file.At(m_block.place + offset, count);
}

std::vector<TiffEntry> TiffBlock::Directory(std::int64_t offset) const {
    std::vector<TiffEntry> entries;
    if (offset == 0) return entries;
    const std::size_t stated = NumberAt(At(offset, 2), 0, 2, m_highFirst);
    const std::string bytes = At(offset + 2, std::min(stated, kMostEntries) * kEntryBytes);
    for (std::size_t at = 0; at + kEntryBytes <= bytes.size(); at += kEntryBytes) {
        TiffEntry entry;
        entry.tag = unsigned(NumberAt(bytes, at, 2, m_highFirst));
        entry.type = unsigned(NumberAt(bytes, at + 2, 2, m_highFirst));
        entry.count = std::uint32_t(NumberAt(bytes, at + 4, 4, m_highFirst));
        entry.value = bytes.substr(at + 8, 4);
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::uint32_t TiffBlock::OffsetOf(const TiffEntry& entry) const {
    return std::uint32_t(NumberAt(entry.value, 0, 4, m_highFirst));
}

std::uint32_t TiffBlock::NumberOf(const TiffEntry& entry) const {
    return std::uint32_t(NumberAt(entry.value, 0, entry.type == kLong ? 4 : 2, m_highFirst));
}

std::string TiffBlock::Data(const TiffEntry& entry, std::size_t most) const {
    const auto bytes = std::size_t(std::min<std::uint64_t>(entry.Bytes(), most));
    return entry.Bytes() <= 4 ? entry.value.substr(0, bytes) : At(OffsetOf(entry), bytes);
}

int OrientationOf(const TiffBlock& block) {
    constexpr unsigned kOrientation = 274;
    constexpr std::uint32_t kHighest = 8;
    for (const TiffEntry& entry : block.Directory(block.FirstDirectory()))
        if (entry.tag == kOrientation) {
            const std::uint32_t number = block.NumberOf(entry);
            return number >= 1 && number <= kHighest ? int(number) : 1;
        }
    return 1;
}

} // namespace tarn
