// Camera data as they stand in files of all kinds: the frame of a TIFF file, read with its own
// offsets and counts.
#pragma once

#include "imaging/exif/Boxes.h"

#include <vector>

namespace tarn {

struct TiffEntry {
    unsigned tag = 0;
    unsigned type = 0;
    std::uint32_t count = 0;
    std::string value; // the four bytes of the value field

    // Bytes of the data; those up to four stand in the value field.
    std::uint64_t Bytes() const;
};

class TiffBlock {
public:
    // Nothing is found in a block without a TIFF header.
    TiffBlock(const FileBytes& file, Span block);

    bool HighFirst() const { return m_highFirst; }
    std::int64_t FirstDirectory() const { return m_first; } // 0: none

    // Entries of the directory at an offset.
    std::vector<TiffEntry> Directory(std::int64_t offset) const;

    std::uint32_t OffsetOf(const TiffEntry& entry) const;
    std::uint32_t NumberOf(const TiffEntry& entry) const; // its first, of a whole type

    // `most` bytes of the data at most.
    std::string Data(const TiffEntry& entry, std::size_t most) const;
    std::string At(std::int64_t offset, std::size_t count) const;

private:
    const FileBytes& m_file;
    Span m_block;
    bool m_highFirst = false;
    std::int64_t m_first = 0;
};

// 1 to 8 as the first directory tells; 1 when it does not.
int OrientationOf(const TiffBlock& block);

} // namespace tarn
