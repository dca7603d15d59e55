#include "sky/place/SkyRows.h"

#include "common/numbers.h"
#include "sky/place/Angles.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr double kHourDegrees = 15;

struct Misfit {
    double east = 0; // mean of what the frames are off, degrees
    double west = 0;
    int frames = 0;

    void Add(double ifEast, double ifWest) {
        east += std::abs(ifEast);
        west += std::abs(ifWest);
        ++frames;
    }
    // Whether one fits and the other is worse by a margin.
    bool Tells(double most, double margin) const {
        if (frames == 0) return false;
        const double best = std::min(east, west) / frames;
        return best <= most && std::abs(east - west) / frames >= margin;
    }
    bool IsWest() const { return west < east; }
};

Site Mirrored(Site site) {
    site.longitude = -site.longitude;
    return site;
}

// Altitudes of the target, and what the sidereal time is off.
class Evidence {
public:
    void Add(const FrameWhere& frame) {
        if (!frame.site || frame.isSiteSure) return;
        const Site east = *frame.site;
        const Site west = Mirrored(east);
        if (frame.time.zoneHours) {
            const double zone = *frame.time.zoneHours * kHourDegrees;
            zones.Add(zone - east.longitude, zone - west.longitude);
        }
        if (!frame.time.middle || (!frame.sidereal && !(frame.altitude && frame.target))) return;
        const SunAndMoon atEast = m_heavens.At(*frame.time.middle, east);
        const double altitudeEast = AltitudeOf(frame);
        const SunAndMoon atWest = m_heavens.At(*frame.time.middle, west);
        const double altitudeWest = AltitudeOf(frame);
        if (frame.sidereal)
            clocks.Add(WithinHalfTurn(*frame.sidereal - atEast.sidereal),
                       WithinHalfTurn(*frame.sidereal - atWest.sidereal));
        if (frame.altitude && frame.target)
            altitudes.Add(*frame.altitude - altitudeEast, *frame.altitude - altitudeWest);
    }

    Misfit clocks;
    Misfit zones;
    Misfit altitudes;

private:
    double AltitudeOf(const FrameWhere& frame) const {
        return frame.target ? m_heavens.Of(*frame.target).altitude : 0;
    }

    Heavens m_heavens;
};

class RowMaker {
public:
    RowMaker(bool countsWest, const std::optional<Site>& otherwise)
        : m_countsWest(countsWest), m_otherwise(otherwise) {}

    SkyRow Make(const FrameWhere& frame) {
        SkyRow row;
        m_faults = frame.time.faults;
        row.start = frame.time.start;
        row.utc = frame.time.middle;
        TakeSite(frame, row);
        if (frame.target) {
            row.rightAscension = frame.target->rightAscension;
            row.declination = frame.target->declination;
        }
        if (frame.hasTarget && !frame.target) m_faults.emplace_back("no target");
        if (row.utc && row.site) Look(frame, row);
        for (const std::string& fault : m_faults) {
            if (!row.fault.empty()) row.fault += "; ";
            row.fault += fault;
        }
        return row;
    }

private:
    // What the header says wins, where it can be.
    void TakeSite(const FrameWhere& frame, SkyRow& row) {
        if (frame.site) {
            row.site = m_countsWest && !frame.isSiteSure ? Mirrored(*frame.site) : *frame.site;
        } else {
            row.site = m_otherwise;
        }
        m_faults.insert(m_faults.end(), frame.faults.begin(), frame.faults.end());
        if (!row.site) m_faults.emplace_back("no site");
    }

    void Look(const FrameWhere& frame, SkyRow& row) {
        const SunAndMoon seen = m_heavens.At(*row.utc, *row.site);
        row.sunAltitude = seen.sun.altitude;
        row.moonAltitude = seen.moon.altitude;
        row.moonPhase = seen.phase;
        row.sidereal = seen.sidereal;
        if (frame.target) {
            const Direction target = m_heavens.Of(*frame.target);
            row.altitude = target.altitude;
            row.azimuth = target.azimuth;
            row.airMass = AirMassAt(target.altitude).value_or(SkyRow::kNone);
            row.moonSeparation = m_heavens.MoonSeparation(*frame.target);
        }
        Doubt(frame, row);
    }

