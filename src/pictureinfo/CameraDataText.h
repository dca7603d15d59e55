// The texts that picture and camera data are shown in, and the lines of the camera data panel. All
// labels have 14 characters, so that the values stand in one column of a fixed-pitch list.
#pragma once

#include "pictureinfo/PictureInfo.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

inline constexpr int kPanelLines = 13;

// FileSizeText, MpixelText, ExpSizeLine, ExpMegapixels and line 2, from the size of the picture in
// pixels and of its file in bytes.
void SetSizeTexts(PictureInfo& info, std::int64_t fileSize);

// Lines 0 and 1 from the file's name and date.
void SetNameAndFileDate(PictureInfo& info);

// A camera's date "2004:06:22 20:15:30", bytes of the code page, as it is shown: "06/22/2004
// 8:15:30 PM". By position alone; none when the time is no time.
std::optional<std::string> ShownCameraDate(std::string_view bytes);

// Line 1 from the picture's date; it stays as it is when that date has no weekday.
void SetPictureDateLine(PictureInfo& info);

// For a picture without camera data whose file tells of it in another way: its date, in the form of
// a camera's, goes into PictureDate and its row, the further rows behind the others.
void AddOwnFacts(PictureInfo& info, std::string_view cameraDate,
                 const std::vector<std::string>& rows);

// "1/125s", "00m 30s", "0" through a denominator of 0.
std::string ExposureTimeText(std::int32_t numerator, std::int32_t denominator);

std::string ApertureText(float fNumber); // "f/5.6"
std::string BiasText(float bias);        // "+0.7 EV"

// Line 6 and ExpMagnification, from the focal length of the sensor and the camera's FilmFactor.
void SetFocalLength(PictureInfo& info, float focal);

// The same from the focal length on film that the camera states; `focal` is 0 when it states none.
void SetFilmFocalLength(PictureInfo& info, std::int16_t filmFocal, float focal);

inline constexpr const char* kManualLensLine = "Focal length: Manual lens";

// One line of the panel: label and text.
void SetMeterLine(PictureInfo& info, std::string_view text);
void SetFocusLine(PictureInfo& info);
void SetCameraLine(PictureInfo& info);

// Lines 7 to 12 of a camera whose maker's note is read. Without a lens line 7 stays.
void SetMakerLines(PictureInfo& info, const std::string& lens,
                   const std::array<std::string, 4>& settings);

// Lines 4, 5, 8 to 11 from the fields, after all tags.
void AssembleLines(PictureInfo& info);

// Puts the first lines into the panel. There a line is one row of text: what a maker put in
// besides, zeros and control characters, is left out or blank.
void ShowLines(PictureInfo& info, int count);

} // namespace tarn
