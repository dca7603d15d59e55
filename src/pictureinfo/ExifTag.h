// The tag entry under work. Its fields outlive entries and pictures: a field that an entry cannot
// fill keeps what an earlier entry left there.
#pragma once

#include "pictureinfo/PictureDataBuffer.h"

#include <cstdint>
#include <string>

namespace tarn {

inline constexpr std::int32_t kExifDirectoryTag = 34665;
inline constexpr std::int32_t kMakerNoteTag = 37500;

struct ExifTag {
    std::int16_t TagIndex = 0;     // buffer index of the entry
    std::int32_t TagNumber = 0;    // 0 ends the walk
    std::int16_t TagType = 0;      // one byte of it
    std::int32_t TagCount = 0;     // two bytes of it
    std::int16_t TagDataIndex = 0; // buffer index of the data
    std::int16_t TagValue = 0;     // the value as a number
    std::string TagText;           // code page bytes of a text entry
    float TagRational = 0;         // quotient of a rational entry
    std::int32_t TagNumerator = 0;
    std::int32_t TagDenominator = 0;

    // Reads the entry at TagIndex, after the jump to the Exif directory when the entry before it
    // pointed there. A maker note is left to the caller.
    void Read(const PictureDataBuffer& data, ByteOrder order);

    bool IsMakerNote() const { return TagType == 7 && TagNumber == kMakerNoteTag; }

private:
    void ReadText(const PictureDataBuffer& data);
    void ReadUnsignedRational(const PictureDataBuffer& data, ByteOrder order);
    void ReadSignedRational(const PictureDataBuffer& data, ByteOrder order);
    void MakeNumeratorNegative();
    void Divide();
};

} // namespace tarn
