#include "sky/report/NightReport.h"

#include "common/numbers.h"
#include "common/paths.h"
#include "sky/place/ExposureTime.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace tarn {

namespace {

using Indices = std::vector<std::size_t>;

std::string Counted(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string ClockOf(const std::optional<double>& utc) {
    constexpr std::size_t kClock = 11; // behind the date
    return utc ? UtcText(std::round(*utc / 60) * 60).substr(kClock, 5) : std::string();
}

std::string MinuteOf(const std::optional<double>& utc) {
    if (!utc) return {};
    std::string text = UtcText(std::floor(*utc)).substr(0, 16);
    text[10] = ' ';
    return text;
}

std::string Shown(double value, int digits, const char* unit) {
    return std::isfinite(value) ? FormatFixed(value, digits) + unit : std::string();
}

std::string Named(const std::string& name, const char* otherwise) {
    return name.empty() ? otherwise : name;
}

// "-10.2 to -9.8", or the one value of all.
std::string RangeOf(std::span<const ReportFrame> frames, const Indices& indices,
                    double (*value)(const ReportFrame&), int digits, const char* unit) {
    double low = INFINITY;
    double high = -INFINITY;
    for (const std::size_t index : indices) {
        const double each = value(frames[index]);
        if (!std::isfinite(each)) continue;
        low = std::min(low, each);
        high = std::max(high, each);
    }
    if (low > high) return {};
    const double one = std::pow(10, -digits) / 2; // below which a number shows as 0
    const std::string from = FormatFixed(std::abs(low) < one ? 0 : low, digits);
    const std::string to = FormatFixed(std::abs(high) < one ? 0 : high, digits);
    return from == to ? from + unit : from + " to " + to + unit;
}

std::string SiteText(const Site& site) {
    return FormatFixed(std::abs(site.latitude), 4) + (site.latitude < 0 ? "° S, " : "° N, ") +
           FormatFixed(std::abs(site.longitude), 4) + (site.longitude < 0 ? "° W, " : "° E, ") +
           FormatFixed(site.height, 0) + " m";
}

void AddFact(ReportFacts& facts, const char* label, const std::string& text) {
    if (!text.empty()) facts.emplace_back(label, text);
}

std::vector<std::string> RowOf(const IntegrationRow& row) {
    return {Named(row.target, "(no target)"),
            row.filter,
            row.camera,
            row.exposure,
            std::to_string(row.frames),
            HoursText(row.seconds),
            std::to_string(row.keptFrames),
            HoursText(row.keptSeconds),
            std::to_string(row.rejectedFrames),
            MinuteOf(row.first),
            MinuteOf(row.last)};
}

ReportTable FramesTable(const char* title, std::span<const IntegrationRow> rows, bool lights) {
    ReportTable table{title,
                      {"Target", "Filter", "Camera", "Exposure, s", "Frames", "Time", "Kept",
                       "Kept time", "Rejected", "First, UTC", "Last, UTC"},
                      3,
                      {},
                      false};
    if (!lights) table.heads.front() = "Kind";
    for (const IntegrationRow& row : rows)
        if (row.frames > 0 && (row.kind == FrameKind::Light) == lights)
            table.rows.push_back(RowOf(row));
    if (table.rows.size() > 1) {
        std::vector<std::string> total = RowOf(TotalOf(rows, lights));
        total.front() = "Total";
        total[total.size() - 2].clear();
        total.back().clear();
        table.rows.push_back(std::move(total));
        table.hasTotal = true;
    }
    return table;
}

ReportTable TargetsTable(std::span<const IntegrationRow> rows) {
    ReportTable table{"Integration by target and filter",
                      {"Target", "Filter", "Frames", "Hours", "Kept", "Hours kept"},
                      2,
                      {},
                      false};
    constexpr double kHour = 3600;
    for (const IntegrationRow& row : ByTargetAndFilter(rows))
        table.rows.push_back({Named(row.target, "(no target)"), row.filter,
                              std::to_string(row.frames), FormatFixed(row.seconds / kHour, 2),
                              std::to_string(row.keptFrames),
                              FormatFixed(row.keptSeconds / kHour, 2)});
    return table;
}

std::string NameOf(const ReportFrame& frame) {
    return LastPart(frame.path);
}

double HfrOf(const ReportFrame& frame) {
    return frame.measures ? frame.measures->hfr : kNotMeasured;
}

// Nobody writes down why a frame was rejected; its measures tell.
ReportTable RejectedTable(std::span<const ReportFrame> frames, const Indices& indices) {
    ReportTable table{"Rejected",
                      {"Frame", "It looks like", "HFR", "Eccentricity", "Transparency", "Score"},
                      2,
                      {},
                      false};
    for (const std::size_t index : indices) {
        const ReportFrame& frame = frames[index];
        if (frame.mark.decision != Decision::Reject) continue;
        std::string look = frame.measures ? frame.measures->fault : "not measured";
        if (!frame.look.empty()) look += (look.empty() ? "" : ", ") + frame.look;
        table.rows.push_back(
            {NameOf(frame), look, Shown(HfrOf(frame), 2, ""),
             frame.measures ? Shown(frame.measures->eccentricity, 2, "") : std::string(),
             Shown(frame.transparency, 2, ""), Shown(frame.score, 0, "")});
    }
    return table;
}

ReportTable GapsTable(const ReportNight& night) {
    ReportTable table{
        "Gaps of more than 5 minutes", {"From, UTC", "To, UTC", "Length"}, 2, {}, false};
    double all = 0;
    for (const NightGap& gap : night.gaps) {
        all += gap.to - gap.from;
        table.rows.push_back({MinuteOf(gap.from), MinuteOf(gap.to), HoursText(gap.to - gap.from)});
    }
    if (night.gaps.size() > 1) {
        table.rows.push_back({"Total", "", HoursText(all)});
        table.hasTotal = true;
    }
    return table;
}

std::string MoonText(std::span<const ReportFrame> frames, const Indices& lights) {
    std::string text;
    for (const std::size_t index : lights) {
        if (!std::isfinite(frames[index].sky.moonPhase)) continue;
        text = FormatFixed(100 * frames[index].sky.moonPhase, 0) + " % lit";
        break;
    }
    if (text.empty()) return text;
    const auto altitude = RangeOf(
        frames, lights, [](const ReportFrame& f) { return f.sky.moonAltitude; }, 0, "°");
    text += ", altitude " + altitude;
    const auto away = RangeOf(
        frames, lights, [](const ReportFrame& f) { return f.sky.moonSeparation; }, 0, "°");
    return away.empty() ? text : text + ", " + away + " from the target";
}

std::string SunText(const SunTimes& sun) {
    if (!sun.sunset && !sun.sunrise) return {};
    std::string text = "sunset " + ClockOf(sun.sunset) + ", sunrise " + ClockOf(sun.sunrise);
    text += sun.dusk && sun.dawn ? ", dark from " + ClockOf(sun.dusk) + " to " + ClockOf(sun.dawn)
                                 : std::string(", never quite dark");
    return text + " UTC";
}

void DropEmptyColumns(ReportTable& table) {
    for (std::size_t i = table.heads.size(); i-- > 1;) {
        if (std::any_of(table.rows.begin(), table.rows.end(),
                        [&](const auto& row) { return !row[i].empty(); }))
            continue;
        const auto at = std::ptrdiff_t(i);
        table.heads.erase(table.heads.begin() + at);
        for (auto& row : table.rows) row.erase(row.begin() + at);
        if (i < table.texts) --table.texts;
    }
}

class ReportMaker {
public:
    ReportMaker(std::span<const ReportFrame> frames, const ReportChoice& choice)
        : m_frames(frames), m_choice(choice) {}

    ReportPart PartOf(const ReportNight& night, std::size_t number) const {
        ReportPart part;
        part.title = "Night of " + night.date;
        part.night = number;
        const Indices lights = LightsOf(night);
        double seconds = 0;
        for (const std::size_t index : lights) seconds += m_frames[index].Seconds();
        AddFact(part.facts, "Exposed", Counted(lights.size(), "frame") + ", " + HoursText(seconds));
        if (night.site) AddFact(part.facts, "Site", SiteText(*night.site));
        AddFact(part.facts, "Sun", SunText(night.sun));
        AddFact(part.facts, "Moon", MoonText(m_frames, lights));
        AddFact(part.facts, "Altitude",
                Range(
                    lights, [](const ReportFrame& f) { return f.sky.altitude; }, 0, "°"));
        AddFact(part.facts, "Air mass",
                Range(
                    lights, [](const ReportFrame& f) { return f.sky.airMass; }, 2, ""));
        AddFact(part.facts, "HFR", Range(lights, HfrOf, 2, " pixels"));
        AddFact(part.facts, "Sensor",
                Range(
                    lights,
                    [](const ReportFrame& f) {
                        return ParseNumber(f.header.temperature).value_or(kNotMeasured);
                    },
                    1, " °C"));
        AddFact(part.facts, "Focuser",
                Range(
                    lights,
                    [](const ReportFrame& f) {
                        return ParseNumber(f.header.focus).value_or(kNotMeasured);
                    },
                    0, ""));
        if (m_choice.pictures) {
            AddPicture("Best", night.best, part);
            AddPicture("Worst", night.worst, part);
        }
        if (m_choice.rejected) AddTable(RejectedTable(m_frames, night.frames), part.tables);
        if (m_choice.gaps) AddTable(GapsTable(night), part.tables);
        return part;
    }

    ReportFacts Equipment() const {
        ReportFacts facts;
        AddFact(facts, "Telescope", Names(&FrameHeader::telescope));
        AddFact(facts, "Focal length, mm", Names(&FrameHeader::focalLength));
        AddFact(facts, "Camera", Names(&FrameHeader::camera));
        AddFact(facts, "Gain", Names(&FrameHeader::gain));
        AddFact(facts, "Filters", Names(&FrameHeader::filter));
        return facts;
    }

    ReportFacts Notes() const {
        ReportFacts notes;
        for (const ReportFrame& frame : m_frames)
            if (!frame.note.empty()) notes.emplace_back(NameOf(frame), frame.note);
        return notes;
    }

    std::vector<std::string> Remarks(std::span<const IntegrationRow> rows) const {
        std::vector<std::string> remarks;
        std::size_t unmeasured = 0;
        std::map<std::string, std::size_t> faults;
        for (const ReportFrame& frame : m_frames) {
            if (!frame.IsRead()) continue;
            if (frame.header.kind == FrameKind::Light && !frame.measures) ++unmeasured;
            if (!frame.sky.fault.empty()) ++faults[frame.sky.fault];
        }
        if (unmeasured > 0)
            remarks.push_back(Counted(unmeasured, "frame") + (unmeasured == 1 ? " was" : " were") +
                              " never measured");
        for (const auto& [fault, count] : faults)
            remarks.push_back(Counted(count, "frame") + ": " + fault);
        for (const IntegrationRow& row : rows)
            if (row.frames == 0) remarks.push_back(row.error);
        return remarks;
    }

    static void AddTable(ReportTable table, std::vector<ReportTable>& tables) {
        DropEmptyColumns(table);
        if (!table.rows.empty()) tables.push_back(std::move(table));
    }

private:
    Indices LightsOf(const ReportNight& night) const {
        Indices lights;
        for (const std::size_t index : night.frames)
            if (m_frames[index].header.kind == FrameKind::Light) lights.push_back(index);
        return lights;
    }

    std::string Range(const Indices& indices, double (*value)(const ReportFrame&), int digits,
                      const char* unit) const {
        return RangeOf(m_frames, indices, value, digits, unit);
    }

    void AddPicture(const char* which, const std::optional<std::size_t>& index,
                    ReportPart& part) const {
        if (!index) return;
        const ReportFrame& frame = m_frames[*index];
        part.pictures.push_back({std::string(which) + ": " + NameOf(frame) + ", score " +
                                     FormatFixed(frame.score, 0) + ", HFR " +
                                     FormatFixed(HfrOf(frame), 2),
                                 frame.thumbnail});
    }

    std::string Names(std::string FrameHeader::*name) const {
        std::set<std::string> known;
        for (const ReportFrame& frame : m_frames)
            if (frame.IsRead() && !(frame.header.*name).empty()) known.insert(frame.header.*name);
        std::string text;
        for (const std::string& each : known) text += (text.empty() ? "" : ", ") + each;
        return text;
    }

    std::span<const ReportFrame> m_frames;
    const ReportChoice& m_choice;
};

std::string TitleOf(std::span<const ReportNight> nights) {
    if (nights.empty()) return "Night report";
    if (nights.size() == 1) return "Night of " + nights.front().date;
    return std::to_string(nights.size()) + " nights, " + nights.front().date + " to " +
           nights.back().date;
}

} // namespace

NightReport ReportOf(std::span<const ReportFrame> frames, std::span<const ReportNight> nights,
                     std::span<const IntegrationRow> rows, const ReportChoice& choice,
                     const std::string& foot) {
    const ReportMaker maker(frames, choice);
    NightReport report;
    report.title = TitleOf(nights);
    report.foot = foot;
    report.graphs = choice.graphs;
    const IntegrationRow lights = TotalOf(rows, true);
    report.lines.push_back(Counted(std::size_t(lights.frames), "frame") + ", " +
                           HoursText(lights.seconds) + " exposed");
    report.lines.push_back("kept: " + std::to_string(lights.keptFrames) + ", " +
                           HoursText(lights.keptSeconds) +
                           "; rejected: " + std::to_string(lights.rejectedFrames) + ", " +
                           HoursText(lights.rejectedSeconds));
    ReportMaker::AddTable(TargetsTable(rows), report.tables);
    ReportMaker::AddTable(FramesTable("Exposures", rows, true), report.tables);
    ReportMaker::AddTable(FramesTable("Darks, flats and bias frames", rows, false), report.tables);
    for (std::size_t i = 0; i < nights.size(); ++i)
        report.parts.push_back(maker.PartOf(nights[i], i));
    if (choice.equipment) report.equipment = maker.Equipment();
    if (choice.notes) report.notes = maker.Notes();
    report.remarks = maker.Remarks(rows);
    return report;
}

} // namespace tarn
