// The sky over each frame of a folder: its target, the Sun and the Moon at the middle of the
// exposure.
#pragma once

#include "sky/place/LongitudeSense.h"

#include <limits>
#include <span>

namespace tarn {

// Angles in degrees; NaN where they could not be had. Altitudes are without refraction, the Moon is
// seen from the site.
struct SkyRow {
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    std::optional<double> start; // seconds since 1970, UTC
    std::optional<double> utc;   // of the middle, for which all else is
    std::optional<Site> site;
    double rightAscension = kNone; // ICRS
    double declination = kNone;
    double altitude = kNone;
    double azimuth = kNone; // from north over east
    double airMass = kNone; // above the horizon
    double sunAltitude = kNone;
    double moonAltitude = kNone;
    double moonPhase = kNone; // illuminated part of the disc, 0 to 1
    double moonSeparation = kNone;
    double sidereal = kNone;
    std::string fault; // what is missing or contradicts, "; " between; empty for none
};

struct SkyOfFolder {
    std::vector<SkyRow> rows; // of each frame
    LongitudeSense sense;
    bool hasUnsure = false; // longitudes whose sign was decided
};

// A frame whose header has no site that can be is taken at the one given.
SkyRow SkyRowOf(const FrameWhere& frame, const LongitudeSense& sense,
                const std::optional<Site>& otherwise);
SkyOfFolder SkyOver(std::span<const FrameWhere> frames, const LongitudeSense& sense,
                    const std::optional<Site>& otherwise);
SkyOfFolder SkyOver(std::span<const FrameWhere> frames, const std::optional<Site>& otherwise);

} // namespace tarn
