// Reads the settings, the lens and the white balance out of a Canon EOS maker note, which is always
// little-endian, and composes the settings lines of the panel.
#pragma once

#include "pictureinfo/MakerNote.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarn {

// All fields last until the next note; what a note lacks or keeps out of reach stays from the note
// before it.
struct CanonMakerNote : MakerNote {
    std::int16_t CanonTag = 0;
    std::int16_t CanonType = 0;
    std::int32_t CanonCount = 0;
    std::int16_t CanonValueOffset = 0;
    std::int16_t CanonBase = 0; // buffer index of the second word of the entry's data

    std::string CanonQuality;
    std::string CanonWhiteBalance;
    std::string CanonSharpness;
    std::string CanonFocus;
    std::string CanonContrast;
    std::string CanonSaturation;
    std::string CanonFlash;
    std::string CanonMode;
    std::string CanonStyle;
    std::string CanonLens; // UTF-8, empty when unknown

    std::array<std::string, 4> CanonLines;

    static bool Applies(std::string_view cameraName);

    // Only in a little-endian file. The "DIGITAL REBEL" models keep some settings elsewhere.
    void Read(const NoteSource& source) override;
    void Show(PictureInfo& info, const ExifTag& tag) const override;

private:
    void ReadEntry(const PictureDataBuffer& data, int index);
    void ReadSettings(const PictureDataBuffer& data, bool rebel);
    void ReadLens(const PictureDataBuffer& data, bool rebel);
    void ReadRebelSettings(const PictureDataBuffer& data);
    void ComposeLines(bool rebel);
};

} // namespace tarn
