// Headers as programs spell them.
#include "sky/place/Angles.h"
#include "sky/place/SiteList.h"
#include "sky/place/SkyLines.h"
#include "sky/place/SkyRows.h"

#include <gtest/gtest.h>

using namespace tarn;

namespace {

std::string MiddleOf(const HeaderWords& words) {
    const auto time = ExposureTimeOf(words);
    return time.middle ? UtcText(*time.middle) : std::string();
}

std::vector<std::string> FaultsOfTime(const HeaderWords& words) {
    return ExposureTimeOf(words).faults;
}

std::string FaultOf(const HeaderWords& words, const std::optional<Site>& site = {}) {
    const std::vector<FrameWhere> frames{WhereOf(words)};
    return SkyOver(frames, site).rows.front().fault;
}

// A frame of the Crab nebula on a winter night, without a site.
HeaderWords Night(const HeaderWords& more) {
    HeaderWords words{{"DATE-OBS", "2024-11-05T23:00:00"}, {"RA", "83.633"}, {"DEC", "22.0145"}};
    for (const auto& [name, value] : more) words[name] = value;
    return words;
}

} // namespace

TEST(Angle, Spellings) {
    struct Written {
        const char* text;
        double value;
        bool sexagesimal;
    };
    constexpr Written kWritten[] = {
        {"83.633", 83.633, false},        {"-1.5E1", -15, false},
        {"05 34 31.9", 5.575528, true},   {"05:34:31.9", 5.575528, true},
        {"5h34m31.9s", 5.575528, true},   {"-00 30 00", -0.5, true},
        {"+22d00'52\"", 22.014444, true}, {"22° 00 52", 22.014444, true},
        {"11 31.5 W", -11.525, true},     {"S 33.9", -33.9, false},
        {"48 07", 48.116667, true},       {"8.36333D01", 83.6333, false},
        {"4.81D+01", 48.1, false},        {"33d52m S", -33.866667, true},
        {"33d52m12s S", -33.87, true},    {"5h34m32 s", 5.575556, true}};
    for (const Written& each : kWritten) {
        SCOPED_TRACE(each.text);
        const auto angle = ParseAngle(each.text);
        ASSERT_TRUE(angle.has_value());
        EXPECT_NEAR(angle->value, each.value, 1e-6);
        EXPECT_EQ(angle->isSexagesimal, each.sexagesimal);
    }
    for (const char* text : {"", "north", "12 60 00", "1 2 3 4", "--1", "5 -3", "nan"})
        EXPECT_FALSE(ParseAngle(text).has_value()) << text;
}

TEST(ExposureTime, Spellings) {
    const std::string noon = "2024-11-05T12:01:00Z";
    const std::vector<HeaderWords> spellings{
        {{"DATE-OBS", "2024-11-05T12:00:00"}, {"EXPTIME", "120"}},
        {{"DATE-OBS", "2024-11-05T12:00:00.000Z"}, {"EXPOSURE", "1.2E2"}},
        {{"DATE-OBS", "2024-11-05 05:00:00-0700"}, {"EXPTIME", "120."}},
        {{"DATE-OBS", "2024-11-05T14:00:00+02:00"}, {"EXPTIME", "120"}},
        {{"DATE-OBS", "2024-11-05"}, {"TIME-OBS", "12:00:00.0"}, {"EXPTIME", "120"}},
        {{"DATE-OBS", "2024-11-05"}, {"UT", "12 00 00"}, {"EXPTIME", "120"}},
        {{"MJD-OBS", "60619.5"}, {"EXPTIME", "120"}},
        {{"DATE-OBS", "2024-11-05T12:00:00"}, {"EXPTIME", "1.2D+02"}},
        {{"DATE-OBS", "2024-11-05"}, {"TIME-OBS", "12:00:00Z"}, {"EXPTIME", "120"}},
        {{"DATE-OBS", "2024-11-05"}, {"TIME-OBS", "n/a"}, {"UT", "12:00:00"}, {"EXPTIME", "120"}},
        {{"JD", "2.460620000694444D6"}},
        {{"DATE-OBS", "2024-11-05T12:00:10"},
         {"DATE-AVG", "2024-11-05T12:01:00"},
         {"EXPTIME", "120"}},
        {{"DATE-AVG", "2024-11-05T12:01:00"}},
        {{"MJD-AVG", "60619.500694444"}},
        {{"DATE-OBS", "2024-11-05T12:01:09.184"}, {"TIMESYS", "TT"}, {"EXPTIME", "120"}},
        {{"DATE-OBS", "2024-11-05T12:00:18"}, {"TIMESYS", "GPS"}, {"EXPTIME", "120"}}};
    for (const HeaderWords& words : spellings) {
        SCOPED_TRACE(words.begin()->first + " " + words.begin()->second);
        EXPECT_EQ(MiddleOf(words), noon);
        EXPECT_EQ(FaultsOfTime(words), std::vector<std::string>());
    }
    EXPECT_EQ(MiddleOf({{"DATE-OBS", "24/12/98"}, {"TIME-OBS", "18:30:00"}}),
              "1998-12-24T18:30:00Z");
    EXPECT_EQ(MiddleOf({{"DATE-OBS", "2016-12-31T23:59:60.5"}}), "2017-01-01T00:00:00.5Z");
    EXPECT_EQ(MiddleOf({{"DATE-OBS", "2024-11-05T12:00:00"}, {"EXPTIME", "0.03"}}),
              "2024-11-05T12:00:00.015Z");
}

