#include "fileops/frmRenameFiles.h"

#include "common/dates.h"
#include "common/paths.h"
#include "common/text.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/KeptFiles.h"
#include "fileops/MarksAlong.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStringListModel>

#include <algorithm>
#include <unordered_map>

namespace tarn {

namespace {

constexpr int kProgressEvery = 50; // milliseconds
constexpr char kHiddenNote[] = ".enf";

QStringList Column(const std::vector<RenameRow>& rows, std::string RenameRow::*name) {
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(rows.size()));
    for (const RenameRow& row : rows) texts.append(ToQt(row.*name));
    return texts;
}

// A picture whose name is its ending has a note that no list shows.
std::optional<std::vector<std::string>> NoteNames(const Files& files, const std::string& folder,
                                                  std::string* error) {
    auto names = files.FileNames(folder, error);
    if (!names) return names;
    if (files.Exists(JoinPath(folder, kHiddenNote))) names->emplace_back(kHiddenNote);
    return names;
}

} // namespace

const std::string& frmRenameFiles::Folder() const {
    return m_list->Path();
}

void frmRenameFiles::OpenWindow() {
    const FileListBox& main = *m.controls.FileListBox;
    m_currentPath = m.state.Filename;
    m_said.clear();
    m_say->clear();
    m_tree->SetSelectedPath(main.Path());
    m_tree->Reveal(main.Path());
    NarrowToKept();
    SetPattern(); // the types may be others by now
    SelectAsIn(main);
    show();
    raise();
    activateWindow();
    m_from->setFocus();
}

// At one go, however many there are.
void frmRenameFiles::SelectAsIn(const FileListBox& main) {
    std::unordered_map<std::string, int> rows;
    for (int row = 0; row < m_list->Count(); ++row) rows.emplace(m_list->Text(row), row);
    QItemSelection selection;
    for (const int row : main.SelectedRows()) {
        const auto found = rows.find(main.Text(row));
        if (found == rows.end()) continue;
        const int here = found->second;
        const QModelIndex index = m_list->model()->index(here, 0);
        if (!selection.isEmpty() && selection.last().bottom() + 1 == here)
            selection.last() = QItemSelectionRange(selection.last().topLeft(), index);
        else
            selection.append(QItemSelectionRange(index));
    }
    if (selection.isEmpty()) {
        m_list->UnselectAll();
        return;
    }
    const QModelIndex first = selection.first().topLeft();
    m_list->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    m_list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_list->scrollTo(first);
}

void frmRenameFiles::reject() {
    if (m_running) {
        m.state.BatchCancelled = true;
        return;
    }
    if (!isVisible()) return;
    QDialog::reject();
    if (onClosed) onClosed();
}

void frmRenameFiles::FolderTreeview1_Selection(const std::string& path, bool& cancel) {
    const bool same = path == m_list->Path();
    if (!m.files.IsFolder(path) || !m_list->SetPath(path)) {
        m_say->setText(ToQt("Cannot set path to " + path));
        cancel = true;
        return;
    }
    if (same) m_list->Refresh();
    // Marks are known of the folder that the main window shows.
    const bool isKnown = path == m.controls.FileListBox->Path();
    m_keptOnly->setEnabled(isKnown);
    if (!isKnown) m_keptOnly->setChecked(false);
    BuildRenameLists();
}

void frmRenameFiles::SetPattern() {
    m_list->SetPattern(m_showAll->isChecked() ? "*.*" : m.state.PictureTypes);
    BuildRenameLists();
}

void frmRenameFiles::NarrowToKept() {
    if (m_keptOnly->isChecked())
        m_list->Narrow(
            [this](const std::string& name) { return IsKept(m, JoinPath(m_list->Path(), name)); });
    else
        m_list->Narrow({});
    BuildRenameLists();
}

void frmRenameFiles::BuildRenameLists() {
    if (m_building) return;
    const QScopedValueRollback<bool> building(m_building, true);
    const std::string from = FromQt(m_from->text());
    m_date->clear();
    std::vector<std::string> names;
    if (!from.empty()) {
        if (m_all->isChecked()) m_list->SelectEveryRow();
        for (const int row : m_list->SelectedRows()) names.push_back(m_list->Text(row));
    }
    m_rows = RenameRows(names, from, FromQt(m_to->text()));
    m_inputs->setStringList(Column(m_rows, &RenameRow::from));
    m_outputs->setStringList(Column(m_rows, &RenameRow::to));
    m_count->setText(QString::number(m_rows.size()));
    if (!m_running) ClearResults();
}

void frmRenameFiles::ClearResults() {
    m_errors->clear();
    m_errorFrame->setTitle(QStringLiteral("No Rename Errors"));
    m_done->clear();
    m_notesDone->clear();
    m_say->clear();
}

void frmRenameFiles::RenameInputList_Click(int row) {
    m_date->clear();
    if (row < 0 || row >= static_cast<int>(m_rows.size())) return;
    const auto time =
        m.files.ModifiedTime(JoinPath(Folder(), m_rows[static_cast<std::size_t>(row)].from));
    if (time) m_date->setText(ToQt(FormatDateText(FromFileTime(*time))));
}

