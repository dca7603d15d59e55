#include "sky/place/LongitudeSense.h"

#include "sky/place/Angles.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace tarn {

namespace {

constexpr double kHourDegrees = 15;
constexpr double kDegreeSeconds = 240; // in which the sky turns by one

// What a header is off, if its longitude counts to that side, degrees.
struct Misfit {
    double east = 0;
    double west = 0;
};

// What a kind of evidence may be off where the longitude is right, and what it is off at least
// where it is not, by itself and beside the other.
struct Limits {
    double fits;
    double refuses;
    double margin;
};
constexpr Limits kClocks{3, 0, 1};
constexpr Limits kAltitudes{3, 0, 0.5};
// Places run on a time that is not that of their longitude, in summer least of all.
constexpr Limits kZones{40, 60, 0};

class Votes {
public:
    explicit Votes(const Limits& limits) : m_limits(limits) {}

    // `blur`: what the evidence itself may be off.
    void Add(double ifEast, double ifWest, double blur = 0) {
        const Misfit misfit{std::abs(ifEast), std::abs(ifWest)};
        m_misfits.push_back(misfit);
        const auto [least, most] = std::minmax(misfit.east, misfit.west);
        if (least > m_limits.fits || most <= m_limits.refuses ||
            most - least < m_limits.margin + blur)
            return;
        ++(misfit.west < misfit.east ? m_west : m_east);
    }

    // Whether it is to the west; none where they do not agree.
    std::optional<bool> AreWest() const {
        constexpr int kOutvoted = 2; // times
        if (std::max(m_east, m_west) <= kOutvoted * std::min(m_east, m_west)) return std::nullopt;
        return m_west > m_east;
    }

    // Whether that side is possible by the middle one of them.
    bool Allow(bool west, double most) const {
        if (m_misfits.empty()) return true;
        std::vector<double> off;
        for (const Misfit& each : m_misfits) off.push_back(west ? each.west : each.east);
        const auto middle = off.begin() + std::ptrdiff_t(off.size() / 2);
        std::nth_element(off.begin(), middle, off.end());
        return *middle <= most;
    }

private:
    const Limits& m_limits;
    std::vector<Misfit> m_misfits;
    int m_east = 0;
    int m_west = 0;
};

class Evidence {
public:
    void Add(const FrameWhere& frame) {
        if (!frame.site || frame.isSiteSure) return;
        const Site east = *frame.site;
        const Site west = Mirrored(east);
        if (frame.time.zoneHours) {
            const double zone = *frame.time.zoneHours * kHourDegrees;
            zones.Add(WithinHalfTurn(zone - east.longitude), WithinHalfTurn(zone - west.longitude));
        }
        const bool hasAltitude = frame.altitude && frame.target;
        if (!frame.time.middle || (!frame.sidereal && !hasAltitude)) return;
        const SunAndMoon atEast = m_heavens.At(*frame.time.middle, east);
        const double altitudeEast = AltitudeOf(frame);
        const SunAndMoon atWest = m_heavens.At(*frame.time.middle, west);
        const double altitudeWest = AltitudeOf(frame);
        if (frame.sidereal)
            clocks.Add(WithinHalfTurn(*frame.sidereal - SiderealAtStart(atEast, frame.time)),
                       WithinHalfTurn(*frame.sidereal - SiderealAtStart(atWest, frame.time)));
        // Some write it at the start, others at the end.
        const double turned = frame.time.exposure.value_or(0) / kDegreeSeconds;
        if (hasAltitude)
            altitudes.Add(*frame.altitude - altitudeEast, *frame.altitude - altitudeWest, turned);
    }

    Votes clocks{kClocks};
    Votes altitudes{kAltitudes};
    Votes zones{kZones};

private:
    double AltitudeOf(const FrameWhere& frame) const {
        return frame.target ? m_heavens.Of(*frame.target).altitude : 0;
    }

    Heavens m_heavens;
};

} // namespace

LongitudeSense SenseOf(std::span<const FrameWhere> frames) {
    constexpr double kAltitudeSlack = 5; // degrees
    Evidence evidence;
    for (const FrameWhere& frame : frames) evidence.Add(frame);
    const auto clocks = evidence.clocks.AreWest();
    const auto altitudes = evidence.altitudes.AreWest();
    if (clocks && altitudes && *clocks != *altitudes) return {};
    if (clocks) return {*clocks, "by its sidereal times"};
    if (altitudes) return {*altitudes, "by the altitudes of its targets"};
    const auto zones = evidence.zones.AreWest();
    if (zones && evidence.altitudes.Allow(*zones, kAltitudeSlack))
        return {*zones, "by its time zone"};
    return {};
}

std::string SaidOfLongitudes(const LongitudeSense& sense) {
    if (sense.said.empty()) return "longitudes are taken as counting east: nothing tells";
    return std::string("longitudes count ") + (sense.countsWest ? "west, " : "east, ") + sense.said;
}

Site Mirrored(Site site) {
    site.longitude = -site.longitude;
    return site;
}

double SiderealAtStart(const SunAndMoon& seen, const ExposureTime& time) {
    constexpr double kTurnASecond = 360.98564736629 / 86400; // degrees
    if (!time.start || !time.middle) return seen.sidereal;
    return WithinTurn(seen.sidereal - (*time.middle - *time.start) * kTurnASecond);
}

} // namespace tarn