    // What cannot be as the header has it.
    void Doubt(const FrameWhere& frame, const SkyRow& row) {
        constexpr double kSiderealSlack = 1.5; // degrees, six minutes
        constexpr double kAltitudeSlack = 5;   // degrees
        constexpr double kZoneReach = 30;      // of longitude, in which local time may be UTC
        constexpr double kLongExposure = 10;   // seconds, which nobody exposes by day
        constexpr double kBelow = -1;          // degrees
        const double exposure = frame.time.exposure.value_or(0);
        const double turned = exposure / 240; // degrees while it was exposed
        const double off = frame.sidereal ? WithinHalfTurn(*frame.sidereal - row.sidereal) : 0;
        if (std::abs(off) > kSiderealSlack + turned)
            m_faults.push_back("its sidereal time is off by " +
                               FormatFixed(std::abs(off) / kHourDegrees, 1) +
                               " h: time, zone or longitude is wrong");
        if (frame.time.localIsUtc && std::abs(row.site->longitude) > kZoneReach)
            m_faults.emplace_back("DATE-OBS and DATE-LOC are the same: local time written as UTC");
        if (frame.altitude && frame.target &&
            std::abs(*frame.altitude - row.altitude) > kAltitudeSlack + turned)
            m_faults.push_back("its altitude is off by " +
                               FormatFixed(std::abs(*frame.altitude - row.altitude), 0) +
                               " degrees: time, zone or longitude is wrong");
        else if (row.altitude < kBelow)
            m_faults.emplace_back(
                "the target is below the horizon: time, zone or longitude is wrong");
        else if (frame.hasTarget && exposure >= kLongExposure && row.sunAltitude > 0)
            m_faults.emplace_back("the Sun is up: local time may be written as UTC");
    }

    const bool m_countsWest;
    const std::optional<Site>& m_otherwise;
    Heavens m_heavens;
    std::vector<std::string> m_faults;
};

} // namespace

LongitudeSense SenseOf(std::span<const FrameWhere> frames) {
    Evidence evidence;
    for (const FrameWhere& frame : frames) evidence.Add(frame);
    // What the one sign may be off, and how much worse the other has to be, degrees: clocks of
    // places run on standard time, which is not that of their longitude.
    if (evidence.clocks.Tells(3, 1)) return {evidence.clocks.IsWest(), "by its sidereal times"};
    if (evidence.zones.Tells(35, 15)) return {evidence.zones.IsWest(), "by its time zone"};
    if (evidence.altitudes.Tells(3, 0.5))
        return {evidence.altitudes.IsWest(), "by the altitudes of its targets"};
    return {};
}

std::string SaidOfLongitudes(const LongitudeSense& sense) {
    if (sense.said.empty()) return "longitudes are taken as counting east: nothing tells";
    return std::string("longitudes count ") + (sense.countsWest ? "west, " : "east, ") + sense.said;
}

SkyRow SkyRowOf(const FrameWhere& frame, const LongitudeSense& sense,
                const std::optional<Site>& otherwise) {
    return RowMaker(sense.countsWest, otherwise).Make(frame);
}

SkyOfFolder SkyOver(std::span<const FrameWhere> frames, const std::optional<Site>& otherwise) {
    SkyOfFolder sky;
    sky.sense = SenseOf(frames);
    RowMaker maker(sky.sense.countsWest, otherwise);
    for (const FrameWhere& frame : frames) {
        sky.rows.push_back(maker.Make(frame));
        if (frame.site && !frame.isSiteSure) sky.hasUnsure = true;
    }
    return sky;
}

} // namespace tarn
