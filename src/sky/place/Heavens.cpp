#include "sky/place/Heavens.h"

#include "sky/place/Angles.h"
#include "sky/place/ExposureTime.h"

#include <chrono>
#include <cmath>
#include <cstdint>

#include <erfa.h>
#include <erfam.h>

namespace tarn {

namespace {

constexpr double kDay = 86400;
constexpr double kUnixJd = 2440587.5;
constexpr double kTerrestrial = 32.184; // ahead of atomic time, seconds

struct TwoPartDay {
    double whole = 0;
    double part = 0;
};

TwoPartDay DayOf(double seconds) {
    const double days = std::floor(seconds / kDay);
    return {kUnixJd + days, seconds / kDay - days};
}

double TerrestrialOf(double utc) {
    return utc + LeapSecondsAt(utc) + kTerrestrial;
}

void Subtract(const double from[3], const double what[3], double way[3]) {
    double copy[3] = {from[0], from[1], from[2]};
    for (int i = 0; i < 3; ++i) way[i] = copy[i] - what[i];
}

} // namespace

struct Heavens::State {
    // Of the hours around a moment: the Earth's course bends by 0.01 seconds of arc meanwhile, its
    // axis turns by less.
    static constexpr double kWhile = 1800; // seconds
    double prepared = std::nan("");
    double earth[2][3]{}; // from the centre of the solar system, au and au a day
    double earthFromSun[2][3]{};
    double poleX = 0;
    double poleY = 0;
    double locator = 0;
    double origins = 0; // equation of the origins

    // Of the moment.
    eraASTROM astrom{};
    double moon[3]{}; // apparent, of length 1

    void Prepare(double utc) {
        if (std::abs(utc - prepared) <= kWhile) return;
        prepared = utc;
        const TwoPartDay day = DayOf(TerrestrialOf(utc));
        eraEpv00(day.whole, day.part, earthFromSun, earth);
        double axis[3][3];
        eraPnm06a(day.whole, day.part, axis);
        eraBpn2xy(axis, &poleX, &poleY);
        locator = eraS06(day.whole, day.part, poleX, poleY);
        origins = eraEors(axis, locator);
    }

    // Where the light that comes along a way, in au, is seen to come from.
    void Apparent(const double way[3], double seen[3]) {
        double length = 0;
        double unit[3];
        eraPn(const_cast<double*>(way), &length, unit);
        double bent[3];
        eraAb(unit, astrom.v, astrom.em, astrom.bm1, bent);
        eraRxp(astrom.bpn, bent, seen);
    }

    Direction DirectionOf(double right, double up) {
        double azimuth = 0;
        double zenith = 0;
        double hour = 0;
        double declination = 0;
        double rightAscension = 0;
        eraAtioq(right, up, &astrom, &azimuth, &zenith, &hour, &declination, &rightAscension);
        return {90 - zenith * ERFA_DR2D, WithinTurn(azimuth * ERFA_DR2D)};
    }

    Direction DirectionOf(double seen[3]) {
        double right = 0;
        double up = 0;
        eraC2s(seen, &right, &up);
        return DirectionOf(right, up);
    }

