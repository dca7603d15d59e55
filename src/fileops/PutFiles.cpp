#include "fileops/PutFiles.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "fileops/CopyQuestion.h"
#include "platform/Files.h"

#include <algorithm>

namespace tarn {

Outcome PutFiles::Run(const FolderDrop& drop, Changes& changes) {
    if (drop.paths.empty()) return Outcome::Refused();
    const std::string from = FolderOf(drop.paths.front());
    if (m.files.IsSameFile(from, drop.folder))
        return Outcome::Refused("The files are in '" + drop.folder + "' already");
    CopyRequest request;
    for (const std::string& path : drop.paths)
        if (FolderOf(path) == from) request.files.push_back(LastPart(path));
    request.filesFrom = from;
    request.filesTo = drop.folder;
    std::string error;
    auto plan = PlanCopies(request, m.files, &error);
    if (!plan) return Outcome::Refused("ERROR - '" + drop.folder + "' cannot be read: " + error);
    const std::string title = drop.copy ? "Copy" : "Move";
    if (!AskWhatStands(m, *plan, title, m_counts.skipped))
        return Outcome::Refused("Cancelled, nothing was " +
                                std::string(drop.copy ? "copied" : "moved"));
    StepThrough(*plan, drop, changes);
    std::string said =
        ReportText(m_counts, drop.copy ? "Copied" : "Moved", drop.folder, m_cancelled);
    if (!m_noteLeft.empty()) said += ", a note stays under its old name, too: " + m_noteLeft;
    return {m_counts.failed == 0 && !m_cancelled, said, {}, m_counts.faults};
}

void PutFiles::StepThrough(const CopyPlan& plan, const FolderDrop& drop, Changes& changes) {
    const std::string doing = drop.copy ? "Copying " : "Moving ";
    const BatchRun batch(m);
    for (std::size_t i = 0; i < plan.size(); ++i) {
        const PlannedCopy& file = plan[i].copies.front();
        const std::string name = LastPart(file.from);
        m_cancelled = !batch.Step(doing + std::to_string(i + 1) + " of " +
                                  std::to_string(plan.size()) + " - " + name);
        if (m_cancelled) return;
        std::string error;
        const std::size_t before = changes.Written().size();
        if (PutOne(file, drop.copy, changes, &error)) {
            ++m_counts.files;
            continue;
        }
        std::string ignored; // the first fault is the one to tell
        changes.TakeBack(before, &ignored);
        ++m_counts.failed;
        m_counts.faults.push_back({file.from, error});
    }
}

// The note first, so that at no instant the picture is without it.
bool PutFiles::PutOne(const PlannedCopy& file, bool copy, Changes& changes, std::string* error) {
    NewNamePlan plan;
    const std::string name = LastPart(file.to);
    if (name != LastPart(file.from)) plan = PlanNewName(m.files, m_notes, file.from, name);
    const bool hasNote = !plan.noteFrom.empty() && plan.noteFrom != plan.noteTo;
    if (!BringNote(plan, m.files, changes, error)) return false;
    const Standing standing = file.stands ? Standing::ThrowAway : Standing::Refuse;
    if (!(copy ? changes.Copy(file.from, file.to, error, standing)
               : changes.Move(file.from, file.to, error, standing) &&
                     changes.EndMove(file.from, error)))
        return false;
    m_counts.notes += hasNote;
    if (!hasNote || copy || plan.noteStays) return true;
    std::string fault;
    changes.EndRename(plan.noteFrom, plan.noteTo, &fault);
    if (!fault.empty() && m_noteLeft.empty()) m_noteLeft = LastPart(plan.noteFrom) + " - " + fault;
    return true;
}

} // namespace tarn
