// Angles, hours and numbers as headers have them.
#pragma once

#include <optional>
#include <string_view>

namespace tarn {

struct WrittenAngle {
    double value = 0;           // in the unit of its first part: hours or degrees
    bool isSexagesimal = false; // "05 34 31.9", "-00:30:12", "5h34m32s", "48 07.5"
    bool hasDirection = false;  // "11 31 W": the sign is in the value
};

// A number, also with the exponent of FORTRAN: "3.0D+02".
std::optional<double> ParseHeaderNumber(std::string_view text);

// None for what is no angle; minutes and seconds are below 60.
std::optional<WrittenAngle> ParseAngle(std::string_view text);

double WithinTurn(double degrees);     // 0 up to 360
double WithinHalfTurn(double degrees); // -180 up to 180

// The same as 0 where it would be written as 360.
double WithinWrittenTurn(double degrees, int decimals);

// Between two directions, degrees of a sphere.
double Separation(double longitude, double latitude, double toLongitude, double toLatitude);

} // namespace tarn
