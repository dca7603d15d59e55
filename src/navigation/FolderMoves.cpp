// NavigationRoom: from folder to folder, by the tree, the buttons, the history and at the start.
#include "common/paths.h"
#include "navigation/FolderHistory.h"
#include "navigation/NavigationRoom.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/PictureBox.h"

#include <QPushButton>
#include <QScopedValueRollback>

#include <algorithm>

namespace tarn {

void NavigationRoom::FolderTreeview1_Selection(const std::string& path) {
    if (!m.state.FormLoadDone)
        LoadStartFolder();
    else if (EnterFolder(path))
        EnableListCommands();
    else
        ShowHint();
}

void NavigationRoom::LoadStartFolder() {
    ProgramState& s = m.state;
    FolderTreeview& tree = *m.controls.FolderTreeview1;
    // The tree answers a set path with this very event: ask it once only.
    if (tree.SelectedPath() != s.StartFolder) {
        tree.SetSelectedPath(s.StartFolder);
        return;
    }
    tree.Reveal(s.StartFolder);
    if (!m.controls.FileListBox->SetPath(s.StartFolder)) {
        m.shell.ShowStatus("Cannot set path to " + s.StartFolder);
        s.HistCur = 0;
    }
    SetHistoryButtons();
    m.copies.FolderChanged();
}

bool NavigationRoom::EnterFolder(const std::string& path) {
    m_find.Close();
    m.shell.ShowStatus("Nothing to display in current folder.");
    const bool entered = m.files.IsFolder(path) && m.controls.FileListBox->SetPath(path);
    if (entered) {
        m_historyList.GiveUp(); // its rows count entries
        if (!m.state.HistNav && !RecordFolder(m.state, path))
            m.shell.ShowMessage("WARNING - Upper limit reached for folder history");
        SetHistoryButtons();
        m.copies.FolderChanged();
    }
    ResetFileHistory(false);
    return entered; // else the list keeps its folder, and nothing is selected in it
}

void NavigationRoom::SetHistoryButtons() {
    const ProgramState& s = m.state;
    const auto tooltip = [&s](int entry) {
        return ToToolTip(s.HistFolderPath[static_cast<std::size_t>(entry)]);
    };
    SetEnabled(m.controls.FolderBackButton, HasFolderBefore(s));
    if (HasFolderBefore(s)) m.controls.FolderBackButton->setToolTip(tooltip(FolderBefore(s)));
    SetEnabled(m.controls.FolderFwdButton, HasFolderAfter(s));
    if (HasFolderAfter(s)) m.controls.FolderFwdButton->setToolTip(tooltip(s.HistCur + 1));
}

void NavigationRoom::EnableListCommands() {
    if (!m.state.FormLoadDone) return;
    const FileListBox& list = *m.controls.FileListBox;
    const bool hasRows = list.Count() > 0;
    if (hasRows && !m.state.HistNav) {
        ClearMultiselect();
        SelectRow(std::max(0, list.RowOf(m_wanted)));
    }
    Update_Num_Files(0);
    m.shell.SetListCommands(hasRows);
    ShowHint();
}

void NavigationRoom::ShowHint() {
    const FileListBox& list = *m.controls.FileListBox;
    const std::string folder = m.controls.FolderTreeview1->SelectedPath();
    const bool hasRows = list.Count() > 0 && list.Path() == folder;
    std::string hint = "Choose a picture from the list.";
    if (!m.files.IsFolder(folder))
        hint = "The folder " + folder + " does not exist. Choose another in the tree.";
    else if (!hasRows && !m.files.FileNames(folder))
        hint = "The folder " + folder + " cannot be read. Choose another in the tree.";
    else if (!hasRows && m.state.FilterActive)
        hint = "No file of " + folder + " fits the filter '" + list.Pattern() + "'.";
    else if (!hasRows && m_arrangement.ChoosesByMark())
        hint = "No file of " + folder + " is marked so. The box beside Filter lists all.";
    else if (!hasRows)
        hint = "No files to show in " + folder + ". " +
               (m_filter.Hidden().empty()
                    ? "Choose a folder in the tree, or drop one here."
                    : m_filter.Hidden() + ": the line above the list shows them.");
    m.controls.Picture1->SetHint(hint);
}

void NavigationRoom::OpenFolder(const std::string& folder, const std::string& name) {
    if (!m.files.IsFolder(folder)) {
        m.shell.ShowStatus("Cannot set path to " + folder);
        return;
    }
    const FileListBox& list = *m.controls.FileListBox;
    if (folder != list.Path() || name.empty()) {
        const QScopedValueRollback<std::string> wanted(m_wanted, name);
        m.controls.FolderTreeview1->SetSelectedPath(folder);
        m.controls.FolderTreeview1->Reveal(folder);
    } else {
        if (list.LeavesOut(name)) m_find.Close();
        if (list.LeavesOut(name)) m_arrangement.ListAllMarks();
        if (list.RowOf(name) < 0) RefreshDirButton_Click(); // made since the folder was read
        ShowNamed(name);
    }
    if (name.empty() || list.RowOf(name) >= 0) return;
    ListClassOf(JoinPath(folder, name));
    ShowNamed(name);
    if (list.RowOf(name) < 0)
        m.shell.ShowMessage("'" + JoinPath(folder, name) + "' is not among the files listed");
}

void NavigationRoom::ShowNamed(const std::string& name) {
    const int row = m.controls.FileListBox->RowOf(name);
    if (row < 0) return;
    ClearMultiselect();
    SelectRow(row);
}

// False for a folder that cannot be shown: the tree is back where it was, as the list is.
bool NavigationRoom::MoveTree(const std::string& folder) {
    FolderTreeview& tree = *m.controls.FolderTreeview1;
    const std::string before = tree.SelectedPath();
    tree.SetSelectedPath(folder);
    if (m.controls.FileListBox->Path() == WithoutTrailingSeparator(folder) &&
        m.files.IsFolder(folder))
        return true;
    tree.PutBack(before);
    ShowHint();
    return false;
}

void NavigationRoom::GoToFolder(int entry) {
    m_find.Close(); // its rows are not those of the entries
    const int before = m.state.HistCur;
    m.state.HistCur = entry;
    {
        const QScopedValueRollback<bool> navigating(m.state.HistNav, true);
        if (!MoveTree(m.state.HistFolderPath[static_cast<std::size_t>(entry)])) {
            m.state.HistCur = before;
            return;
        }
    }
    ClearMultiselect(); // the entry may stand for the same folder
    SelectRow(m.state.HistFileIndex[static_cast<std::size_t>(entry)]);
}

void NavigationRoom::FolderBackButton_Click() {
    if (HasFolderBefore(m.state)) GoToFolder(FolderBefore(m.state));
}

void NavigationRoom::FolderFwdButton_Click() {
    if (HasFolderAfter(m.state)) GoToFolder(m.state.HistCur + 1);
}

void NavigationRoom::GotoCopyFolderButton_Click() {
    const std::string& folder = m.state.CopyImageFolder;
    if (folder.empty()) {
        m.shell.ShowMessage("'Copy to' folder not set, cannot display files");
        return;
    }
    const bool shown = MoveTree(folder);
    if (shown) m.controls.FolderTreeview1->Reveal(folder);
    m.shell.ShowMessage(shown ? "Viewing set to 'Copy to' folder"
                              : "'Copy to' folder '" + folder + "' cannot be displayed");
}

void NavigationRoom::FolderUpButton_Click() {
    const std::string& here = m.controls.FolderTreeview1->SelectedPath();
    const std::string above = FolderOf(here);
    if (!above.empty() && above != here) m.controls.FolderTreeview1->SetSelectedPath(above);
}

} // namespace tarn
