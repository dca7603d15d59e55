#include "fileops/CopyPaste.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/DroppedNote.h"
#include "fileops/MarksAlong.h"
#include "fileops/PicturePlan.h"
#include "fileops/PlanningSteps.h"
#include "history/Rehearsal.h"
#include "platform/Clipboard.h"
#include "platform/Files.h"
#include "widgets/FileListBox.h"

#include <QAction>

#include <algorithm>

namespace tarn {

void CopyPaste::ConnectControls() {
    MainControls& c = m.controls;
    for (QAction* entry : {c.CopyButton, c.PopupCopyButton})
        Connect(entry, [this] { CopyButton_Click(); });
    for (QAction* entry : {c.CutButton, c.PopupCutButton})
        Connect(entry, [this] { CutButton_Click(); });
    for (QAction* entry : {c.PasteButton, c.PopupPasteButton})
        Connect(entry, [this] { PasteButton_Click(); });
    SetPasteCommands(false);
    m.clipboard.onChange = [this] { ClipboardChanged(); };
}

void CopyPaste::SetPasteCommands(bool enabled) {
    SetEnabled(m.controls.PasteButton, enabled);
    SetEnabled(m.controls.PopupPasteButton, enabled);
}

void CopyPaste::Gather(bool cut) {
    const FileListBox& list = *m.controls.FileListBox;
    m_files.clear();
    for (const int row : list.SelectedRows())
        m_files.push_back(JoinPath(list.Path(), list.Text(row)));
    m_cutPending = cut;
    m_theirs = false;
    if (!m_files.empty()) m.clipboard.SetFiles({m_files, cut});
    SetPasteCommands(true);
    m.shell.ShowMessage(std::to_string(m_files.size()) +
                        (cut ? " files selected for cut" : " files selected for copy"));
}

void CopyPaste::ClipboardChanged() {
    const ClipboardFiles theirs = m.clipboard.Files();
    if (theirs.paths.empty() || theirs == ClipboardFiles{m_files, m_cutPending}) return;
    m_files.clear();
    m_cutPending = false;
    m_theirs = true;
    SetPasteCommands(true);
}

void CopyPaste::PasteButton_Click() {
    const ClipboardFiles files =
        m_theirs ? m.clipboard.Files() : ClipboardFiles{m_files, m_cutPending};
    Paste(files.paths, files.cut);
}

namespace {

bool Put(const NewNamePlan& plan, bool cut, const Files& files, Changes& changes,
         std::string* error) {
    return BringAlong(plan, files, changes, error) &&
           (cut ? changes.MoveTo(plan.from, plan.to, error, Standing::ThrowAway)
                : changes.CopyTo(plan.from, plan.to, error, Standing::ThrowAway));
}

// Only what arrived whole goes.
LeftBehind EndCutOf(const NewNamePlan& plan, const Files& files, Changes& changes) {
    std::string error;
    if (!changes.EndMove(plan.from, &error)) return {BelongingKind::Sidecar, plan.from, error};
    return EndAlong(plan, files, changes);
}

// False where it was cancelled.
bool PlanPaste(const std::vector<std::string>& sources, const std::string& folder, bool cut,
               Changes& changes, const PlanGoesOn& goesOn) {
    Rehearsal rehearsal(changes);
    Belongings belongings(rehearsal.Disk(), {});
    std::vector<NewNamePlan> put;
    for (const std::string& source : sources) {
        if (!goesOn(put.size() + 1)) return false;
        put.push_back(PlanPlace(belongings, source, JoinPath(folder, LastPart(source))));
        // The one that will stop the paste: what comes before it is planned as it comes.
        if (!Put(put.back(), cut, rehearsal.Disk(), rehearsal.Command(), nullptr)) return true;
    }
    for (const NewNamePlan& plan : put)
        if (cut) EndCutOf(plan, rehearsal.Disk(), rehearsal.Command());
    changes.PlanWhole(rehearsal.Steps());
    return true;
}

} // namespace

void CopyPaste::Paste(const std::vector<std::string>& sources, bool cut) {
    Changes changes(m.history, cut ? "Cut > Paste" : "Copy > Paste");
    Report report;
    if (const Outcome written = m.marks.Flush(); !written) return m.shell.Tell(written);
    const DroppedNote dropped(m);
    m.shell.SetBusy(true);
    const std::vector<NewNamePlan> put = PutAll(sources, cut, changes, report);
    const std::size_t arrived = put.size();
    for (const NewNamePlan& plan : put) {
        if (!cut) break;
        const LeftBehind left = EndCutOf(plan, m.files, changes);
        if (!left.path.empty() && report.error.empty())
            report.error = "Stays where it was: " + left.why + " - " + LastPart(left.path);
    }
    m.shell.SetBusy(false);
    changes.SetWhat((cut ? "Cut > Paste of " : "Copy > Paste of ") + std::to_string(arrived) +
                    " files");
    TakeMarksAlong(m.marks, changes);
    changes.Close();
    m.navigation.RefreshDirButton_Click();
    if (arrived > 0) ShowPasted(LastPart(sources[arrived - 1]));
    if (cut) EndCut(arrived, sources.size());
    if (report.message.empty())
        report.message =
            (cut ? "Cut > Paste " : "Copy > Paste ") + std::to_string(sources.size()) + " files";
    m.shell.ShowMessage(report.message + dropped.Word());
    if (!report.error.empty()) m.shell.ShowError(report.error);
}

// What has arrived need not come again when the rest is pasted.
void CopyPaste::EndCut(std::size_t arrived, std::size_t all) {
    if (arrived == all) {
        SetEnabled(m.controls.PasteButton, false);
        return;
    }
    if (m_theirs) return;
    m_files.erase(m_files.begin(), m_files.begin() + static_cast<std::ptrdiff_t>(arrived));
    m.clipboard.SetFiles({m_files, true});
}

// Those that arrived whole; the report tells why it was not all of them. What stands under a name
// in another case is another file.
std::vector<NewNamePlan> CopyPaste::PutAll(const std::vector<std::string>& sources, bool cut,
                                           Changes& changes, Report& report) {
    const std::string folder = m.controls.FileListBox->Path(); // whatever is chosen meanwhile
    Belongings belongings(m.files, {}); // notes keep their names and lie in one folder
    std::vector<NewNamePlan> put;
    const BatchRun batch(m);
    if (!PlanPaste(sources, folder, cut, changes, PlanningSteps(batch, sources.size()))) {
        report.message = "Paste cancelled after 0 of " + std::to_string(sources.size()) + " files";
        return put;
    }
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const std::string name = LastPart(sources[i]);
        if (!batch.Step("FileCopy (" + std::to_string(i + 1) + " of " +
                        std::to_string(sources.size()) + ") '" + name + "'")) {
            report.message = "Paste cancelled after " + std::to_string(i) + " of " +
                             std::to_string(sources.size()) + " files";
            return put;
        }
        std::string error;
        const NewNamePlan plan = PlanPlace(belongings, sources[i], JoinPath(folder, name));
        const std::size_t before = changes.Count();
        if (!Put(plan, cut, m.files, changes, &error)) {
            std::string ignored; // the first fault is the one to tell
            changes.TakeBack(before, &ignored);
            report.message = "Paste failed for '" + name + "'";
            report.error = std::move(error);
            report.error.append(" - ").append(name);
            return put;
        }
        put.push_back(plan);
    }
    return put;
}

// The last that was pasted, looked for from the second row on; the second row when it is not found.
void CopyPaste::ShowPasted(const std::string& name) {
    const FileListBox& list = *m.controls.FileListBox;
    const int row = list.RowOf(name);
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(row >= 1 ? row : std::min(1, list.Count() - 1));
}

} // namespace tarn
