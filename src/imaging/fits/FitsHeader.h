// What the header of a FITS file says of its first picture, as plain values.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tarn {

// Texts are plain ASCII as the file has them, without blanks around; empty when it has none.
struct FitsHeader {
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
    std::string date;        // "2024-11-05T21:14:33.5"
    std::string timeSystem;  // "UTC"
    std::string exposure;    // seconds, as written
    std::string gain;        // in the camera's own units
    std::string temperature; // of the sensor, degrees Celsius
    std::string filter;
    std::string telescope;
    std::string camera;
};

// The first bytes of every FITS file.
inline constexpr std::string_view kFitsStart = "SIMPLE  =";

} // namespace tarn
