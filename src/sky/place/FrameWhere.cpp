#include "sky/place/FrameWhere.h"

#include "common/numbers.h"
#include "common/text.h"
#include "sky/place/Angles.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace tarn {

namespace {

constexpr double kHourDegrees = 15;
constexpr double kSameSite = 0.1; // degrees, within which two spellings mean one place
constexpr double kSameTarget = 2;

constexpr const char* kLatitudes[] = {"OBSGEO-B", "SITELAT", "LAT-OBS",  "OBSLAT",
                                      "OBS-LAT",  "GEOLAT",  "LATITUDE", "TELLAT"};
constexpr const char* kLongitudes[] = {"OBSGEO-L", "SITELONG", "SITELON",  "LONG-OBS", "LON-OBS",
                                       "OBSLONG",  "OBSLON",   "OBS-LONG", "OBS-LON",  "GEOLONG",
                                       "GEOLON",   "LONGITUD", "TELLONG"};
constexpr const char* kHeights[] = {"OBSGEO-H", "SITEELEV", "SITEALT", "ALT-OBS", "OBSALT",
                                    "OBSELEV",  "OBS-ELEV", "GEOELEV", "GEOALT",  "ELEVATIO"};

class WhereReader {
public:
    WhereReader(const HeaderWords& words, bool hasTarget) : m_words(words) {
        m_where.hasTarget = hasTarget;
    }

    FrameWhere Read() {
        m_where.time = ExposureTimeOf(m_words);
        ReadSite();
        ReadSidereal();
        if (m_where.hasTarget) {
            ReadTarget();
            ReadAltitude();
        }
        return m_where;
    }

private:
    struct Pointing {
        std::string name; // "RA and DEC"
        Target target;
        bool isPlain = false; // a number that may be one of hours
        bool isHours = false; // by custom, where it is plain
        bool isIcrs = false;  // whatever the header's equinox is
    };

    std::string_view Word(std::string_view name) const { return WordIn(m_words, name); }
    std::optional<double> Number(std::string_view name) const {
        return ParseHeaderNumber(Word(name));
    }
    void Complain(const std::string& fault) { m_where.faults.push_back(fault); }
    void OutOfRange(std::string_view name) {
        Complain(std::string(name) + " " + std::string(Word(name)) + " is out of range");
    }

    // The first of them that is an angle up to so much; others that mean another place are told.
    // Longitudes may count either way.
    std::optional<double> Coordinate(std::span<const char* const> names, double most) {
        const bool isLongitude = most > 90;
        const auto differ = [&](double one, double other) {
            if (!isLongitude) return std::abs(one - other) > kSameSite;
            return std::min(std::abs(WithinHalfTurn(one - other)),
                            std::abs(WithinHalfTurn(one + other))) > kSameSite;
        };
        std::optional<double> found;
        std::string_view foundName;
        for (const std::string_view name : names) {
            if (Word(name).empty()) continue;
            const auto angle = ParseAngle(Word(name));
            if (!angle || std::abs(angle->value) > most) {
                OutOfRange(name);
                continue;
            }
            if (!found) {
                found = angle->value;
                foundName = name;
                m_isSure = angle->hasDirection || name == "OBSGEO-L";
            } else if (differ(*found, angle->value)) {
                Complain(std::string(foundName) + " and " + std::string(name) + " differ");
            }
        }
        return found;
    }

    void ReadSite() {
        const auto latitude = Coordinate(kLatitudes, 90);
        const auto longitude = Coordinate(kLongitudes, 360);
        if (latitude && longitude) {
            // What a program writes that was never told its place.
            if (*latitude == 0 && *longitude == 0) return Complain("the site 0, 0 is none");
            m_where.site = Site{*latitude, WithinHalfTurn(*longitude), Height()};
            m_where.isSiteSure = m_isSure;
            return;
        }
        const auto x = Number("OBSGEO-X");
        const auto y = Number("OBSGEO-Y");
        const auto z = Number("OBSGEO-Z");
        if (!x || !y || !z) return;
        m_where.site = SiteOfGeocentric(*x, *y, *z);
        m_where.isSiteSure = true;
        if (!m_where.site) Complain("OBSGEO-X, -Y and -Z are out of range");
    }

