#include "common/paths.h"
#include "navigation/FolderHistory.h"
#include "navigation/NavigationRoom.h"
#include "platform/FileListBox.h"
#include "platform/FolderTreeview.h"
#include "platform/Files.h"
#include "platform/PictureBox.h"
#include "platform/QtText.h"

#include <QPushButton>
#include <QScopedValueRollback>

#include <algorithm>

namespace tarn {

void NavigationRoom::FolderTreeview1_Selection(const std::string& path) {
    if (!m.state.FormLoadDone)
        LoadStartFolder();
    else
        EnterFolder(path);
    EnableListCommands();
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
    if (m.controls.FileListBox->SetPath(s.StartFolder)) return;
    m.shell.ShowStatus("Cannot set path to " + s.StartFolder);
    s.HistCur = 0;
}

void NavigationRoom::EnterFolder(const std::string& path) {
    m.shell.ShowStatus("Nothing to display in current folder.");
    if (m.controls.FileListBox->SetPath(path)) {
        if (!m.state.HistNav && !RecordFolder(m.state, path))
            m.shell.ShowMessage("WARNING - Upper limit reached for folder history");
        SetHistoryButtons();
    }
    ResetFileHistory(false);
}

void NavigationRoom::SetHistoryButtons() {
    const ProgramState& s = m.state;
    const auto tooltip = [&s](int entry) {
        return entry >= 0 && entry <= kHistoryLimit
                   ? ToQt(s.HistFolderPath[static_cast<std::size_t>(entry)]).toHtmlEscaped()
                   : QString();
    };
    SetEnabled(m.controls.FolderBackButton, HasFolderBefore(s));
    if (HasFolderBefore(s)) m.controls.FolderBackButton->setToolTip(tooltip(s.HistCur - 1));
    SetEnabled(m.controls.FolderFwdButton, HasFolderAfter(s));
    if (HasFolderAfter(s)) m.controls.FolderFwdButton->setToolTip(tooltip(s.HistCur + 1));
}

void NavigationRoom::EnableListCommands() {
    if (!m.state.FormLoadDone) return;
    const FileListBox& list = *m.controls.FileListBox;
    const bool hasRows = list.Count() > 0;
    if (hasRows && !m.state.HistNav) SelectRow(std::max(0, list.RowOf(m_wanted)));
    Update_Num_Files(0);
    m.shell.SetListCommands(hasRows);
    ShowHint();
}

void NavigationRoom::ShowHint() {
    const std::string folder = m.controls.FolderTreeview1->SelectedPath();
    std::string hint = "Choose a picture from the list.";
    if (!m.files.IsFolder(folder))
        hint = "The folder " + folder + " does not exist. Choose another in the tree.";
    else if (!m.files.FileNames(folder))
        hint = "The folder " + folder + " cannot be read. Choose another in the tree.";
    else if (m.controls.FileListBox->Count() < 1)
        hint = "No files to show in " + folder + ". Choose a folder in the tree, or drop one here.";
    m.controls.Picture1->SetHint(hint);
}

void NavigationRoom::OpenPath(const std::string& path) {
    const std::string absolute = WithoutTrailingSeparator(m.files.Absolute(path));
    if (m.files.IsFolder(absolute)) {
        m.controls.FolderTreeview1->SetSelectedPath(absolute);
        m.controls.FolderTreeview1->Reveal(absolute);
        return;
    }
    const std::string folder = FolderOf(absolute);
    const std::string name = LastPart(absolute);
    if (folder != m.controls.FileListBox->Path()) {
        m_wanted = name;
        m.controls.FolderTreeview1->SetSelectedPath(folder);
        m.controls.FolderTreeview1->Reveal(folder);
        m_wanted.clear();
    } else {
        ClearMultiselect();
        SelectRow(m.controls.FileListBox->RowOf(name));
    }
    if (m.controls.FileListBox->RowOf(name) < 0)
        m.shell.ShowMessage("'" + absolute + "' is not among the files listed");
}

void NavigationRoom::GoToFolder(int entry) {
    const int before = m.state.HistCur;
    const std::string path = m.state.HistFolderPath[static_cast<std::size_t>(entry)];
    m.state.HistCur = entry;
    {
        const QScopedValueRollback<bool> navigating(m.state.HistNav, true);
        m.controls.FolderTreeview1->SetSelectedPath(path);
    }
    if (m.controls.FileListBox->Path() != path) {
        m.state.HistCur = before; // the folder has gone
        return;
    }
    SelectRow(m.state.HistFileIndex[static_cast<std::size_t>(entry)]);
}

void NavigationRoom::FolderBackButton_Click() {
    if (HasFolderBefore(m.state)) GoToFolder(m.state.HistCur - 1);
}

void NavigationRoom::FolderFwdButton_Click() {
    if (HasFolderAfter(m.state)) GoToFolder(m.state.HistCur + 1);
}

void NavigationRoom::FolderUpButton_Click() {
    const std::string above = FolderOf(m.controls.FolderTreeview1->SelectedPath());
    if (!above.empty()) m.controls.FolderTreeview1->SetSelectedPath(above);
}

} // namespace tarn
