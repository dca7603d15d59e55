// Reads sensitivity, lens and settings out of the maker note of a NIKON D camera, which is always
// big-endian, and composes the settings lines of the panel.
#pragma once

#include "pictureinfo/MakerNote.h"

#include <array>
#include <cstdint>
#include <string>

namespace tarn {

// All fields last until the next note; what a note lacks or keeps out of reach stays from the note
// before it. The texts are the camera's own, as UTF-8.
struct NikonMakerNote : MakerNote {
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

    std::array<std::string, 4> NikonLines;

    static bool Applies(std::string_view cameraName);

    // Its sensitivity becomes the value of the tag. In a little-endian file focal lengths are whole
    // numbers.
    void Read(const NoteSource& source) override;
    void Show(PictureInfo& info, const ExifTag& tag) const override;

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

    std::array<Fraction, 4> m_lensNumbers; // shortest, longest focal length, their f-numbers
};

} // namespace tarn