std::string frmRenameFiles::FirstSelected() const {
    const std::vector<int> rows = m_list->SelectedRows();
    return rows.empty() ? std::string() : m_list->Text(rows.front());
}

void frmRenameFiles::PasteSelectedName(QLineEdit& box) {
    const int current = m_list->CurrentRow();
    const std::string name = m_list->IsSelected(current) ? m_list->Text(current) : FirstSelected();
    if (name.empty()) return;
    box.setText(ToQt(name));
    box.setFocus();
}

void frmRenameFiles::RenameFile_DblClick() {
    const int row = m_list->CurrentRow();
    if (row < 0) return;
    const std::string& name = m_list->Text(row);
    const std::string failure = m.desktop.EditText(JoinPath(Folder(), name));
    if (!failure.empty())
        m.dialogs.Message(Dialogs::Icon::Exclamation, "File " + name,
                          "File not Opened, Error # " + failure);
}

void frmRenameFiles::CommandDir_Click() {
    m.navigation.RefreshDirButton_Click();
}

void frmRenameFiles::CommandView_Click() {
    const FileListBox& main = *m.controls.FileListBox;
    const std::string name = FirstSelected();
    if (name.empty()) return;
    const bool here = Folder() == main.Path();
    if (here && main.RowOf(name) < 0) CommandDir_Click(); // it may have been renamed just now
    const int row = here ? main.RowOf(name) : -1;
    if (row < 0) {
        m_say->setText(ToQt("'" + name + "' is not in the main window's list"));
        return;
    }
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(row);
    m_currentPath = m.state.Filename;
    m_say->setText(ToQt("'" + name + "' is shown in the main window"));
}

// What is being written for the main window's picture goes along with it.
bool frmRenameFiles::KeepWrittenNote() {
    const bool takesPart = std::any_of(m_rows.begin(), m_rows.end(), [this](const RenameRow& row) {
        // Or shares its note.
        return FoldCase(NoteNameOf(row.from)) == FoldCase(NoteNameOf(LastPart(m_currentPath)));
    });
    if (!takesPart || m.state.NotesFolder.empty()) return true;
    const Outcome saved = m.notes.SaveIfUnsaved();
    m.shell.Tell(saved);
    if (saved) return true;
    m_say->setText(QStringLiteral("The note of the picture on show cannot be saved; nothing was "
                                  "renamed"));
    return false;
}

void frmRenameFiles::RenameCommand_Click() {
    if (m_running) return;
    ClearResults();
    if (!KeepWrittenNote()) return;
    if (const Outcome written = m.marks.Flush(); !written) {
        m_say->setText(ToQt(written.text));
        return;
    }
    {
        Changes changes(m.history, "Rename of pictures");
        const QScopedValueRollback<bool> running(m_running, true);
        RenameAll(changes);
        m_list->Refresh();
        BuildRenameLists(); // whose results stay on the screen
    }
    m.notes.NoteFilesChanged();
    m_list->setFocus();
}

// Nothing is renamed that could lose its note.
void frmRenameFiles::RenameAll(Changes& changes) {
    std::string error;
    const auto before = m.files.FileNames(Folder(), &error);
    const std::string& notesFolder = m.state.NotesFolder;
    const bool takesNotes =
        !notesFolder.empty() && (m_moveNotes->isChecked() || m_copyNotes->isChecked());
    const auto notes = takesNotes && before ? NoteNames(m.files, notesFolder, &error)
                                            : std::optional(std::vector<std::string>());
    if (!before || !notes) {
        RefuseAll(error + " - " + (before ? notesFolder : Folder()));
        return;
    }
    std::vector<std::string> standing = *before; // also folders are in the way
    for (const std::string& name : m.files.FolderNames(Folder())) standing.push_back(name);
    RenamePlan plan = PlanRenames(Folder(), m_rows, standing);
    RenamePlan noted = PlanAll(plan, *before, *notes, changes);
    const std::size_t planned = plan.rows.size();
    RenameRun run(std::move(plan), changes);
    const BatchRun batch(m, m_cancel);
    const bool whole = CarryOut(run, batch, "Renaming ", true);
    ShowFaults(run.Faults(), "files not renamed");
    const std::string count = std::to_string(run.Moved().size());
    m_done->setText(ToQt(count + " files renamed"));
    const bool isAsPlanned = run.Faults().empty() && run.Moved().size() == planned;
    RenameNotes(isAsPlanned ? std::move(noted) : PlanNotes(run.Moved(), *before, *notes), batch,
                changes);
    RenameSidecars(run.Moved(), *before, batch, changes);
    Follow(run.Moved());
    if (!whole)
        m_say->setText(QStringLiteral("Cancelled"));
    else if (m_errors->count() > 0)
        m_errors->setCurrentRow(0); // which says why
    else
        m_say->clear();
    m_said = count + " files renamed";
    m.shell.ShowMessage(m_said);
    changes.SetWhat("Rename of " + count + " pictures");
    TakeMarksAlong(m.marks, changes);
}

