#include "sky/place/ExposureTime.h"

#include "common/dates.h"
#include "common/numbers.h"
#include "common/text.h"
#include "sky/place/Angles.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <initializer_list>

namespace tarn {

namespace {

constexpr double kDay = 86400;
constexpr double kHour = 3600;
constexpr double kUnixMjd = 40587;                // of 1970
constexpr double kMjdOfJd = 2400000.5;            // where days begin to be counted
constexpr double kWhole = 1e-3;                   // seconds off midnight, by rounding
constexpr double kSlack = 60;                     // seconds by which words of one header may differ
constexpr double kTerrestrial = 32.184;           // ahead of atomic time
constexpr double kSatellites = 19;                // behind it
constexpr std::string_view kUnset = "2000-01-01"; // where clocks without a battery begin

struct Moment {
    double seconds = 0;                // since 1970, as written
    std::optional<double> zoneSeconds; // east of UTC
    bool hasTime = false;
};

std::optional<double> DaySeconds(std::string_view text) {
    const std::vector<std::string> parts = Split(text, '-');
    if (parts.size() != 3 || parts[0].size() != 4) return std::nullopt;
    std::array<int, 3> numbers{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto number = ParseInt32(parts[i]);
        if (!number || parts[i].find_first_not_of("0123456789") != std::string::npos)
            return std::nullopt;
        numbers[i] = *number;
    }
    const std::chrono::year_month_day day{std::chrono::year(numbers[0]),
                                          std::chrono::month(unsigned(numbers[1])),
                                          std::chrono::day(unsigned(numbers[2]))};
    if (!day.ok()) return std::nullopt;
    return double(std::chrono::sys_days(day).time_since_epoch().count()) * kDay;
}

// "21:14:33.5", "21 14 33", or hours as a number.
std::optional<double> ClockSeconds(std::string_view text) {
    for (const std::string_view utc : {"UTC", "UT", "Z", "z"})
        if (text.ends_with(utc)) text = Trim(text.substr(0, text.size() - utc.size()));
    const auto angle = ParseAngle(text);
    if (!angle || angle->value < 0 || angle->value > 24 || angle->hasDirection) return std::nullopt;
    return angle->value * kHour;
}

// "Z", "-0700", "+02:00", "+2".
std::optional<double> ZoneSeconds(std::string_view text) {
    if (text == "Z" || text == "z") return 0;
    if (text.size() < 2 || (text[0] != '+' && text[0] != '-')) return std::nullopt;
    std::string digits(text.substr(1));
    std::erase(digits, ':');
    if (digits.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
    if (digits.size() <= 2) digits += "00";
    if (digits.size() > 4) return std::nullopt;
    const int number = ParseInt32(digits).value_or(0);
    const double seconds = number / 100 * kHour + number % 100 * 60.0;
    constexpr double kMost = 15 * kHour;
    if (seconds > kMost) return std::nullopt;
    return text[0] == '-' ? -seconds : seconds;
}

// "05/11/98" of the years before 2000.
std::string WithFullYear(std::string_view date) {
    if (date.size() != 8 || date[2] != '/' || date[5] != '/') return std::string(date);
    std::string text = "19";
    text.append(date.substr(6)).append("-").append(date.substr(3, 2)).append("-");
    return text.append(date.substr(0, 2));
}

std::optional<Moment> ParseMoment(std::string_view written) {
    const std::string text = WithFullYear(Trim(written));
    const std::size_t between = text.find_first_of("T ");
    const auto day = DaySeconds(std::string_view(text).substr(0, between));
    if (!day) return std::nullopt;
    Moment moment{*day, {}, false};
    if (between == std::string::npos) return moment;
    std::string_view clock = std::string_view(text).substr(between + 1);
    const std::size_t zone = clock.find_first_of("Zz+-");
    if (zone != std::string_view::npos) {
        moment.zoneSeconds = ZoneSeconds(clock.substr(zone));
        if (!moment.zoneSeconds) return std::nullopt;
        clock = Trim(clock.substr(0, zone));
    }
    // A leap second is one that no calendar has.
    std::string time(clock);
    const bool leaps = time.size() >= 8 && time.compare(6, 2, "60") == 0;
    if (leaps) time.replace(6, 2, "59");
    const auto seconds = time.find(':') == std::string::npos ? std::nullopt : ClockSeconds(time);
    if (!seconds) return std::nullopt;
    moment.seconds += *seconds + (leaps ? 1 : 0);
    moment.hasTime = true;
    return moment;
}

// "7.0 h", "12 min".
std::string SpanText(double seconds) {
    seconds = std::abs(seconds);
    constexpr double kMostMinutes = 5400;
    if (seconds >= kDay * 2) return FormatFixed(seconds / kDay, 0) + " days";
    if (seconds >= kMostMinutes) return FormatFixed(seconds / kHour, 1) + " h";
    return FormatFixed(seconds / 60, 0) + " min";
}

std::string DayText(double seconds) {
    return UtcText(seconds).substr(0, kUnset.size());
}

// Why a clock did not show the time, by its start as written and its middle; empty where it may be.
std::string FaultOfClock(double start, double middle) {
    constexpr double kFirst = -2208988800; // 1900
    constexpr double kLast = 4133980800;   // 2101
    if (DayText(start) == kUnset)
        return "no time: on " + DayText(start) + " clocks begin that were not set";
    for (const double time : {start, middle})
        if (time < kFirst || time >= kLast) return "the date " + DayText(time) + " is out of range";
    return {};
}

bool IsExposure(double seconds) {
    constexpr double kMost = 30 * kDay;
    return seconds >= 0 && seconds <= kMost;
}

class TimeReader {
public:
    explicit TimeReader(const HeaderWords& words) : m_words(words) {}

    ExposureTime Read() {
        ReadScale();
        ReadExposure();
        ReadStart();
        ReadMiddle();
        if (m_time.start && !m_time.middle)
            m_time.middle = *m_time.start + m_time.exposure.value_or(0) / 2;
        ReadLocal();
        RefuseUnset();
        if (!m_time.middle && !m_isDated) Complain("no time");
        return m_time;
    }

private:
    void Complain(const std::string& fault) { m_time.faults.push_back(fault); }

    std::string_view Word(std::string_view name) const { return WordIn(m_words, name); }

    // The first of these that is there.
    std::string_view NameOf(std::initializer_list<std::string_view> names) const {
        for (const std::string_view name : names)
            if (!Word(name).empty()) return name;
        return {};
    }

    void ReadScale() {
        const std::string scale = ToUpper(Word("TIMESYS"));
        if (scale.empty() || scale.starts_with("UT") || scale == "GMT") return;
        if (scale == "TT" || scale == "TDT" || scale == "ET" || scale == "TDB" || scale == "TCG" ||
            scale == "TCB")
            m_ahead = kTerrestrial;
        else if (scale == "TAI" || scale == "IAT")
            m_ahead = 0;
        else if (scale == "GPS")
            m_ahead = -kSatellites;
        else
            Complain("TIMESYS " + scale + " is not known");
    }

    double ToUtc(double seconds) const {
        return m_ahead ? seconds - *m_ahead - LeapSecondsAt(seconds) : seconds;
    }
    double ToUtc(const Moment& moment) const {
        return moment.zoneSeconds ? moment.seconds - *moment.zoneSeconds : ToUtc(moment.seconds);
    }

    void ReadExposure() {
        constexpr double kRounded = 1; // second
        constexpr double kPart = 0.01;
        for (const std::string_view name : {"EXPTIME", "EXPOSURE"}) {
            if (Word(name).empty()) continue;
            const auto seconds = ParseHeaderNumber(Word(name));
            if (!seconds || !IsExposure(*seconds))
                Complain(std::string(name) + " " + std::string(Word(name)) + " is out of range");
            else if (!m_time.exposure)
                m_time.exposure = *seconds;
            else if (std::abs(*seconds - *m_time.exposure) >
                     std::max(kRounded, kPart * *m_time.exposure))
                Complain("EXPTIME and EXPOSURE differ");
        }
    }

    // Days of 1858 and after; complained of where it is none.
    std::optional<double> Counted(std::string_view name) {
        const auto written = ParseHeaderNumber(Word(name));
        constexpr double kMost = 1e6; // some thousand years
        const double days = written.value_or(INFINITY) - (name.starts_with("JD") ? kMjdOfJd : 0);
        if (std::abs(days) <= kMost) return days;
        Complain(std::string(name) + " " + std::string(Word(name)) + " is no date");
        return std::nullopt;
    }
    double UtcOfDays(double days) const { return ToUtc((days - kUnixMjd) * kDay); }

    // The date and, where that has no time of day, what stands for it.
    std::optional<Moment> Dated(std::string_view name) {
        auto moment = ParseMoment(Word(name));
        if (!moment) {
            Complain(std::string(name) + " " + std::string(Word(name)) + " is no date");
            return moment;
        }
        std::string_view clock;
        std::optional<double> seconds;
        for (const std::string_view each : {"TIME-OBS", "TIME-BEG", "UT", "UTC", "UTSTART"}) {
            clock = each;
            seconds = ClockSeconds(Word(each));
            if (seconds) break;
        }
        if (!seconds) return moment;
        if (!moment->hasTime) {
            moment->seconds += *seconds;
            moment->hasTime = true;
        } else if (!moment->zoneSeconds || *moment->zoneSeconds == 0) {
            const double off = std::remainder(moment->seconds - *seconds, kDay);
            Compare(off, name, clock);
        }
        return moment;
    }

    void Compare(double off, std::string_view one, std::string_view other) {
        if (std::abs(off) <= kSlack + m_time.exposure.value_or(0)) return;
        Complain(std::string(one) + " and " + std::string(other) + " differ by " + SpanText(off));
    }

    void ReadStart() {
        const std::string_view name = NameOf({"DATE-OBS", "DATE-BEG"});
        m_isDated = !name.empty();
        auto moment = name.empty() ? std::nullopt : Dated(name);
        if (moment && moment->zoneSeconds && *moment->zoneSeconds != 0)
            m_time.zoneHours = *moment->zoneSeconds / kHour;
        if (moment) m_date = *moment;
        if (moment && moment->hasTime) m_time.start = ToUtc(*moment);
        std::string_view timeless = moment ? name : std::string_view();
        for (const std::string_view count : {"MJD-OBS", "MJD-BEG", "JD", "JD-OBS", "JD_UTC"}) {
            if (Word(count).empty()) continue;
            m_isDated = true;
            const auto days = Counted(count);
            if (!days) continue;
            // A whole count tells no more than the day, whether it begins at midnight or at noon.
            const bool isJulian = count.starts_with("JD");
            if (std::abs(std::remainder(*days, isJulian ? 0.5 : 1.0)) * kDay <= kWhole) {
                if (timeless.empty()) timeless = count;
                continue;
            }
            if (m_time.start)
                Compare(*m_time.start - UtcOfDays(*days), name.empty() ? "MJD-OBS" : name, count);
            else
                m_time.start = UtcOfDays(*days);
        }
        if (!timeless.empty() && !m_time.start &&
            NameOf({"DATE-AVG", "DATE-MID", "MJD-AVG", "MJD-MID"}).empty())
            Complain(std::string(timeless) + " has no time of day");
    }

    void ReadMiddle() {
        std::string_view name = NameOf({"DATE-AVG", "DATE-MID"});
        if (!name.empty()) {
            const auto moment = ParseMoment(Word(name));
            if (moment && moment->hasTime)
                m_time.middle = ToUtc(*moment);
            else
                Complain(std::string(name) + " " + std::string(Word(name)) + " is no date");
        }
        if (!m_time.middle) {
            name = NameOf({"MJD-AVG", "MJD-MID"});
            const auto days = name.empty() ? std::nullopt : Counted(name);
            if (days) m_time.middle = UtcOfDays(*days);
        }
        m_isDated = m_isDated || !name.empty();
        if (!m_time.middle) return;
        const double half = m_time.exposure.value_or(0) / 2;
        if (!m_time.start) {
            m_time.start = *m_time.middle - half;
            return;
        }
        const double off = *m_time.middle - *m_time.start - half;
        const bool isOfMany = !Word("NCOMBINE").empty(); // a sum: one exposure is not its length
        if (std::abs(off) > half + kSlack && !isOfMany)
            Complain(std::string(name) + " and the start of the exposure differ by " +
                     SpanText(*m_time.middle - *m_time.start));
    }

    // The clock of the place tells its zone.
    void ReadLocal() {
        const auto local = ParseMoment(Word("DATE-LOC"));
        if (!local || !local->hasTime || !m_time.start) return;
        const double zone = local->seconds - *m_time.start;
        constexpr double kMost = 15 * kHour;
        constexpr double kQuarter = 900;
        if (std::abs(zone) > kMost + kSlack)
            Complain("DATE-OBS and DATE-LOC differ by " + SpanText(zone));
        else if (std::abs(zone) < 2)
            m_time.localIsUtc = true;
        else if (!m_time.zoneHours && std::abs(std::remainder(zone, kQuarter)) < kSlack)
            m_time.zoneHours = std::round(zone / kQuarter) * kQuarter / kHour;
    }

    // Any word of the start may have been written by such a clock.
    void RefuseUnset() {
        if (!m_time.start) return;
        const double from = m_date.hasTime ? m_date.seconds : *m_time.start; // as written
        const std::string fault = FaultOfClock(from, m_time.middle.value_or(from));
        if (fault.empty()) return;
        m_time.start.reset();
        m_time.middle.reset();
        Complain(fault);
    }

    const HeaderWords& m_words;
    ExposureTime m_time;
    Moment m_date;
    bool m_isDated = false;        // in some way, which is complained of where it is none
    std::optional<double> m_ahead; // of atomic time, seconds; none: it is UTC
};

} // namespace

ExposureTime ExposureTimeOf(const HeaderWords& words) {
    return TimeReader(words).Read();
}

ExposureTime ExposureTimeOf(const CameraTime& camera, std::optional<int> zoneMinutes) {
    ExposureTime time;
    if (camera.exposure && IsExposure(*camera.exposure))
        time.exposure = camera.exposure;
    else if (camera.exposure)
        time.faults.push_back("the exposure of " + FormatFixed(*camera.exposure, 0) +
                              " s is out of range");
    constexpr std::size_t kDayLength = 10; // "2024:05:01"
    std::string date = camera.date;
    if (date.size() > kDayLength) date[4] = date[7] = '-';
    const auto moment = ParseMoment(date);
    if (!moment || !moment->hasTime) {
        time.faults.push_back(date.find_first_of("123456789") == std::string::npos
                                  ? "no time"
                                  : "the date " + camera.date + " is no date");
        return time;
    }
    if (const std::string fault = FaultOfClock(moment->seconds, moment->seconds); !fault.empty()) {
        time.faults.push_back(fault);
        return time;
    }
    const auto zone = ZoneSeconds(Trim(camera.zone));
    if (zone) {
        time.start = moment->seconds - *zone;
        time.zoneHours = *zone / kHour;
    } else if (zoneMinutes) {
        time.start = moment->seconds - *zoneMinutes * 60.0;
    } else {
        const auto clock = std::int64_t(moment->seconds);
        const std::chrono::sys_seconds at{std::chrono::seconds(clock)};
        const auto day = std::chrono::floor<std::chrono::days>(at);
        const std::chrono::year_month_day date(day);
        const std::chrono::hh_mm_ss ofDay(at - day);
        const auto utc = ToFileTime({int(date.year()), int(unsigned(date.month())),
                                     int(unsigned(date.day())), int(ofDay.hours().count()),
                                     int(ofDay.minutes().count()), int(ofDay.seconds().count())});
        if (utc) time.start = double(*utc);
    }
    if (!time.start) return time;
    *time.start += ParseNumber("0." + camera.fraction).value_or(0);
    time.middle = *time.start + time.exposure.value_or(0) / 2;
    constexpr double kStale = 1800; // of the last fix
    if (camera.utc && std::abs(*camera.utc - *time.start) > kStale)
        time.faults.push_back("the camera's clock and the satellites' differ by " +
                              SpanText(*camera.utc - *time.start));
    return time;
}

std::string UtcText(double seconds) {
    const auto all = std::int64_t(std::llround(seconds * 1000));
    const std::chrono::sys_time<std::chrono::milliseconds> at{std::chrono::milliseconds(all)};
    const auto day = std::chrono::floor<std::chrono::days>(at);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(at - day);
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d", int(date.year()),
                  unsigned(date.month()), unsigned(date.day()), int(time.hours().count()),
                  int(time.minutes().count()), int(time.seconds().count()));
    std::string whole = text.data();
    if (const auto rest = time.subseconds().count(); rest != 0) {
        whole += "." + FormatPadded(rest, 3);
        whole.erase(whole.find_last_not_of('0') + 1);
    }
    return whole + "Z";
}

std::optional<double> ParseUtc(std::string_view text) {
    const auto moment = ParseMoment(text);
    if (!moment || !moment->hasTime) return std::nullopt;
    return moment->seconds - moment->zoneSeconds.value_or(0);
}

} // namespace tarn