    double Height() {
        constexpr double kLeast = -500;
        constexpr double kMost = 9000;
        for (const std::string_view name : kHeights) {
            if (Word(name).empty()) continue;
            const auto metres = Number(name);
            if (metres && *metres >= kLeast && *metres <= kMost) return *metres;
            OutOfRange(name);
        }
        return 0;
    }

    void AddPointing(std::string_view right, std::string_view up, bool isHours) {
        if (Word(right).empty() || Word(up).empty()) return;
        const auto ascension = ParseAngle(Word(right));
        const auto declination = ParseAngle(Word(up));
        if (!declination || std::abs(declination->value) > 90) return OutOfRange(up);
        if (!ascension || std::abs(ascension->value) > 360 ||
            (ascension->isSexagesimal && std::abs(ascension->value) > 24))
            return OutOfRange(right);
        const bool hours = ascension->isSexagesimal || (isHours && ascension->value <= 24);
        if (ascension->value == 0 && declination->value == 0)
            return Complain(std::string(right) + " and " + std::string(up) + " are both 0");
        const double degrees = ascension->value * (hours ? kHourDegrees : 1);
        m_pointings.push_back({std::string(right) + " and " + std::string(up),
                               {WithinTurn(degrees), declination->value},
                               !ascension->isSexagesimal && ascension->value <= 24,
                               hours,
                               false});
    }

    // The middle of a picture whose place in the sky was solved, by the plane that touches it.
    void AddSolved() {
        const auto first = Number("CRVAL1");
        const auto second = Number("CRVAL2");
        const std::string type = ToUpper(Word("CTYPE1"));
        if (!first || !second) return;
        const bool swapped = type.starts_with("DEC") || type.starts_with("GLAT");
        const bool galactic = type.starts_with("GL");
        if (!type.starts_with("RA") && !type.starts_with("DEC") && !galactic) return;
        double right = swapped ? *second : *first;
        double up = swapped ? *first : *second;
        if (std::abs(up) > 90 || std::abs(right) > 360)
            return Complain("CRVAL1 and CRVAL2 are out of range");
        if (type.ends_with("TAN") || type.ends_with("TAN-SIP")) MoveToMiddle(swapped, right, up);
        const Target target = galactic ? FromGalactic(right, up) : Target{WithinTurn(right), up};
        m_pointings.push_back({"CRVAL1 and CRVAL2", target, false, false, galactic});
    }

    void MoveToMiddle(bool swapped, double& right, double& up) const {
        constexpr double kRadian = std::numbers::pi / 180;
        const double across = (Number("NAXIS1").value_or(0) + 1) / 2 - Number("CRPIX1").value_or(0);
        const double along = (Number("NAXIS2").value_or(0) + 1) / 2 - Number("CRPIX2").value_or(0);
        if (Word("CRPIX1").empty() || Word("CRPIX2").empty()) return;
        double x = 0;
        double y = 0;
        if (const auto cd = Number("CD1_1")) {
            x = *cd * across + Number("CD1_2").value_or(0) * along;
            y = Number("CD2_1").value_or(0) * across + Number("CD2_2").value_or(0) * along;
        } else {
            const double turn = Number("CROTA2").value_or(0) * kRadian;
            const double scaleX = Number("CDELT1").value_or(0);
            const double scaleY = Number("CDELT2").value_or(0);
            const bool hasMatrix = !Word("PC1_1").empty();
            x = hasMatrix ? scaleX * (Number("PC1_1").value_or(1) * across +
                                      Number("PC1_2").value_or(0) * along)
                          : scaleX * across * std::cos(turn) - scaleY * along * std::sin(turn);
            y = hasMatrix ? scaleY * (Number("PC2_1").value_or(0) * across +
                                      Number("PC2_2").value_or(1) * along)
                          : scaleX * across * std::sin(turn) + scaleY * along * std::cos(turn);
        }
        if (swapped) std::swap(x, y);
        x *= kRadian;
        y *= kRadian;
        const double below = std::cos(up * kRadian) - y * std::sin(up * kRadian);
        const double turned = std::atan2(x, below);
        up = std::atan2((std::sin(up * kRadian) + y * std::cos(up * kRadian)) * std::cos(turned),
                        below) /
             kRadian;
        right += turned / kRadian;
    }

