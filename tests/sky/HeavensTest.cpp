// Sun, Moon, sidereal time and directions beside figures that others have published: worked
// examples of a textbook on astronomical algorithms (Meeus, 2nd edition; its number is at each) and
// the circumstances of eclipses by NASA.
#include "sky/place/Heavens.h"
#include "sky/place/Angles.h"
#include "sky/place/ExposureTime.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace tarn;

namespace {

constexpr double kRadian = std::numbers::pi / 180;

double Utc(const char* text) {
    return ParseUtc(text).value_or(0);
}

// Dynamical time was ahead by the leap seconds of the year and 32.184 s.
double FromDynamical(const char* text, double leapSeconds) {
    return Utc(text) - leapSeconds - 32.184;
}

constexpr Site kGreenwich{51.477, 0, 0};
constexpr Site kPole{90, 0, 0};

} // namespace

// Example 12.a: apparent sidereal time 13h 10m 46.1351s.
TEST(Heavens, SiderealTime) {
    Heavens heavens;
    const double expected = (13 + 10 / 60.0 + 46.1351 / 3600) * 15;
    EXPECT_NEAR(heavens.At(Utc("1987-04-10T00:00:00"), kGreenwich).sidereal, expected, 0.004);
    const Site west{38.9, -77.0655, 0};
    EXPECT_NEAR(heavens.At(Utc("1987-04-10T00:00:00"), west).sidereal, expected - 77.0655, 0.004);
}

// Example 13.b: Venus from Washington, by its apparent place 23h 09m 16.641s, -6d 43' 11.61":
// azimuth 68.0337 from south, altitude 15.1249. Mean places of the year are within 0.01 of it.
TEST(Heavens, AltitudeAndAzimuth) {
    Heavens heavens;
    const Site washington{38.921389, -77.065556, 0};
    const Target venus = FromEquinoxOf(1987.273, {347.3193375, -6.719892});
    heavens.At(Utc("1987-04-10T19:21:00"), washington);
    const Direction seen = heavens.Of(venus);
    EXPECT_NEAR(seen.altitude, 15.1249, 0.012);
    EXPECT_NEAR(seen.azimuth, 248.0337, 0.012);
}

// At the pole altitudes are declinations. Example 25.a: -7.78507; the Sun's parallax is 0.0024.
TEST(Heavens, SunAtThePole) {
    Heavens heavens;
    const SunAndMoon seen = heavens.At(FromDynamical("1992-10-13T00:00:00", 27), kPole);
    EXPECT_NEAR(seen.sun.altitude, -7.78507 - 0.0024, 0.002);
}

// Example 47.a: declination 13.768368, parallax 0.991990; the pole is 0.996647 of the equator's
// radius from the centre. Example 48.a: illuminated 0.6786.
TEST(Heavens, MoonAtThePole) {
    Heavens heavens;
    const SunAndMoon seen = heavens.At(FromDynamical("1992-04-12T00:00:00", 26), kPole);
    const double declination = 13.768368 * kRadian;
    const double lowered = std::atan2(
        std::sin(declination) - 0.996647 * std::sin(0.991990 * kRadian), std::cos(declination));
    EXPECT_NEAR(seen.moon.altitude, lowered / kRadian, 0.004);
    EXPECT_NEAR(seen.phase, 0.6786, 0.005);
}

// Where the axis of the shadow meets the ground both stand in one direction, which is published.
TEST(Heavens, EclipsesAreCentral) {
    struct Eclipse {
        const char* utc;
        Site site;
        double altitude;
    };
    constexpr Eclipse kEclipses[] = {
        {"1999-08-11T11:03:04", {45 + 4.8 / 60, 24 + 17.2 / 60, 0}, 59.4},
        {"2017-08-21T18:25:31.8", {36 + 58.0 / 60, -(87 + 40.3 / 60), 0}, 63.9}};
    Heavens heavens;
    for (const Eclipse& each : kEclipses) {
        SCOPED_TRACE(each.utc);
        const SunAndMoon seen = heavens.At(Utc(each.utc), each.site);
        EXPECT_NEAR(seen.sun.altitude, each.altitude, 0.1);
        EXPECT_LT(
            Separation(seen.sun.azimuth, seen.sun.altitude, seen.moon.azimuth, seen.moon.altitude),
            0.02);
        EXPECT_LT(seen.phase, 0.001);
    }
}

// Frames come in their order, and what is kept from one to the next may not show.
TEST(Heavens, KeepsNothingThatIsOutOfDate) {
    const Site site{48.1, 11.6, 520};
    const Target target{83.633, 22.0145};
    Heavens kept;
    for (int minutes = 0; minutes < 120; minutes += 10) {
        const double utc = Utc("2024-11-05T21:00:00") + minutes * 60.0;
        Heavens fresh;
        const SunAndMoon one = kept.At(utc, site);
        const SunAndMoon other = fresh.At(utc, site);
        EXPECT_NEAR(one.moon.altitude, other.moon.altitude, 1e-4);
        EXPECT_NEAR(one.sun.altitude, other.sun.altitude, 1e-4);
        EXPECT_NEAR(kept.Of(target).azimuth, fresh.Of(target).azimuth, 1e-4);
        EXPECT_NEAR(kept.MoonSeparation(target), fresh.MoonSeparation(target), 1e-4);
    }
}

// Beside the formula of Kasten and Young of 1989; 38.75 at the horizon is Pickering's own.
TEST(Heavens, AirMass) {
    for (const double altitude : {15.0, 20.0, 30.0, 45.0, 60.0, 90.0}) {
        SCOPED_TRACE(altitude);
        const double expected =
            1 / (std::sin(altitude * kRadian) + 0.50572 * std::pow(altitude + 6.07995, -1.6364));
        EXPECT_NEAR(AirMassAt(altitude).value_or(0) / expected, 1, 0.005);
    }
    EXPECT_NEAR(AirMassAt(0).value_or(0), 38.75, 0.01);
    EXPECT_FALSE(AirMassAt(-0.1).has_value());
    EXPECT_FALSE(AirMassAt(std::nan("")).has_value());
}

// Example 21.b: 41.054063, 49.227750 of J2000 come to 41.547214, 49.348483 by 2028 November 13.19.
TEST(Heavens, FramesOfCatalogues) {
    const Target icrs = FromEquinoxOf(2028.86705, {41.547214, 49.348483});
    EXPECT_NEAR(icrs.rightAscension, 41.054063, 1e-4);
    EXPECT_NEAR(icrs.declination, 49.227750, 1e-4);
    // The Crab nebula in both systems, and the galactic centre.
    const Target crab = FromOldEquinox1950({82.88083, 21.98194}, Utc("1990-01-01T00:00:00"));
    EXPECT_NEAR(crab.rightAscension, 83.6333, 0.003);
    EXPECT_NEAR(crab.declination, 22.0133, 0.003);
    const Target centre = FromGalactic(0, 0);
    EXPECT_NEAR(centre.rightAscension, 266.405, 0.001);
    EXPECT_NEAR(centre.declination, -28.936, 0.001);
}

TEST(Heavens, TwilightByTheSun) {
    EXPECT_STREQ(TwilightText(TwilightOf(0)), "day");
    EXPECT_STREQ(TwilightText(TwilightOf(-1)), "civil twilight");
    EXPECT_STREQ(TwilightText(TwilightOf(-6)), "nautical twilight");
    EXPECT_STREQ(TwilightText(TwilightOf(-12)), "astronomical twilight");
    EXPECT_STREQ(TwilightText(TwilightOf(-18)), "night");
}