    // The way that its light goes to the place; it takes more than a second.
    void MoonWay(double utc, double way[3]) const {
        constexpr double kLightDay = ERFA_AULT / kDay; // days that light takes for an au
        double late = 0;
        for (int i = 0; i < 2; ++i) {
            const TwoPartDay day = DayOf(TerrestrialOf(utc));
            double fromEarth[2][3];
            eraMoon98(day.whole, day.part - late, fromEarth);
            const double since = (utc - prepared) / kDay - late;
            for (int axis = 0; axis < 3; ++axis)
                way[axis] =
                    fromEarth[0][axis] + earth[0][axis] + earth[1][axis] * since - astrom.eb[axis];
            late = eraPm(way) * kLightDay;
        }
    }
};

Heavens::Heavens() : m_state(std::make_unique<State>()) {}
Heavens::~Heavens() = default;

SunAndMoon Heavens::At(double utc, const Site& site) {
    State& state = *m_state;
    state.Prepare(utc);
    const TwoPartDay universal = DayOf(utc);
    const TwoPartDay terrestrial = DayOf(TerrestrialOf(utc));
    const double angle = eraEra00(universal.whole, universal.part);
    const double since = (utc - state.prepared) / kDay;
    double earth[2][3];
    double fromSun[3];
    for (int i = 0; i < 3; ++i) {
        earth[0][i] = state.earth[0][i] + state.earth[1][i] * since;
        earth[1][i] = state.earth[1][i];
        fromSun[i] = state.earthFromSun[0][i] + state.earthFromSun[1][i] * since;
    }
    const double longitude = site.longitude * ERFA_DD2R;
    eraApco(terrestrial.whole, terrestrial.part, earth, fromSun, state.poleX, state.poleY,
            state.locator, angle, longitude, site.latitude * ERFA_DD2R, site.height, 0, 0,
            eraSp00(terrestrial.whole, terrestrial.part), 0, 0, &state.astrom);

    SunAndMoon seen;
    seen.sidereal = WithinTurn((angle - state.origins + longitude) * ERFA_DR2D);
    double toSun[3];
    for (int i = 0; i < 3; ++i) toSun[i] = -state.astrom.eh[i] * state.astrom.em;
    double sun[3];
    state.Apparent(toSun, sun);
    seen.sun = state.DirectionOf(sun);
    double toMoon[3];
    state.MoonWay(utc, toMoon);
    state.Apparent(toMoon, state.moon);
    seen.moon = state.DirectionOf(state.moon);
    double moonToSun[3];
    Subtract(toSun, toMoon, moonToSun);
    double moonToUs[3] = {-toMoon[0], -toMoon[1], -toMoon[2]};
    seen.phase = (1 + std::cos(eraSepp(moonToSun, moonToUs))) / 2;
    return seen;
}

Direction Heavens::Of(const Target& target) const {
    double right = 0;
    double up = 0;
    eraAtciq(target.rightAscension * ERFA_DD2R, target.declination * ERFA_DD2R, 0, 0, 0, 0,
             &m_state->astrom, &right, &up);
    return m_state->DirectionOf(right, up);
}

double Heavens::MoonSeparation(const Target& target) const {
    double right = 0;
    double up = 0;
    eraAtciq(target.rightAscension * ERFA_DD2R, target.declination * ERFA_DD2R, 0, 0, 0, 0,
             &m_state->astrom, &right, &up);
    double unit[3];
    eraS2c(right, up, unit);
    return eraSepp(unit, m_state->moon) * ERFA_DR2D;
}

Twilight TwilightOf(double sunAltitude) {
    constexpr double kUpperEdge = -0.833; // with the refraction at the horizon
    if (sunAltitude > kUpperEdge) return Twilight::Day;
    if (sunAltitude > -6) return Twilight::Civil;
    if (sunAltitude > -12) return Twilight::Nautical;
    return sunAltitude > -18 ? Twilight::Astronomical : Twilight::Night;
}

const char* TwilightText(Twilight twilight) {
    constexpr const char* kTexts[] = {"day", "civil twilight", "nautical twilight",
                                      "astronomical twilight", "night"};
    return kTexts[int(twilight)];
}

std::optional<double> AirMassAt(double altitude) {
    if (!(altitude >= 0)) return std::nullopt;
    const double lifted = altitude + 244 / (165 + 47 * std::pow(altitude, 1.1));
    return 1 / std::sin(lifted * ERFA_DD2R);
}

Target FromEquinoxOf(double year, const Target& target) {
    constexpr double kJulianYear = 365.25;
    double fromIcrs[3][3];
    eraPmat06(ERFA_DJ00, (year - 2000) * kJulianYear, fromIcrs);
    double then[3];
    double icrs[3];
    eraS2c(target.rightAscension * ERFA_DD2R, target.declination * ERFA_DD2R, then);
    eraTrxp(fromIcrs, then, icrs);
    double right = 0;
    double up = 0;
    eraC2s(icrs, &right, &up);
    return {WithinTurn(right * ERFA_DR2D), up * ERFA_DR2D};
}

Target FromOldEquinox1950(const Target& target, double utc) {
    const TwoPartDay day = DayOf(utc);
    double right = 0;
    double up = 0;
    eraFk45z(target.rightAscension * ERFA_DD2R, target.declination * ERFA_DD2R,
             eraEpb(day.whole, day.part), &right, &up);
    return {WithinTurn(right * ERFA_DR2D), up * ERFA_DR2D};
}

Target FromGalactic(double longitude, double latitude) {
    double right = 0;
    double up = 0;
    eraG2icrs(longitude * ERFA_DD2R, latitude * ERFA_DD2R, &right, &up);
    return {WithinTurn(right * ERFA_DR2D), up * ERFA_DR2D};
}

std::optional<Site> SiteOfGeocentric(double x, double y, double z) {
    double place[3] = {x, y, z};
    Site site;
    if (eraGc2gd(ERFA_WGS84, place, &site.longitude, &site.latitude, &site.height) != 0)
        return std::nullopt;
    site.longitude *= ERFA_DR2D;
    site.latitude *= ERFA_DR2D;
    constexpr double kMost = 20'000; // metres
    return std::abs(site.height) < kMost ? std::optional(site) : std::nullopt;
}

double LeapSecondsAt(double utc) {
    const auto day = std::chrono::sys_days(std::chrono::days(std::int64_t(std::floor(utc / kDay))));
    const std::chrono::year_month_day date(day);
    double seconds = 0;
    eraDat(int(date.year()), int(unsigned(date.month())), int(unsigned(date.day())),
           utc / kDay - std::floor(utc / kDay), &seconds);
    return seconds;
}

} // namespace tarn
