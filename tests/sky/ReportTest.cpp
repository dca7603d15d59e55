// Exposures counted, nights parted, and what the page says of them.
#include "common/text.h"
#include "sky/report/NightGraph.h"
#include "sky/report/NightReport.h"

#include <gtest/gtest.h>

using namespace tarn;

namespace {

constexpr Site kSite{48.1, 11.5, 520};

struct Made {
    std::string utc; // of the start
    double exposure = 300;
    std::string object = "M 31";
    std::string filter = "L";
    FrameKind kind = FrameKind::Light;
    Decision decision = Decision::None;
};

ReportFrame FrameOf(const Made& made) {
    ReportFrame frame;
    frame.path = "/night/" + made.utc + ".fits";
    frame.header.where = WhereOf({{"DATE-OBS", made.utc},
                                  {"EXPTIME", std::to_string(made.exposure)},
                                  {"RA", "10.68"},
                                  {"DEC", "41.27"}});
    frame.header.kind = made.kind;
    frame.header.object = made.object;
    frame.header.filter = made.filter;
    frame.header.camera = "CAM";
    frame.header.exposure = std::to_string(int(made.exposure));
    frame.mark.decision = made.decision;
    const std::vector<FrameWhere> where{frame.header.where};
    frame.sky = SkyOver(where, kSite).rows.front();
    return frame;
}

std::vector<ReportFrame> FramesOf(const std::vector<Made>& all) {
    std::vector<ReportFrame> frames;
    for (const Made& each : all) frames.push_back(FrameOf(each));
    return frames;
}

using Cells = std::vector<std::string>;

std::vector<Cells> Shown(const std::vector<IntegrationRow>& rows) {
    std::vector<Cells> shown;
    for (const IntegrationRow& row : rows)
        shown.push_back({row.target, row.filter, row.exposure, std::to_string(row.frames),
                         HoursText(row.seconds), std::to_string(row.keptFrames),
                         HoursText(row.keptSeconds), std::to_string(row.rejectedFrames)});
    return shown;
}

const std::vector<Made> kNight{
    {"2024-11-05T20:00:00"},
    {"2024-11-05T20:05:10", 300, "m31", "l", FrameKind::Light, Decision::Keep},
    {"2024-11-05T20:20:00", 300, "M31", "R", FrameKind::Light, Decision::Reject},
    {"2024-11-05T20:25:10", 60},
    {"2024-11-06T05:00:00", 300, "M 31", "", FrameKind::Dark},
    {"2024-11-06T05:10:00", 2, "", "L", FrameKind::Flat}};

} // namespace

TEST(Integration, CountsEachTargetFilterAndExposure) {
    std::vector<ReportFrame> frames = FramesOf(kNight);
    ReportFrame broken;
    broken.path = "/night/b.fits";
    broken.header.fault = "The file ends too early";
    frames.push_back(broken);
    const std::vector<IntegrationRow> rows = IntegrationOf(frames);
    EXPECT_EQ(Shown(rows),
              (std::vector<Cells>{{"M 31", "L", "60", "1", "1 min", "0", "0 s", "0"},
                                  {"M 31", "L", "300", "2", "10 min", "1", "5 min", "0"},
                                  {"M 31", "R", "300", "1", "5 min", "0", "0 s", "1"},
                                  {"Flat", "L", "2", "1", "2 s", "0", "0 s", "0"},
                                  {"Dark", "", "300", "1", "5 min", "0", "0 s", "0"},
                                  {"", "", "", "0", "0 s", "0", "0 s", "0"}}));
    EXPECT_EQ(UtcText(rows[1].first.value_or(0)), "2024-11-05T20:02:30Z");
    EXPECT_EQ(UtcText(rows[1].last.value_or(0)), "2024-11-05T20:07:40Z");
    EXPECT_EQ(rows.back().error, "/night/b.fits: The file ends too early");
    EXPECT_EQ(TotalOf(rows, true).seconds, 960);
    EXPECT_EQ(TotalOf(rows, false).seconds, 302);
    EXPECT_EQ(Shown(ByTargetAndFilter(rows)),
              (std::vector<Cells>{{"M 31", "L", "", "3", "11 min", "1", "5 min", "0"},
                                  {"M 31", "R", "", "1", "5 min", "0", "0 s", "1"}}));
}

