// Which way longitudes count, by what the frames of a folder tell together.
#include "sky/place/SkyRows.h"

#include <gtest/gtest.h>

using namespace tarn;

namespace {

// Of a target that stands high at 105 degrees east and below the horizon at 105 degrees west: the
// sidereal time is 9h 03m in Greenwich then.
FrameWhere FrameAt(const std::string& longitude, const HeaderWords& more) {
    HeaderWords words{{"DATE-OBS", "2024-11-06T06:00:00"},
                      {"RA", "240"},
                      {"DEC", "22"},
                      {"SITELAT", "39.7"},
                      {"SITELONG", longitude}};
    for (const auto& [name, value] : more) words[name] = value;
    return WhereOf(words);
}

using Sense = std::pair<bool, std::string>; // whether west, and by what

Sense SenseBy(const std::vector<FrameWhere>& frames) {
    const LongitudeSense found = SenseOf(frames);
    return {found.countsWest, found.said};
}

const Sense kEastUntold{false, ""};
const Sense kWestByClock{true, "by its sidereal times"};
const Sense kEastByClock{false, "by its sidereal times"};
const Sense kWestByZone{true, "by its time zone"};
const Sense kWestByAltitude{true, "by the altitudes of its targets"};
const Sense kEastByAltitude{false, "by the altitudes of its targets"};

} // namespace

TEST(LongitudeSense, ByWhatTheSeriesTells) {
    EXPECT_EQ(SenseBy({FrameAt("105", {{"LST", "02:03:00"}})}), kWestByClock);
    EXPECT_EQ(SenseBy({FrameAt("-105", {{"LST-OBS", "02:03:00"}})}), kEastByClock);
    EXPECT_EQ(SenseBy({FrameAt("105", {{"DATE-OBS", "2024-11-05T23:00:00-0700"}})}), kWestByZone);
    EXPECT_EQ(SenseBy({FrameAt("105", {{"DATE-LOC", "2024-11-05T23:00:00"}})}), kWestByZone);
    EXPECT_EQ(SenseBy({FrameAt("111", {{"DATE-OBS", "2024-11-05T23:00:00-0700"}})}), kWestByZone);
    EXPECT_EQ(SenseBy({FrameAt("105", {})}), kEastUntold);
    EXPECT_EQ(SaidOfLongitudes({}), "longitudes are taken as counting east: nothing tells");

    // At the meridian of Greenwich both sides see the target equally high, at others they do not.
    const HeaderWords atNoon{
        {"DATE-OBS", "2024-11-06T02:33:00"}, {"RA", "83.633"}, {"TELALT", "3.1"}};
    const FrameWhere fitsBoth = FrameAt("105", atNoon);
    EXPECT_EQ(SenseBy({fitsBoth}), kEastUntold);
    const FrameWhere fitsWest = FrameAt("105", {{"RA", "83.633"}, {"OBJCTALT", "42.05"}});
    EXPECT_EQ(SenseBy({fitsBoth, fitsWest}), kWestByAltitude);
}

// Many live by a time that is far from that of their longitude.
TEST(LongitudeSense, AZoneDecidesOnlyWhereTheOtherSideIsImpossible) {
    constexpr const char* kPlaces[][2] = {
        {"-9.14", "+0100"}, {"-17.89", "+0100"}, {"-8.54", "+0200"}, {"-7.87", "+0100"},
        {"-22", "+0000"},   {"172.6", "+1300"},  {"-172", "+1300"},  {"75.9", "+0800"}};
    for (const auto& [longitude, zone] : kPlaces) {
        SCOPED_TRACE(longitude);
        EXPECT_EQ(SenseBy({FrameAt(longitude,
                                   {{"DATE-OBS", std::string("2024-07-10T23:00:00") + zone}})}),
                  kEastUntold);
    }
}

TEST(LongitudeSense, SiderealTimesAndAltitudesComeBeforeZones) {
    const HeaderWords zone{{"DATE-OBS", "2024-11-05T23:00:00-0700"}};
    const auto with = [&](const char* name, const char* value) {
        HeaderWords words = zone;
        words[name] = value;
        return SenseBy({FrameAt("105", words)});
    };
    EXPECT_EQ(with("LST", "16:03:00"), kEastByClock);
    EXPECT_EQ(with("CENTALT", "72.3"), kEastByAltitude);
    EXPECT_EQ(with("TELALT", "30"), kEastUntold); // no side has it there
    EXPECT_EQ(SenseBy({FrameAt("105", {{"LST", "02:03:00"}, {"TELALT", "72.3"}})}), kEastUntold);
}

TEST(LongitudeSense, OneWrongHeaderDoesNotSpeakForTheOthers) {
    std::vector<FrameWhere> frames(4, FrameAt("105", {{"LST", "02:03:00"}}));
    frames.push_back(FrameAt("105", {{"LST", "20:00:00"}})); // fits none
    frames.push_back(FrameAt("105", {{"LST", "16:03:00"}})); // fits the other
    EXPECT_EQ(SenseBy(frames), kWestByClock);
    std::vector<FrameWhere> heights(3, FrameAt("105", {{"TELALT", "72.3"}}));
    heights.push_back(FrameAt("105", {{"TELALT", "-89"}}));
    EXPECT_EQ(SenseBy(heights), kEastByAltitude);
}

// The sidereal time of a header is that of the start.
TEST(LongitudeSense, LongExposures) {
    const HeaderWords hours{{"LST", "02:03:00"}, {"EXPTIME", "7200"}};
    const FrameWhere frame = FrameAt("-105", hours);
    EXPECT_EQ(SenseBy({frame}), kEastByClock);
    EXPECT_EQ(
        SkyRowOf(FrameAt("-105", {{"LST", "02:03:00"}, {"EXPTIME", "7200"}, {"RA", "30"}}), {}, {})
            .fault,
        "");
}
