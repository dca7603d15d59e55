// Reads sensitivity, lens and settings out of the maker note of a NIKON D camera, which is always
// big-endian, and composes the settings lines of the panel.
#pragma once

#include "pictureinfo/ExifTag.h"

#include <array>
#include <cstdint>
#include <string>

namespace tarn {

// All fields last until the next note; what a note lacks or keeps out of reach stays from the note
// before it. The texts are the camera's own, as UTF-8.
struct NikonMakerNote {
    std::int16_t NikonTag = 0;
    std::int16_t NikonType = 0;
    std::int32_t NikonCount = 0;
    std::int16_t NikonValue = 0;
    std::int16_t NikonDataIndex = 0; // buffer index of the entry's data

    std::string NikonQuality;
    std::string NikonWhiteBalance;
    std::string NikonSharpening;
    std::string NikonFocus;
    std::string NikonFlash;
    std::string NikonTone;
    std::string NikonLens; // "18-70mm f/3.5-4.5", empty when unknown

    std::string NikonLine1;
    std::string NikonLine2;
    std::string NikonLine3;
    std::string NikonLine4;

    // The note at `tag.TagDataIndex`; its sensitivity becomes `tag.TagValue`. `order` is the one of
    // the file around the note: the Intel routine shows whole focal lengths only.
    void Read(const PictureDataBuffer& data, ExifTag& tag, bool flashFired, ByteOrder order);

private:
    struct Fraction {
        std::int32_t numerator = 0;
        std::int32_t denominator = 0;
    };

    void ReadEntry(const PictureDataBuffer& data, int noteIndex, int place);
    std::optional<std::string_view> ReadText(const PictureDataBuffer& data) const;
    void ReadLens(const PictureDataBuffer& data, ByteOrder order);
    double ReadLensNumber(const PictureDataBuffer& data, int which);
    void ComposeLines();

    std::array<Fraction, 4> lensNumbers_; // shortest, longest focal length, their f-numbers
};

} // namespace tarn