TEST(ExposureTime, SaysWhatIsMissingOrContradicts) {
    using Faults = std::vector<std::string>;
    EXPECT_EQ(FaultsOfTime({{"EXPTIME", "10"}}), Faults{"no time"});
    EXPECT_EQ(FaultsOfTime({{"DATE-OBS", "2024-11-05"}}), Faults{"DATE-OBS has no time of day"});
    EXPECT_EQ(FaultsOfTime({{"JD", "2460620"}}), Faults{"JD has no time of day"}); // not noon
    EXPECT_EQ(FaultsOfTime({{"MJD-AVG", "x"}}), Faults{"MJD-AVG x is no date"});
    EXPECT_EQ(FaultsOfTime({{"DATE-OBS", "2024-13-05T12:00:00"}}),
              Faults{"DATE-OBS 2024-13-05T12:00:00 is no date"});
    EXPECT_EQ(FaultsOfTime({{"DATE-OBS", "2024-11-05T12:00:00"}, {"EXPTIME", "-3"}}),
              Faults{"EXPTIME -3 is out of range"});
    EXPECT_EQ(FaultsOfTime({{"DATE-OBS", "2224-11-05T12:00:00"}}),
              Faults{"the date 2224-11-05 is out of range"});
    EXPECT_EQ(FaultsOfTime({{"DATE-OBS", "2024-11-05T12:00:00"}, {"TIMESYS", "LOCAL"}}),
              Faults{"TIMESYS LOCAL is not known"});
    const Faults unset{"no time: on 2000-01-01 clocks begin that were not set"};
    EXPECT_EQ(FaultsOfTime({{"DATE-OBS", "2000-01-01T03:12:00"}}), unset);
    EXPECT_EQ(MiddleOf({{"DATE-OBS", "2000-01-01T03:12:00"}}), "");

    const HeaderWords start{{"DATE-OBS", "2024-11-05T12:00:00"}, {"EXPTIME", "60"}};
    const auto with = [&](const std::string& name, const std::string& value) {
        HeaderWords words = start;
        words[name] = value;
        return FaultsOfTime(words);
    };
    EXPECT_EQ(with("MJD-OBS", "60619.2083333"), Faults{"DATE-OBS and MJD-OBS differ by 7.0 h"});
    EXPECT_EQ(with("UT", "14:00:00"), Faults{"DATE-OBS and UT differ by 2.0 h"});
    EXPECT_EQ(with("DATE-AVG", "2024-11-05T12:20:00"),
              Faults{"DATE-AVG and the start of the exposure differ by 20 min"});
    HeaderWords sum = start; // of many frames
    sum["NCOMBINE"] = "40";
    sum["DATE-AVG"] = "2024-11-05T12:20:00";
    EXPECT_EQ(FaultsOfTime(sum), Faults());
    EXPECT_EQ(with("DATE-LOC", "2024-11-08T12:20:00"),
              Faults{"DATE-OBS and DATE-LOC differ by 3 days"});
    EXPECT_EQ(with("JD", "2460620.0004"), Faults()); // its end
    EXPECT_EQ(with("EXPOSURE", "6"), Faults{"EXPTIME and EXPOSURE differ"});
    EXPECT_EQ(with("EXPOSURE", "60.4"), Faults());
    EXPECT_EQ(with("DATE-LOC", "2024-11-05T05:00:00"), Faults());
}

