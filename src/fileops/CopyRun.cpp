#include "fileops/CopyRun.h"

#include "common/paths.h"

namespace tarn {

namespace {

std::string Counted(int count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

void CopyRun::Step() {
    for (const PlannedCopy& copy : m_plan[m_next].copies) {
        std::string error;
        std::string replaced;
        if (m_files.Copy(copy.from, copy.to, &error, copy.stands ? &replaced : nullptr)) {
            if (!copy.givesWay.empty() && !m_files.Trash(copy.givesWay, &error)) {
                ++counts.failed;
                counts.faults.push_back(
                    {copy.givesWay, "of the picture that was replaced, stays: " + error});
            }
            counts.files += copy.kind == PlannedCopy::Kind::File;
            counts.notes += copy.kind == PlannedCopy::Kind::Note;
            continue;
        }
        ++counts.failed;
        counts.faults.push_back({copy.from, error});
    }
    ++m_next;
}

std::string CountText(int files, int notes) {
    if (files == 0 && notes == 0) return "nothing";
    if (notes == 0) return Counted(files, "file");
    if (files == 0) return Counted(notes, "note");
    return Counted(files, "file") + " and " + Counted(notes, "note");
}

std::string ReportText(const CopyCounts& counts, const std::string& verb, const std::string& to,
                       bool cancelled) {
    std::string text = cancelled ? "CANCELLED - " : counts.failed > 0 ? "ERROR - " : "";
    text += verb + " " + CountText(counts.files, counts.notes) + " to '" + to + "'";
    if (counts.skipped > 0) text += ", " + std::to_string(counts.skipped) + " skipped";
    if (counts.failed > 0)
        text += ", " + std::to_string(counts.failed) +
                " failed: " + LastPart(counts.faults.front().path) + " - " +
                counts.faults.front().why;
    return text;
}

} // namespace tarn
