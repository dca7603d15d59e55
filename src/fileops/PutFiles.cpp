#include "fileops/PutFiles.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "fileops/CopyQuestion.h"
#include "fileops/PlanningSteps.h"
#include "history/Rehearsal.h"
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
    request.sidecars = false; // each file is planned for itself below
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
    if (!m_left.path.empty())
        said += ", a " + WordOf(m_left.kind) + " stays " +
                (m_left.kind == BelongingKind::Note ? "under its old name" : "where it was") +
                ", too: " + LastPart(m_left.path) + " - " + m_left.why;
    return {m_counts.failed == 0 && !m_cancelled, said, {}, m_counts.faults};
}

void PutFiles::StepThrough(const CopyPlan& plan, const FolderDrop& drop, Changes& changes) {
    const std::string doing = drop.copy ? "Copying " : "Moving ";
    const BatchRun batch(m);
    m_cancelled = !Plan(plan, drop.copy, batch, changes);
    for (std::size_t i = 0; i < plan.size() && !m_cancelled; ++i) {
        const PlannedCopy& file = plan[i].copies.front();
        const std::string name = LastPart(file.from);
        m_cancelled = !batch.Step(doing + std::to_string(i + 1) + " of " +
                                  std::to_string(plan.size()) + " - " + name);
        if (m_cancelled) return;
        std::string error;
        const std::size_t before = changes.Count();
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

namespace {

// What belongs to it first, so that at no instant the picture is without it.
bool Put(const NewNamePlan& plan, const PlannedCopy& file, bool copy, const Files& files,
         Changes& changes, LeftBehind& left, std::string* error) {
    if (!BringAlong(plan, files, changes, error)) return false;
    const Standing standing = file.stands ? Standing::ThrowAway : Standing::Refuse;
    if (copy) return changes.CopyTo(file.from, file.to, error, standing);
    if (!changes.MoveTo(file.from, file.to, error, standing) || !changes.EndMove(file.from, error))
        return false;
    left = EndAlong(plan, files, changes);
    return true;
}

} // namespace

// False where it was cancelled.
bool PutFiles::Plan(const CopyPlan& plan, bool copy, const BatchRun& batch, Changes& changes) {
    Rehearsal rehearsal(m.files);
    Belongings belongings(rehearsal.Disk(), m_notes);
    const PlanGoesOn goesOn = PlanningSteps(batch, plan.size());
    for (std::size_t i = 0; i < plan.size(); ++i) {
        if (!goesOn(i + 1)) return false;
        const PlannedCopy& file = plan[i].copies.front();
        LeftBehind ignored;
        Put(PlanPlace(belongings, file.from, file.to), file, copy, rehearsal.Disk(),
            rehearsal.Command(), ignored, nullptr);
    }
    changes.PlanWhole(rehearsal.Steps());
    return true;
}

bool PutFiles::PutOne(const PlannedCopy& file, bool copy, Changes& changes, std::string* error) {
    const NewNamePlan plan = PlanPlace(m_belongings, file.from, file.to);
    LeftBehind left;
    if (!Put(plan, file, copy, m.files, changes, left, error)) return false;
    m_counts.notes +=
        static_cast<int>(std::count_if(plan.along.begin(), plan.along.end(), [](const Along& each) {
            return each.kind == BelongingKind::Note;
        }));
    if (!left.path.empty() && m_left.path.empty()) m_left = left;
    return true;
}

} // namespace tarn