// A camera has a clock and mostly no zone.
TEST(ExposureTime, OfCameras) {
    const auto utc = [](const CameraTime& camera, std::optional<int> zone) {
        const ExposureTime time = ExposureTimeOf(camera, zone);
        return time.middle ? UtcText(*time.middle) : time.faults.front();
    };
    const std::string date = "2024:05:01 22:10:03";
    EXPECT_EQ(utc({date, "25", "+02:00", 30, {}}, 60), "2024-05-01T20:10:18.25Z");
    EXPECT_EQ(utc({date, "", "", {}, {}}, 60), "2024-05-01T21:10:03Z");
    EXPECT_EQ(utc({"2000:01:01 00:00:07", "", "", {}, {}}, 0),
              "no time: on 2000-01-01 clocks begin that were not set");
    EXPECT_EQ(utc({"0000:00:00 00:00:00", "", "", {}, {}}, 0), "no time");
    EXPECT_EQ(utc({"2024:05:41 22:10:03", "", "", {}, {}}, 0),
              "the date 2024:05:41 22:10:03 is no date");
    EXPECT_EQ(utc({"0001:05:01 22:10:03", "", "", {}, {}}, 0),
              "the date 0001-05-01 is out of range");
    EXPECT_EQ(utc({"9999:05:01 22:10:03", "", "", {}, {}}, 0),
              "the date 9999-05-01 is out of range");
    const ExposureTime endless = ExposureTimeOf({date, "", "", 4294967295.0, {}}, 60);
    EXPECT_EQ(endless.faults,
              std::vector<std::string>{"the exposure of 4294967295 s is out of range"});
    EXPECT_FALSE(endless.exposure.has_value());
    EXPECT_EQ(UtcText(endless.middle.value_or(0)), "2024-05-01T21:10:03Z");
    const auto fix = ParseUtc("2024-05-01T20:09:50");
    EXPECT_EQ(ExposureTimeOf({date, "", "+02:00", {}, fix}, {}).faults, std::vector<std::string>());
    EXPECT_EQ(ExposureTimeOf({date, "", "+01:00", {}, fix}, {}).faults,
              std::vector<std::string>{"the camera's clock and the satellites' differ by 60 min"});
}

TEST(FrameWhere, TargetSpellings) {
    const std::vector<HeaderWords> spellings{
        {{"RA", "83.6287"}, {"DEC", "22.0145"}},
        {{"RA", "05 34 30.9"}, {"DEC", "+22 00 52"}},
        {{"OBJCTRA", "05:34:30.9"}, {"OBJCTDEC", "22:00:52"}},
        {{"OBJCTRA", "5.575247"}, {"OBJCTDEC", "22.0145"}}, // hours by custom
        {{"RA", "5.575247"},
         {"DEC", "22.0145"},
         {"OBJCTRA", "05 34 30.9"},
         {"OBJCTDEC", "22 00 52"}},
        {{"CTYPE1", "RA---TAN"}, {"CRVAL1", "83.6287"}, {"CRVAL2", "22.0145"}},
        {{"CTYPE1", "DEC--TAN"}, {"CRVAL1", "22.0145"}, {"CRVAL2", "83.6287"}},
        {{"CTYPE1", "RA---TAN"},
         {"CRVAL1", "83.6287"},
         {"CRVAL2", "21.5145"},
         {"CRPIX1", "50.5"},
         {"CRPIX2", "0.5"},
         {"CD1_1", "-0.01"},
         {"CD2_2", "0.01"},
         {"NAXIS1", "100"},
         {"NAXIS2", "100"}},
        {{"RA", "83.6287"}, {"DEC", "22.0145"}, {"RADESYS", "FK5"}, {"EQUINOX", "2000.0"}},
        {{"RA", "82.8762"}, {"DEC", "21.9831"}, {"EQUINOX", "1950"}},
        {{"RA", "84.0026"}, {"DEC", "22.0298"}, {"RADESYS", "FK5"}, {"EQUINOX", "J2024.85"}},
        {{"RA", "84.0026"},
         {"DEC", "22.0298"},
         {"EQUINOX", "JNOW"},
         {"DATE-OBS", "2024-11-06T06:00:00"}},
        {{"RA", "82.8762"},
         {"DEC", "21.9831"},
         {"EQUINOX", "1950"},
         {"CTYPE1", "GLON-TAN"},
         {"CRVAL1", "184.56"},
         {"CRVAL2", "-5.79"}}};
    for (const HeaderWords& words : spellings) {
        SCOPED_TRACE(words.begin()->first + " " + words.begin()->second);
        const FrameWhere where = WhereOf(words);
        ASSERT_TRUE(where.target.has_value());
        EXPECT_NEAR(where.target->rightAscension, 83.6287, 0.003);
        EXPECT_NEAR(where.target->declination, 22.0145, 0.003);
        EXPECT_EQ(where.faults, std::vector<std::string>());
    }
    const auto fault = [](const HeaderWords& words) {
        const FrameWhere where = WhereOf(words);
        return where.faults.empty() ? std::string() : where.faults.front();
    };
    EXPECT_EQ(fault({{"RA", "83.6"}, {"DEC", "95"}}), "DEC 95 is out of range");
    EXPECT_EQ(fault({{"RA", "26 00 00"}, {"DEC", "5"}}), "RA 26 00 00 is out of range");
    EXPECT_EQ(fault({{"RA", "0"}, {"DEC", "0"}}), "RA and DEC are both 0");
    EXPECT_EQ(
        fault({{"RA", "83.6"}, {"DEC", "22"}, {"OBJCTRA", "10 00 00"}, {"OBJCTDEC", "+22 00 00"}}),
        "RA and DEC and OBJCTRA and OBJCTDEC are 61 degrees apart");
    EXPECT_EQ(fault({{"RA", "83.6"}, {"DEC", "22"}, {"RADESYS", "MOON"}}),
              "RADESYS MOON is not known");
    EXPECT_EQ(fault({{"RA", "83.6"}, {"DEC", "22"}, {"EQUINOX", "0.0"}}),
              "EQUINOX 0.0 is no equinox");
    EXPECT_EQ(fault({{"RA", "83.6"}, {"DEC", "22"}, {"EQUINOX", "JNOW"}}),
              "EQUINOX JNOW without a time");
}

