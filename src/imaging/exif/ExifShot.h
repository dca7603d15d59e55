// When and where a camera took a picture, by its camera data; files of all kinds.
#pragma once

#include "imaging/exif/FileBytes.h"

#include <optional>
#include <string>

namespace tarn {

// Texts as the camera wrote them, printable, without blanks around; empty when it did not.
struct ExifShot {
    std::string camera;              // its model
    std::string lens;                // its model
    std::string date;                // "2024:05:01 22:10:03", by its clock
    std::string fraction;            // of the second, digits
    std::string zone;                // "+02:00"
    std::optional<double> exposure;  // seconds
    std::optional<double> latitude;  // degrees, north positive
    std::optional<double> longitude; // degrees, east positive
    std::optional<double> height;    // metres above sea
    std::string satelliteTime;       // "2024-05-01T20:10:03", UTC
};

// None for a file without camera data.
std::optional<ExifShot> ReadExifShot(const FileBytes& file);

} // namespace tarn
