#include "sky/report/Integration.h"

#include "common/csv.h"
#include "common/numbers.h"
#include "common/paths.h"
#include "common/text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <tuple>

namespace tarn {

namespace {

const char* NameOfKind(FrameKind kind) {
    constexpr const char* kNames[] = {"", "Flat", "Dark", "Bias"};
    return kNames[int(kind)];
}

void Count(const ReportFrame& frame, IntegrationRow& row) {
    const double seconds = frame.Seconds();
    ++row.frames;
    row.seconds += seconds;
    if (frame.mark.decision == Decision::Keep) {
        ++row.keptFrames;
        row.keptSeconds += seconds;
    } else if (frame.mark.decision == Decision::Reject) {
        ++row.rejectedFrames;
        row.rejectedSeconds += seconds;
    }
    if (!frame.sky.utc) return;
    row.first = std::min(*frame.sky.utc, row.first.value_or(*frame.sky.utc));
    row.last = std::max(*frame.sky.utc, row.last.value_or(*frame.sky.utc));
}

// How many frames have each fault, in the order of coming.
class Faults {
public:
    void Add(const std::string& fault) {
        const auto found = std::find_if(m_counts.begin(), m_counts.end(),
                                        [&](const auto& each) { return each.first == fault; });
        if (found == m_counts.end())
            m_counts.emplace_back(fault, 1);
        else
            ++found->second;
    }
    std::string Text() const {
        std::string text;
        for (const auto& [fault, count] : m_counts) {
            if (!text.empty()) text += "; ";
            text += std::to_string(count) + (count == 1 ? " frame: " : " frames: ") + fault;
        }
        return text;
    }

private:
    std::vector<std::pair<std::string, int>> m_counts;
};

void Complain(const ReportFrame& frame, Faults& faults) {
    for (const std::string& fault : frame.header.where.time.faults) faults.Add(fault);
    const bool shows = frame.header.kind != FrameKind::Bias; // these have none
    if (shows && !frame.header.where.time.exposure) faults.Add("no exposure");
}

void AddTo(IntegrationRow& sum, const IntegrationRow& row) {
    sum.frames += row.frames;
    sum.seconds += row.seconds;
    sum.keptFrames += row.keptFrames;
    sum.keptSeconds += row.keptSeconds;
    sum.rejectedFrames += row.rejectedFrames;
    sum.rejectedSeconds += row.rejectedSeconds;
    if (row.first) sum.first = std::min(*row.first, sum.first.value_or(*row.first));
    if (row.last) sum.last = std::max(*row.last, sum.last.value_or(*row.last));
}

// To the microsecond, without zeros at the end.
std::string SumText(double seconds) {
    std::string text = FormatFixed(seconds, 6);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

} // namespace

std::string NameKey(std::string_view name) {
    std::string key = FoldCase(name);
    std::erase(key, ' ');
    return key;
}

std::vector<IntegrationRow> IntegrationOf(std::span<const ReportFrame> frames) {
    struct Group {
        IntegrationRow row;
        Faults faults;
    };
    using Key = std::tuple<int, std::string, std::string, std::string, double>;
    std::map<Key, Group> groups;
    std::map<std::string, std::string> spellings; // of targets, as the first frame has them
    std::vector<IntegrationRow> unread;
    for (const ReportFrame& frame : frames) {
        const FrameHeader& header = frame.header;
        if (!frame.IsRead()) {
            unread.emplace_back().error = frame.path + ": " + header.fault;
            continue;
        }
        const bool light = header.kind == FrameKind::Light;
        const std::string target = light ? header.object : NameOfKind(header.kind);
        const double exposure =
            header.where.time.exposure.value_or(std::numeric_limits<double>::infinity());
        Group& group = groups[{int(header.kind), NameKey(target), NameKey(header.filter),
                               NameKey(header.camera), exposure}];
        IntegrationRow& row = group.row;
        if (row.frames == 0) {
            row.kind = header.kind;
            row.target = spellings.try_emplace(NameKey(target), target).first->second;
            row.filter = header.filter;
            row.camera = header.camera;
            if (header.where.time.exposure) row.exposure = header.exposure;
        }
        Count(frame, row);
        Complain(frame, group.faults);
    }
    std::vector<IntegrationRow> rows;
    for (auto& [key, group] : groups) {
        group.row.error = group.faults.Text();
        rows.push_back(std::move(group.row));
    }
    rows.insert(rows.end(), unread.begin(), unread.end());
    return rows;
}

std::span<const char* const> IntegrationColumns() {
    static constexpr const char* kColumns[] = {
        "target",      "filter",       "camera",    "exposure", "frames", "seconds",
        "kept_frames", "kept_seconds", "first_utc", "last_utc", "error"};
    return kColumns;
}

std::vector<std::string> IntegrationCells(const IntegrationRow& row) {
    const auto time = [](const std::optional<double>& utc) {
        return utc ? UtcText(*utc) : std::string();
    };
    if (row.frames == 0) {
        std::vector<std::string> cells(IntegrationColumns().size());
        cells.back() = row.error;
        return cells;
    }
    return {row.target,
            row.filter,
            row.camera,
            row.exposure,
            std::to_string(row.frames),
            SumText(row.seconds),
            std::to_string(row.keptFrames),
            SumText(row.keptSeconds),
            time(row.first),
            time(row.last),
            row.error};
}

std::string IntegrationTable(std::span<const IntegrationRow> rows) {
    std::string table;
    const auto add = [&](const auto& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            table += (i == 0 ? "" : ",") + CsvField(cells[i]);
        table += '\n';
    };
    add(IntegrationColumns());
    for (const IntegrationRow& row : rows) add(IntegrationCells(row));
    return table;
}

IntegrationRow TotalOf(std::span<const IntegrationRow> rows, bool lights) {
    IntegrationRow sum;
    for (const IntegrationRow& row : rows)
        if ((row.kind == FrameKind::Light) == lights) AddTo(sum, row);
    return sum;
}

std::vector<IntegrationRow> ByTargetAndFilter(std::span<const IntegrationRow> rows) {
    std::vector<IntegrationRow> sums;
    for (const IntegrationRow& row : rows) {
        if (row.kind != FrameKind::Light || row.frames == 0) continue;
        const auto found = std::find_if(sums.begin(), sums.end(), [&](const IntegrationRow& sum) {
            return NameKey(sum.target) == NameKey(row.target) &&
                   NameKey(sum.filter) == NameKey(row.filter);
        });
        IntegrationRow& sum = found == sums.end() ? sums.emplace_back() : *found;
        sum.target = row.target;
        sum.filter = row.filter;
        AddTo(sum, row);
    }
    return sums;
}

std::string HoursText(double seconds) {
    constexpr int kHour = 3600;
    if (seconds < 60) return ShortestSingle(float(seconds)) + " s";
    const long long whole = std::llround(seconds);
    const std::string minutes = std::to_string(whole % kHour / 60) + " min";
    if (whole >= kHour) return std::to_string(whole / kHour) + " h " + minutes;
    return whole % 60 == 0 ? minutes : minutes + " " + std::to_string(whole % 60) + " s";
}

} // namespace tarn
