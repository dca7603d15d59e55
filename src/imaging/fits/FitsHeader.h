// What the header of a telescope's file says of one of its pictures, as plain values.
#pragma once

#include "common/header_words.h"

#include <array>
#include <string>
#include <string_view>

namespace tarn {

// Texts are as the file has them, of FITS files plain ASCII, without blanks around; empty when it
// has none.
struct FitsHeader {
    int image = 0;        // which of the file's pictures this is, from 0
    int images = 1;       // and how many it has
    int width = 0;        // pixels, at least 1
    int height = 0;       // at least 1
    int planes = 1;       // 1, or 3 for colour; further ones are left out
    int bits = 16;        // of a stored sample: 8, 16, 32, 64, or -32 and -64 for floating point
    bool topDown = false; // the first stored row is the top one; else the bottom one

    // Colours under the filter of a one-shot colour camera: places of "RGB" for the first two
    // pixels of the first stored row, then of the second. Only with `mosaic`.
    std::array<int, 4> pattern{};
    bool mosaic = false;

    std::string object;
    std::string date;        // "2024-11-05T21:14:33.5", a zone behind it where the file has one
    std::string timeSystem;  // "UTC"
    std::string localDate;   // the same moment by the clock of the place
    std::string exposure;    // seconds, as written
    std::string gain;        // in the camera's own units
    std::string temperature; // of the sensor, degrees Celsius
    std::string filter;
    std::string telescope;
    std::string camera;
    std::string imageType;   // "Light Frame"
    std::string offset;      // of the camera, in its own units
    std::string pedestal;    // added to all samples by a program
    std::string binningX;    // pixels of the sensor in one
    std::string binningY;    // empty where it is that of X
    std::string focalLength; // millimetres
    std::string focus;       // place of the focuser, in its own steps
    std::string airMass;
    std::string rightAscension; // degrees, or hours, minutes and seconds
    std::string declination;
    std::string latitude; // of the place, degrees
    std::string longitude;

    HeaderWords words; // of time, site and target, those that the file has
};

// The first bytes of every FITS file, and of every XISF file that is one whole.
inline constexpr std::string_view kFitsStart = "SIMPLE  =";
inline constexpr std::string_view kXisfStart = "XISF0100";

} // namespace tarn
