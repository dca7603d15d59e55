#include "sky/place/SkyRows.h"

#include "common/numbers.h"
#include "sky/place/Angles.h"

#include <cmath>

namespace tarn {

namespace {

constexpr double kHourDegrees = 15;

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
        Doubt(frame, row, SiderealAtStart(seen, frame.time));
    }

    // What cannot be as the header has it.
    void Doubt(const FrameWhere& frame, const SkyRow& row, double atStart) {
        constexpr double kSiderealSlack = 1.5; // degrees, six minutes
        constexpr double kAltitudeSlack = 5;   // degrees
        constexpr double kZoneReach = 30;      // of longitude, in which local time may be UTC
        constexpr double kLongExposure = 10;   // seconds, which nobody exposes by day
        constexpr double kBelow = -1;          // degrees
        const double exposure = frame.time.exposure.value_or(0);
        const double turned = exposure / 240; // degrees while it was exposed
        const double off = frame.sidereal ? WithinHalfTurn(*frame.sidereal - atStart) : 0;
        if (off < -kSiderealSlack || off > kSiderealSlack + turned)
            m_faults.push_back("its sidereal time is off by " +
                               FormatFixed(std::abs(off) / kHourDegrees, 1) +
                               " h: time, zone or longitude is wrong");
        if (frame.time.localIsUtc && std::abs(row.site->longitude) > kZoneReach)
            m_faults.emplace_back("DATE-OBS and DATE-LOC are the same: local time written as UTC");
        if (!frame.hasTarget) return;
        if (frame.altitude && frame.target &&
            std::abs(*frame.altitude - row.altitude) > kAltitudeSlack + turned)
            m_faults.push_back("its altitude is off by " +
                               FormatFixed(std::abs(*frame.altitude - row.altitude), 0) +
                               " degrees: time, zone or longitude is wrong");
        else if (row.altitude < kBelow)
            m_faults.emplace_back(
                "the target is below the horizon: time, zone or longitude is wrong");
        else if (exposure >= kLongExposure && row.sunAltitude > 0)
            m_faults.emplace_back("the Sun is up: local time may be written as UTC");
    }

    const bool m_countsWest;
    const std::optional<Site>& m_otherwise;
    Heavens m_heavens;
    std::vector<std::string> m_faults;
};

} // namespace

SkyRow SkyRowOf(const FrameWhere& frame, const LongitudeSense& sense,
                const std::optional<Site>& otherwise) {
    return RowMaker(sense.countsWest, otherwise).Make(frame);
}

SkyOfFolder SkyOver(std::span<const FrameWhere> frames, const std::optional<Site>& otherwise) {
    return SkyOver(frames, SenseOf(frames), otherwise);
}

SkyOfFolder SkyOver(std::span<const FrameWhere> frames, const LongitudeSense& sense,
                    const std::optional<Site>& otherwise) {
    SkyOfFolder sky;
    sky.sense = sense;
    RowMaker maker(sense.countsWest, otherwise);
    for (const FrameWhere& frame : frames) {
        sky.rows.push_back(maker.Make(frame));
        if (frame.HasUnsureSite()) sky.hasUnsure = true;
    }
    return sky;
}

} // namespace tarn