// What has been moved is not there to be copied.
RenamePlan frmRenameFiles::PlanNotes(const std::vector<RenameRow>& moved,
                                     const std::vector<std::string>& before,
                                     const std::vector<std::string>& notes) const {
    const std::string& folder = m.state.NotesFolder;
    const bool copies = !m_moveNotes->isChecked();
    if (folder.empty() || moved.empty() || (copies && !m_copyNotes->isChecked())) return {};
    return PlanRenames(folder, NoteRows(moved, before, notes, copies), notes);
}

// Pictures, notes and sidecars as they will go unless something is in the way; the plan of the
// notes.
RenamePlan frmRenameFiles::PlanAll(const RenamePlan& pictures,
                                   const std::vector<std::string>& before,
                                   const std::vector<std::string>& notes, Changes& changes) const {
    std::vector<Step> steps;
    AddSteps(pictures, changes, steps);
    RenamePlan noted = PlanNotes(pictures.rows, before, notes);
    AddSteps(noted, changes, steps);
    if (auto sidecars = SidecarRows(pictures.rows, before); !sidecars.empty())
        AddSteps(PlanRenames(Folder(), std::move(sidecars), before), changes, steps);
    changes.PlanWhole(std::move(steps));
    return noted;
}

void frmRenameFiles::RefuseAll(const std::string& why) {
    std::vector<RenameFault> faults;
    for (const RenameRow& row : m_rows) faults.push_back({row.from, row.to, why});
    ShowFaults(faults, "files not renamed");
    m_done->setText(QStringLiteral("0 files renamed"));
    m_say->setText(ToQt(why));
}

// False when it was stopped.
bool frmRenameFiles::CarryOut(RenameRun& run, const BatchRun& batch, const std::string& doing,
                              bool stops) {
    m_cancel->setEnabled(stops);
    QElapsedTimer sinceShown;
    while (!run.IsDone()) {
        if (!sinceShown.isValid() || sinceShown.elapsed() >= kProgressEvery) {
            const std::string text = doing + std::to_string(run.Number() + 1) + " of " +
                                     std::to_string(run.Size()) + " - " + run.NextName();
            m_say->setText(ToQt(text));
            if (!batch.Step(text) && stops) return false;
            sinceShown.start();
        }
        run.Step();
    }
    return true;
}

// A picture without its note is worse than a late end: notes are moved or copied to the last,
// whatever is pressed.
void frmRenameFiles::RenameNotes(RenamePlan plan, const BatchRun& batch, Changes& changes) {
    const bool moves = m_moveNotes->isChecked();
    RenameRun run(std::move(plan), changes);
    CarryOut(run, batch, moves ? "Renaming note " : "Copying note ", false);
    ShowFaults(run.Faults(), moves ? "notes not renamed" : "notes not copied");
    const QString count = QString::number(run.Moved().size());
    if (moves) m_notesDone->setText(count + QStringLiteral(" notes renamed"));
    if (m_copyNotes->isChecked())
        m_notesDone->setText((moves ? QStringLiteral("0") : count) +
                             QStringLiteral(" notes copied"));
}

// To the last, too. What stands there by now are the files under their new names.
void frmRenameFiles::RenameSidecars(const std::vector<RenameRow>& moved,
                                    const std::vector<std::string>& before, const BatchRun& batch,
                                    Changes& changes) {
    std::vector<RenameRow> rows = SidecarRows(moved, before);
    if (rows.empty()) return;
    std::string error;
    auto standing = m.files.FileNames(Folder(), &error);
    if (!standing) {
        std::vector<RenameFault> faults;
        for (const RenameRow& row : rows) faults.push_back({row.from, row.to, error});
        return ShowFaults(faults, "sidecars not renamed");
    }
    for (const std::string& name : m.files.FolderNames(Folder())) standing->push_back(name);
    RenameRun run(PlanRenames(Folder(), std::move(rows), *standing), changes);
    CarryOut(run, batch, "Renaming sidecar ", false);
    ShowFaults(run.Faults(), "sidecars not renamed");
}

// Each list is counted by itself in the frame's title.
void frmRenameFiles::ShowFaults(const std::vector<RenameFault>& faults, const char* what) {
    if (faults.empty()) return;
    for (const RenameFault& fault : faults) {
        auto* item = new QListWidgetItem(ToQt(fault.from + " > " + fault.to), m_errors);
        item->setToolTip(ToToolTip(fault.why));
        item->setData(Qt::UserRole, ToQt(fault.from + " - " + fault.why));
    }
    const bool first = m_errors->count() == static_cast<int>(faults.size());
    m_errorFrame->setTitle((first ? QString() : m_errorFrame->title() + QStringLiteral(", ")) +
                           QString::number(faults.size()) + QLatin1Char(' ') +
                           QString::fromLatin1(what));
}

void frmRenameFiles::Follow(const std::vector<RenameRow>& moved) {
    for (const RenameRow& row : moved)
        if (JoinPath(Folder(), row.from) == m_currentPath) {
            m_currentPath = JoinPath(Folder(), row.to);
            return;
        }
}

} // namespace tarn