TEST(FrameWhere, SiteSpellings) {
    const std::vector<HeaderWords> spellings{
        {{"SITELAT", "48.125"}, {"SITELONG", "11.525"}, {"SITEELEV", "520"}},
        {{"SITELAT", "+48 07 30.00"}, {"SITELONG", "+11 31 30.0"}, {"SITEELEV", "520.0"}},
        {{"LAT-OBS", "48:07:30"}, {"LONG-OBS", "11:31:30"}, {"ALT-OBS", "5.2E2"}},
        {{"OBSLAT", "48.125 N"}, {"OBSLONG", "11 31 30 E"}, {"OBSALT", "520"}},
        {{"GEOLAT", "48.125"}, {"GEOLON", "-348.475"}, {"GEOELEV", "520"}},
        {{"OBSGEO-B", "48.125"}, {"OBSGEO-L", "11.525"}, {"OBSGEO-H", "520"}},
        {{"OBSGEO-B", "48.125"},
         {"OBSGEO-L", "-348.475"},
         {"SITELONG", "11.525"},
         {"SITEELEV", "5.2D+02"},
         {"LONG-OBS", "-11.525"}},
        {{"OBSGEO-X", "4179718.7"}, {"OBSGEO-Y", "852272.8"}, {"OBSGEO-Z", "4726552.5"}}};
    for (const HeaderWords& words : spellings) {
        SCOPED_TRACE(words.begin()->first);
        const FrameWhere where = WhereOf(words);
        ASSERT_TRUE(where.site.has_value());
        EXPECT_NEAR(where.site->latitude, 48.125, 0.0001);
        EXPECT_NEAR(where.site->longitude, 11.525, 0.0001);
        EXPECT_NEAR(where.site->height, 520, 5);
        EXPECT_EQ(where.faults, std::vector<std::string>());
    }
    EXPECT_EQ(WhereOf({{"SITELAT", "0"}, {"SITELONG", "0"}}).faults,
              std::vector<std::string>{"the site 0, 0 is none"});
    EXPECT_EQ(WhereOf({{"SITELAT", "148.1"}, {"SITELONG", "11"}}).faults,
              std::vector<std::string>{"SITELAT 148.1 is out of range"});
    EXPECT_EQ(WhereOf({{"SITELAT", "48.1"}, {"SITELONG", "11"}, {"OBSLAT", "-30"}}).faults,
              std::vector<std::string>{"SITELAT and OBSLAT differ"});
    EXPECT_EQ(WhereOf({{"SITELAT", "48.1"}, {"SITELONG", "11"}, {"LAT-OBS", "-48.1"}}).faults,
              std::vector<std::string>{"SITELAT and LAT-OBS differ"});
    EXPECT_EQ(WhereOf({{"OBSGEO-B", "40"}, {"OBSGEO-L", "250"}, {"SITELONG", "-110"}}).faults,
              std::vector<std::string>());
}