TEST(Integration, SaysWhatIsMissing) {
    std::vector<ReportFrame> frames = FramesOf({{"2000-01-01T00:01:00"}, {"2000-01-01T00:07:00"}});
    frames.push_back(FrameOf({"2024-11-05T20:00:00"}));
    frames.back().header.where.time.exposure.reset();
    const std::vector<IntegrationRow> rows = IntegrationOf(frames);
    ASSERT_EQ(Shown(rows), (std::vector<Cells>{{"M 31", "L", "300", "2", "10 min", "0", "0 s", "0"},
                                               {"M 31", "L", "", "1", "0 s", "0", "0 s", "0"}}));
    EXPECT_EQ(rows[0].error, "2 frames: no time: on 2000-01-01 clocks begin that were not set");
    EXPECT_FALSE(rows[0].first.has_value());
    EXPECT_EQ(rows[1].error, "1 frame: no exposure");
}

TEST(Integration, Hours) {
    EXPECT_EQ(HoursText(0), "0 s");
    EXPECT_EQ(HoursText(2.5), "2.5 s");
    EXPECT_EQ(HoursText(610), "10 min 10 s");
    EXPECT_EQ(HoursText(12300), "3 h 25 min");
}

// At 11.5 degrees east noon is at 11:14 UTC.
TEST(Nights, FromNoonToNoonOfTheSite) {
    std::vector<ReportFrame> frames = FramesOf({{"2024-11-06T11:10:00", 0},
                                                {"2024-11-05T23:00:00", 0},
                                                {"2024-11-06T11:20:00", 0},
                                                {"2000-01-01T00:00:00", 0}});
    const std::vector<ReportNight> nights = NightsOf(frames, 0);
    ASSERT_EQ(nights.size(), 2U);
    EXPECT_EQ(nights[0].date, "2024-11-05");
    EXPECT_EQ(nights[0].frames, (std::vector<std::size_t>{1, 0}));
    EXPECT_EQ(nights[1].date, "2024-11-06");
    EXPECT_EQ(nights[1].frames, (std::vector<std::size_t>{2}));
    EXPECT_EQ(UtcText(nights[0].noon).substr(0, 16), "2024-11-05T11:14");
    // By a printed almanac of Munich: sunset 16:49, sunrise 7:07 by its clock.
    EXPECT_NEAR(nights[0].sun.sunset.value_or(0), *ParseUtc("2024-11-05T15:49:00"), 120);
    EXPECT_NEAR(nights[0].sun.sunrise.value_or(0), *ParseUtc("2024-11-06T06:07:00"), 120);

    for (ReportFrame& frame : frames) frame.sky.site.reset();
    const std::vector<ReportNight> byZone = NightsOf(frames, -7);
    ASSERT_EQ(byZone.size(), 1U);
    EXPECT_EQ(byZone[0].date, "2024-11-05");
    EXPECT_FALSE(byZone[0].sun.sunset.has_value());
}

// Flats at dusk behind a night are of that night, darks of a cloudy week of none.
TEST(Nights, AreThoseOfLights) {
    const std::vector<ReportFrame> frames =
        FramesOf({{"2024-11-06T15:00:00", 2, "", "L", FrameKind::Flat},
                  {"2024-11-05T20:00:00"},
                  {"2024-11-05T15:00:00", 2, "", "L", FrameKind::Flat},
                  {"2024-11-09T20:00:00", 300, "", "", FrameKind::Dark}});
    const std::vector<ReportNight> nights = NightsOf(frames, 0);
    ASSERT_EQ(nights.size(), 1U);
    EXPECT_EQ(nights[0].date, "2024-11-05");
    EXPECT_EQ(nights[0].frames, (std::vector<std::size_t>{2, 1, 0}));
}

TEST(Nights, GapsAndBest) {
    std::vector<ReportFrame> frames = FramesOf(kNight);
    frames[0].score = 40;
    frames[1].score = 90;
    frames[3].score = 70;
    const std::vector<ReportNight> nights = NightsOf(frames, 0);
    ASSERT_EQ(nights.size(), 1U);
    ASSERT_EQ(nights[0].gaps.size(), 1U); // not that to the darks
    EXPECT_EQ(UtcText(nights[0].gaps[0].from), "2024-11-05T20:10:10Z");
    EXPECT_EQ(UtcText(nights[0].gaps[0].to), "2024-11-05T20:20:00Z");
    EXPECT_EQ(nights[0].best, 1U);
    EXPECT_EQ(nights[0].worst, 0U);
}

