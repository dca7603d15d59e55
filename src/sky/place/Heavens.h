// What stands where in the sky, seen from a place at a time. All altitudes are geometric: without
// refraction, which lifts what is at the horizon by half a degree. Directions are those of the true
// horizon, with aberration and, of Sun and Moon, the parallax of the place. The Earth's rotation is
// taken as UTC, which is right to 0.9 s (0.004 degrees).
#pragma once

#include <memory>
#include <optional>

namespace tarn {

struct Site {
    double latitude = 0;  // degrees, -90 to 90, geodetic (WGS 84)
    double longitude = 0; // degrees, -180 to 180, east positive
    double height = 0;    // metres above sea

    bool operator==(const Site&) const = default;
};

// ICRS, degrees.
struct Target {
    double rightAscension = 0; // 0 up to 360
    double declination = 0;    // -90 to 90

    bool operator==(const Target&) const = default;
};

struct Direction {
    double altitude = 0; // degrees, -90 to 90
    double azimuth = 0;  // degrees from north over east, 0 up to 360
};

struct SunAndMoon {
    Direction sun;
    Direction moon;
    double phase = 0;    // illuminated part of the Moon's disc, 0 to 1
    double sidereal = 0; // apparent local sidereal time, degrees, 0 up to 360
};

enum class Twilight { Day, Civil, Nautical, Astronomical, Night };

// Of the Sun's geometric altitude, degrees; day begins where its upper edge is seen.
Twilight TwilightOf(double sunAltitude);
const char* TwilightText(Twilight twilight); // "nautical twilight"

// Air in the way beside that overhead, by Pickering's formula of 2002; none below the horizon.
std::optional<double> AirMassAt(double altitude);

// For one thread. What changes slowly is kept from one call to the next, so that the frames of a
// night in their order cost little.
class Heavens {
public:
    Heavens();
    ~Heavens();
    Heavens(const Heavens&) = delete;
    Heavens& operator=(const Heavens&) = delete;

    // `utc`: seconds since 1970, from 1900 to 2100.
    SunAndMoon At(double utc, const Site& site);

    // Of the same moment and place.
    Direction Of(const Target& target) const;
    double MoonSeparation(const Target& target) const; // degrees, as seen from the place

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// To ICRS, from the mean equator of a year, as catalogues of the given system have it.
Target FromEquinoxOf(double year, const Target& target);     // FK5, and what comes after it
Target FromOldEquinox1950(const Target& target, double utc); // FK4
Target FromGalactic(double longitude, double latitude);

// Geodetic from Earth-centred metres; none where they are nowhere near the ground.
std::optional<Site> SiteOfGeocentric(double x, double y, double z);

} // namespace tarn
