#include "fileops/ImportExport.h"

#include "common/paths.h"
#include "common/patterns.h"
#include "common/text.h"
#include "desk/batch/BatchRun.h"
#include "fileops/CopyQuestion.h"
#include "fileops/CopyRun.h"
#include "fileops/MarksAlong.h"
#include "history/Changes.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QAction>

#include <algorithm>
#include <filesystem>

namespace tarn {

namespace {

bool SameFolder(const std::string& a, const std::string& b) {
    std::error_code ignored; // a folder that is not there is no other
    return !a.empty() && !b.empty() && std::filesystem::equivalent(a, b, ignored);
}

} // namespace

void ImportExport::ConnectControls() {
    const MainControls& c = m.controls;
    Connect(c.ImportNotesFilesButton, [this] { ImportNotesFilesButton_Click(); });
    Connect(c.ImportButton, [this] { ImportButton_Click(); });
    Connect(c.ImportNotesFormat, [this] { ImportNotesFormat_Click(); });
    Connect(c.CopySelectedNotesFilesButton, [this] { CopySelectedNotesFilesButton_Click(); });
    Connect(c.CopyNotesFilesButton, [this] { CopyNotesFilesButton_Click(); });
    for (int i = 0; i < static_cast<int>(c.ExportFilesButton.size()); ++i)
        Connect(c.ExportFilesButton[static_cast<std::size_t>(i)],
                [this, i] { ExportFilesButton_Click(i); });
    Connect(c.ExportNotesFormat, [this] { ExportNotesFormat_Click(); });
}

std::vector<std::string> ImportExport::ListedNames(bool selectedOnly) const {
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<std::string> names;
    for (int row = 0; row < list.Count(); ++row)
        if (!selectedOnly || list.IsSelected(row)) names.push_back(list.Text(row));
    return names;
}

// The folder shown and the notes folder hold what is in use: nothing is exported into them, and
// nothing is imported from them.
bool ImportExport::IsOurs(const std::string& folder, const std::string& what) {
    std::string which;
    if (SameFolder(folder, m.controls.FileListBox->Path())) which = "the folder shown";
    if (SameFolder(folder, m.state.NotesFolder)) which = "the notes folder";
    if (which.empty()) return false;
    m.shell.ShowMessage("ERROR - " + which + " cannot be the " + what);
    return true;
}

// Without one a note's path would lead into whatever folder the program was started in.
bool ImportExport::HasNotesFolder() {
    if (!m.state.NotesFolder.empty()) return true;
    m.shell.ShowMessage("Notes folder has not been set");
    return false;
}

std::string ImportExport::AskForSource(const std::string& title) {
    const std::string folder = m.dialogs.ChooseFolder(title, m.controls.FileListBox->Path());
    return folder.empty() || IsOurs(folder, "source of an import")
               ? std::string()
               : WithoutTrailingSeparator(folder);
}

std::string ImportExport::AskForTarget(const std::string& title) {
    const std::string folder = m.dialogs.ChooseFolder(title, m.controls.FileListBox->Path());
    return folder.empty() || IsOurs(folder, "target of an export")
               ? std::string()
               : WithoutTrailingSeparator(folder);
}

void ImportExport::ImportNotesFilesButton_Click() {
    if (!HasNotesFolder()) return;
    // Notes may well lie beside the pictures shown.
    const std::string chosen =
        m.dialogs.ChooseFolder("Import notes from folder", m.controls.FileListBox->Path());
    if (chosen.empty()) return;
    const std::string source = WithoutTrailingSeparator(chosen);
    if (SameFolder(source, m.state.NotesFolder)) {
        m.shell.ShowMessage("ERROR - the notes folder cannot be the source of an import");
        return;
    }
    CopyRequest request;
    request.notesFrom = source;
    request.notesTo = m.state.NotesFolder;
    request.everyNote = true;
    Import(request, m.state.NotesFolder);
}

void ImportExport::ImportButton_Click() {
    if (m.controls.FileListBox->Path().empty()) {
        m.shell.ShowMessage("No folder is shown");
        return;
    }
    const std::string source = AskForSource("Import files and notes from folder");
    if (source.empty()) return;
    std::string error;
    auto names = m.files.FileNames(source, &error);
    if (!names) {
        m.shell.ShowMessage("ERROR - " + source + " - " + error);
        return;
    }
    const NamePatterns listed(m.controls.FileListBox->Pattern());
    std::erase_if(*names, [&](const std::string& name) {
        return !listed.Matches(name) || EndsWith(FoldCase(name), ".ENF");
    });
    std::sort(names->begin(), names->end());
    CopyRequest request;
    request.files = std::move(*names);
    request.filesFrom = request.notesFrom = source;
    request.filesTo = m.controls.FileListBox->Path();
    request.notesTo = m.state.NotesFolder;
    request.everyNote = true;
    Import(request, request.filesTo);
}

void ImportExport::ImportNotesFormat_Click() {
    if (!HasNotesFolder()) return;
    const std::string file =
        m.dialogs.OpenFile("Import Notes Format Settings file", m.controls.FileListBox->Path(),
                           "Text files (*.txt);;All files (*)");
    if (file.empty()) return;
    m.shell.Tell(Run(PlanOneCopy(file, m.state.NotesFolder, m.state.NFSfilename, m.files),
                     "Imported", m.state.NotesFolder));
}

void ImportExport::CopySelectedNotesFilesButton_Click() {
    ExportNotes(true);
}

void ImportExport::CopyNotesFilesButton_Click() {
    ExportNotes(false);
}

void ImportExport::ExportNotes(bool selectedOnly) {
    CopyRequest request;
    request.files = ListedNames(selectedOnly);
    if (request.files.empty()) {
        m.shell.ShowMessage("No files to export");
        return;
    }
    request.notesTo = AskForTarget("Export notes to folder");
    if (request.notesTo.empty()) return;
    request.notesFrom = m.state.NotesFolder;
    m.shell.Tell(PlanAndRun(request, "Exported", request.notesTo));
}

void ImportExport::ExportFilesButton_Click(int index) {
    const bool selectedOnly = index == 0 || index == 2;
    const bool withNotes = index < 2;
    CopyRequest request;
    request.files = ListedNames(selectedOnly);
    if (request.files.empty()) {
        m.shell.ShowMessage("No files to export");
        return;
    }
    const std::string target =
        AskForTarget(withNotes ? "Export files and notes to folder" : "Export files to folder");
    if (target.empty()) return;
    request.filesFrom = m.controls.FileListBox->Path();
    request.filesTo = target;
    if (withNotes) {
        request.notesFrom = m.state.NotesFolder;
        request.notesTo = target;
    }
    m.shell.Tell(PlanAndRun(request, "Exported", target));
}

void ImportExport::ExportNotesFormat_Click() {
    if (!HasNotesFolder()) return;
    const std::string target = AskForTarget("Export Notes Format Settings file to folder");
    if (target.empty()) return;
    const std::string& name = m.state.NFSfilename;
    m.shell.Tell(Run(PlanOneCopy(JoinPath(m.state.NotesFolder, name), target, name, m.files),
                     "Exported", target));
}

Outcome ImportExport::PlanAndRun(const CopyRequest& request, const std::string& verb,
                                 const std::string& to) {
    if (Outcome written = m.marks.Flush(); !written) return written;
    std::string error;
    auto plan = PlanCopies(request, m.files, &error);
    return plan ? Run(std::move(*plan), verb, to)
                : Outcome::Refused("ERROR - a folder cannot be read: " + error);
}

namespace {

std::vector<Step> StepsOf(const CopyPlan& plan, Changes& changes) {
    std::vector<Step> steps;
    for (const CopyUnit& unit : plan)
        for (const PlannedCopy& copy : unit.copies) {
            if (copy.stands) steps.push_back(changes.PlanThrow(copy.to));
            steps.push_back(changes.PlanCopy(copy.from, copy.to));
            if (!copy.givesWay.empty()) steps.push_back(changes.PlanThrow(copy.givesWay));
        }
    return steps;
}

} // namespace

Outcome ImportExport::Run(CopyPlan plan, const std::string& verb, const std::string& to) {
    int skipped = 0;
    if (!AskWhatStands(m, plan, verb == "Imported" ? "Import" : "Export", skipped))
        return Outcome::Refused("Cancelled, nothing was copied");
    Changes changes(m.history, verb + " to '" + to + "'");
    changes.PlanWhole(StepsOf(plan, changes));
    CopyRun run(std::move(plan), changes);
    run.counts.skipped = skipped;
    const std::string doing = verb == "Imported" ? "Importing " : "Exporting ";
    bool goesOn = true;
    const BatchRun batch(m);
    while (goesOn && !run.Done()) {
        goesOn = batch.Step(doing + std::to_string(run.Number()) + " of " +
                            std::to_string(run.Size()) + " - " + LastPart(run.NextPath()));
        if (goesOn) run.Step();
    }
    changes.SetWhat(verb + " " + CountText(run.counts.files, run.counts.notes) + " to '" + to +
                    "'");
    TakeMarksAlong(m.marks, changes);
    return {goesOn && run.counts.failed == 0,
            ReportText(run.counts, verb, to, !goesOn),
            {},
            run.counts.faults};
}

// The list shows the new files; a note that came for the file on show is shown, unless one is being
// written.
void ImportExport::Import(const CopyRequest& request, const std::string& to) {
    const Outcome said = PlanAndRun(request, "Imported", to);
    m.notes.NoteFilesChanged();
    m.navigation.RefreshDirButton_Click();
    m.shell.Tell(said);
}

} // namespace tarn
