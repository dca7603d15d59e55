#include "history/CommandText.h"

#include "common/csv.h"
#include "common/paths.h"

#include <array>
#include <ctime>

namespace tarn {

namespace {

// By its name where both are in one folder.
std::string Target(const Step& step) {
    return FolderOf(step.from) == FolderOf(step.to) ? LastPart(step.to) : step.to;
}

std::string Deed(const Step& step) {
    const std::string name = LastPart(step.from);
    switch (step.kind) {
    case StepKind::ThrownAway:
        return "to the wastebasket: " + name;
    case StepKind::Renamed:
        return (FolderOf(step.from) == FolderOf(step.to) ? "renamed: " : "moved: ") + name +
               " to " + Target(step);
    case StepKind::Made:
        return "copied: " + name + " to " + Target(step);
    case StepKind::Dropped:
        return "removed, its copy stays: " + name;
    case StepKind::Written:
        return (step.before.inode == 0 ? "made: " : "written: ") + name;
    case StepKind::WrittenAt:
        return "bytes changed in: " + name;
    case StepKind::Dated:
        return "file date of: " + name;
    case StepKind::FolderMade:
        return "folder made: " + name;
    case StepKind::FolderRemoved:
        return "folder removed: " + name;
    case StepKind::Removed:
        return "deleted for good: " + name;
    case StepKind::Marked:
        return "mark of: " + name;
    }
    return name;
}

} // namespace

std::string StateText(const CommandRow& row) {
    if (row.isBrokenOff) return "broken off";
    if (!HasEnded(row.state)) return "running";
    return row.state == CommandState::Undone ? "undone" : "done";
}

std::string UtcText(std::int64_t seconds) {
    const std::time_t time = seconds;
    std::tm utc{};
    ::gmtime_r(&time, &utc);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text.data();
}

std::string StepText(const Step& step) {
    const char* state = step.state == StepState::Undone    ? " (taken back)"
                        : step.state == StepState::NotDone ? " (not done)"
                        : step.state == StepState::Planned ? " (in part)"
                                                           : "";
    return Deed(step) + state;
}

std::string CommandsAsCsv(std::span<const CommandRow> rows) {
    std::string text = "id,utc,what,folder,files,state\n";
    for (const CommandRow& row : rows)
        text += std::to_string(row.id) + "," + UtcText(row.began) + "," + CsvField(row.what) + "," +
                CsvField(row.folder) + "," + std::to_string(row.files) + "," + StateText(row) +
                "\n";
    return text;
}

} // namespace tarn