TEST(SkyRows, SayWhatIsMissingOrContradicts) {
    const Site site{48.1, 11.6, 520};
    const HeaderWords here{{"SITELAT", "48.1"}, {"SITELONG", "11.6"}};
    const auto with = [&](const HeaderWords& more) {
        HeaderWords words = Night(here);
        for (const auto& [name, value] : more) words[name] = value;
        return FaultOf(words);
    };
    EXPECT_EQ(FaultOf(Night({}), site), "");
    EXPECT_EQ(FaultOf(Night({})), "no site");
    EXPECT_EQ(FaultOf({{"EXPTIME", "3"}}), "no time; no site; no target");
    EXPECT_EQ(FaultOf({{"DATE-OBS", "2024-11-05T23:00:00"}}, site), "no target");
    EXPECT_EQ(with({}), "");
    EXPECT_EQ(with({{"LST", "09:52"}}),
              "its sidereal time is off by 7.0 h: time, zone or longitude is wrong");
    EXPECT_EQ(with({{"TELALT", "80"}}),
              "its altitude is off by 32 degrees: time, zone or longitude is wrong");
    EXPECT_EQ(with({{"DEC", "-70"}}),
              "the target is below the horizon: time, zone or longitude is wrong");
    EXPECT_EQ(with({{"DATE-OBS", "2024-11-06T08:00:00"}, {"EXPTIME", "60"}}),
              "the Sun is up: local time may be written as UTC");
    EXPECT_EQ(with({{"SITELONG", "-100"}, {"DATE-LOC", "2024-11-05T23:00:00"}}).substr(0, 34),
              "DATE-OBS and DATE-LOC are the same");
    // The header's site wins where it can be.
    const std::vector<FrameWhere> frames{WhereOf(Night(here)),
                                         WhereOf(Night({{"SITELAT", "95"}, {"SITELONG", "11.6"}}))};
    const SkyOfFolder sky = SkyOver(frames, Site{-30, 20, 0});
    EXPECT_EQ(sky.rows[0].site->latitude, 48.1);
    EXPECT_EQ(sky.rows[1].site->latitude, -30);
    EXPECT_EQ(sky.rows[1].fault.substr(0, 26), "SITELAT 95 is out of range");
}

TEST(SkyLines, SayWhatIsKnown) {
    const FrameWhere where = WhereOf(Night({{"SITELAT", "48.1"}, {"SITELONG", "11.6"}}));
    const SkyRow row = SkyRowOf(where, {}, {});
    EXPECT_EQ(SkyLines(row, {}, true),
              (std::vector<std::string>{
                  "      Middle: 2024-11-05 23:00:00 UTC", "    Altitude: 47.8°, azimuth 113.2°",
                  "    Air mass: 1.35", "         Sun: -57.9°, night",
                  "        Moon: -46.2°, 18 % lit, 168.6° away", "    Sidereal: 02:49:03",
                  "        Site: 48.1000, 11.6000, 0 m", "  Longitudes: east, nothing tells"}));
    EXPECT_EQ(SkyLines(SkyRowOf(WhereOf({{"DATE-OBS", "2024-11-05"}}), {}, {}), {}, false),
              (std::vector<std::string>{"     Missing: DATE-OBS has no time of day",
                                        "              no site", "              no target"}));
}

// A full turn is written as none.
TEST(Angle, WrittenTurns) {
    EXPECT_EQ(WithinWrittenTurn(359.999999, 5), 0);
    EXPECT_EQ(WithinWrittenTurn(359.99999, 5), 359.99999);
    EXPECT_EQ(WithinWrittenTurn(0.000001, 5), 0.000001);
}

TEST(SiteList, IsKeptAsText) {
    std::string fault;
    const auto garden = SiteOfCells(" Gar|den;", "48 07 30 N", "11.525", "", "5.5", fault);
    ASSERT_TRUE(garden.has_value());
    const std::vector<NamedSite> sites{*garden, {"Remote", {-30.25, -70.75, 2200}, {}}};
    const std::string text = SitesText(sites);
    EXPECT_EQ(text, "Garden|48.125|11.525|0|330;Remote|-30.25|-70.75|2200|");
    EXPECT_EQ(ParseSites(text), sites);
    EXPECT_EQ(ParseSites("x;Bad|95|0|0|;" + text), sites);
    EXPECT_EQ(SiteNamed(sites, "Remote"), &sites[1]);
    EXPECT_EQ(SiteNamed(sites, ""), nullptr);
    EXPECT_FALSE(SiteOfCells("", "1", "2", "", "", fault).has_value());
    EXPECT_EQ(fault, "A site needs a name");
    EXPECT_FALSE(SiteOfCells("a", "1", "200", "", "", fault).has_value());
    EXPECT_EQ(fault, "a: the longitude is from -180 to 180 degrees, east positive");
}