TEST(NightReport, PageSaysItAllAndEscapesIt) {
    std::vector<ReportFrame> frames = FramesOf(kNight);
    frames[0].header.object = "<b>\"M\" & co";
    frames[0].note = "seeing < 2\"";
    frames[0].score = 10;
    frames[1].score = 90;
    frames[1].thumbnail = "JPEG";
    frames[1].measures = FrameMeasures();
    frames[1].measures->hfr = 2.25;
    frames[2].measures = FrameMeasures();
    frames[2].measures->hfr = 4.5;
    const std::vector<ReportNight> nights = NightsOf(frames, 0);
    const NightReport report =
        ReportOf(frames, nights, IntegrationOf(frames), {}, "Tarn View 1, now");
    EXPECT_EQ(report.title, "Night of 2024-11-05");
    EXPECT_EQ(report.lines, (std::vector<std::string>{"4 frames, 16 min exposed",
                                                      "kept: 1, 5 min; rejected: 1, 5 min"}));
    EXPECT_EQ(report.remarks, std::vector<std::string>{"2 frames were never measured"});
    ASSERT_EQ(report.parts.size(), 1U);
    const ReportPart& part = report.parts.front();
    std::vector<std::string> titles;
    for (const ReportTable& table : part.tables) titles.push_back(table.title);
    EXPECT_EQ(titles, (std::vector<std::string>{"Rejected", "Gaps of more than 5 minutes"}));
    EXPECT_EQ(part.tables[0].rows,
              (std::vector<std::vector<std::string>>{{"2024-11-05T20:20:00.fits", "4.50"}}));
    EXPECT_EQ(part.tables[1].rows, (std::vector<std::vector<std::string>>{
                                       {"2024-11-05 20:10", "2024-11-05 20:20", "9 min 50 s"}}));

    const std::string page = ReportPage(report, frames, nights);
    for (const char* text : {"<td>&lt;b&gt;&quot;M&quot; &amp; co</td>", "seeing &lt; 2&quot;",
                             "src=\"data:image/jpeg;base64,SlBFRw==\"", "Best: ", "HFR, pixels",
                             "<footer>Tarn View 1, now</footer>"})
        EXPECT_TRUE(Contains(page, text)) << text;
    EXPECT_FALSE(Contains(page, "<b>"));
    EXPECT_FALSE(Contains(page, "http"));

    ReportChoice none;
    none.graphs = none.pictures = none.rejected = none.gaps = none.equipment = none.notes = false;
    const NightReport bare = ReportOf(frames, nights, IntegrationOf(frames), none, "");
    EXPECT_TRUE(bare.parts.front().tables.empty());
    EXPECT_TRUE(bare.parts.front().pictures.empty());
    EXPECT_EQ(bare.notes, ReportFacts());
    EXPECT_FALSE(Contains(ReportPage(bare, frames, nights), "<svg"));
}

// A dot for each frame, a cross for a rejected one; strips without values are left out.
TEST(NightGraph, ShowsWhatIsKnown) {
    std::vector<ReportFrame> frames = FramesOf(kNight);
    for (ReportFrame& frame : frames) {
        frame.measures = FrameMeasures();
        frame.measures->hfr = 2;
    }
    const std::vector<ReportNight> nights = NightsOf(frames, 0);
    const std::string graph = NightGraph(frames, nights[0]);
    const auto count = [&](std::string_view part) {
        int found = 0;
        for (std::size_t at = graph.find(part); at != std::string::npos;
             at = graph.find(part, at + 1))
            ++found;
        return found;
    };
    // Two filters in the legend, three frames that are not rejected, four in the strip of
    // altitudes.
    EXPECT_EQ(count("<circle"), 2 + 3 + 4);
    EXPECT_EQ(count("class=\"x\""), 2);
    EXPECT_EQ(count("Eccentricity"), 0);
    EXPECT_EQ(count("Altitude, degrees"), 1);
    EXPECT_EQ(count("class=\"a\""), 1);
    EXPECT_EQ(NightGraph(std::span(frames).subspan(4), {}), "");
}