    // A plain number that other words show to be one of hours.
    void TellHours() {
        for (Pointing& each : m_pointings) {
            if (!each.isPlain || each.isHours) continue;
            Target hours = each.target;
            hours.rightAscension = WithinTurn(hours.rightAscension * kHourDegrees);
            for (const Pointing& other : m_pointings) {
                if (other.isPlain || Apart(each.target, other.target) < kSameTarget ||
                    Apart(hours, other.target) > kSameTarget)
                    continue;
                each.target = hours;
                break;
            }
        }
    }

    static double Apart(const Target& one, const Target& other) {
        return Separation(one.rightAscension, one.declination, other.rightAscension,
                          other.declination);
    }

    void ReadTarget() {
        AddPointing("RA", "DEC", false);
        AddPointing("OBJCTRA", "OBJCTDEC", true);
        AddSolved();
        TellHours();
        if (m_pointings.empty()) return;
        const Pointing& first = m_pointings.front();
        for (const Pointing& other : m_pointings) {
            const double apart = Apart(first.target, other.target);
            if (apart > kSameTarget)
                Complain(first.name + " and " + other.name + " are " + FormatFixed(apart, 0) +
                         " degrees apart");
        }
        if (first.isIcrs)
            m_where.target = first.target;
        else
            ToIcrs(first.target);
    }

    void ReadAltitude() {
        for (const char* name : {"OBJCTALT", "TELALT", "CENTALT"})
            if (const auto angle = ParseAngle(Word(name));
                angle && !m_where.altitude && std::abs(angle->value) <= 90)
                m_where.altitude = angle->value;
    }

    // A year, or the day of the exposure in words. None where it is none, which is told.
    std::optional<double> Equinox(std::string_view name) {
        constexpr double kFirst = 1800;
        constexpr double kLast = 2200;
        constexpr double kYear = 365.25 * 86400;
        std::string text = ToUpper(Word(name));
        for (const char* ofDate : {"JNOW", "NOW", "OF DATE", "DATE", "APPARENT", "CURRENT"}) {
            if (text != ofDate) continue;
            if (m_where.time.middle) return 1970 + *m_where.time.middle / kYear;
            Complain(std::string(name) + " " + text + " without a time");
            return std::nullopt;
        }
        if (text.starts_with("B") || text.starts_with("J")) text.erase(0, 1);
        const auto year = ParseHeaderNumber(text);
        if (year && *year >= kFirst && *year <= kLast) return year;
        Complain(std::string(name) + " " + std::string(Word(name)) + " is no equinox");
        return std::nullopt;
    }

    void ToIcrs(const Target& written) {
        constexpr double kOldBefore = 1984;
        const std::string system =
            ToUpper(Word("RADESYS").empty() ? Word("RADECSYS") : Word("RADESYS"));
        const std::string_view name = Word("EQUINOX").empty() ? "EPOCH" : "EQUINOX";
        const bool isNamed = !Word(name).empty();
        if (system.starts_with("ICRS") || (system.empty() && !isNamed)) {
            m_where.target = written;
            return;
        }
        if (!system.empty() && !system.starts_with("FK4") && !system.starts_with("FK5"))
            return Complain("RADESYS " + system + " is not known");
        const bool isBesselian = ToUpper(Word(name)).starts_with("B");
        const auto year = isNamed ? Equinox(name) : std::nullopt;
        if (isNamed && !year) return;
        if (system.starts_with("FK4") || (system.empty() && (isBesselian || *year < kOldBefore))) {
            if (year && *year != 1950)
                return Complain("the equinox B" + FormatFixed(*year, 1) + " is not known");
            m_where.target = FromOldEquinox1950(written, m_where.time.middle.value_or(0));
        } else {
            const double at = year.value_or(2000);
            m_where.target = at == 2000 ? written : FromEquinoxOf(at, written);
        }
    }

    void ReadSidereal() {
        for (const char* name : {"LST", "LST-OBS", "ST"}) {
            const auto angle = ParseAngle(Word(name));
            if (!angle || angle->value < 0 || angle->value > 24) continue;
            m_where.sidereal = WithinTurn(angle->value * kHourDegrees);
            return;
        }
    }

    const HeaderWords& m_words;
    FrameWhere m_where;
    std::vector<Pointing> m_pointings; // the first counts
    bool m_isSure = false;
};

} // namespace

FrameWhere WhereOf(const HeaderWords& words, bool hasTarget) {
    return WhereReader(words, hasTarget).Read();
}

} // namespace tarn
