#include "navigation/ContextMenus.h"

#include "common/paths.h"
#include "platform/Clipboard.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"

#include <QAction>
#include <QMenu>
#include <QTimer>

namespace tarn {

void ContextMenus::ConnectControls() {
    MainControls& c = m.controls;
    c.FileListBox->onMenu = [this](int row, QPoint at) { ShowListMenu(row, at); };
    c.FolderTreeview1->onMenu = [this](const std::string& folder, QPoint at) {
        ShowTreeMenu(folder, at);
    };
    // The drag is over before a question comes up.
    c.FolderTreeview1->onDrop = [this](const std::vector<std::string>& paths,
                                       const std::string& folder, bool copy) {
        QTimer::singleShot(0, m.controls.FolderTreeview1,
                           [this, drop = FolderDrop{paths, folder, copy}] {
                               m.shell.Tell(m.fileops.PutFiles(drop));
                           });
    };
    Connect(c.PopupCopyPathButton, [this] { CopyPaths(); });
    Connect(c.PopupShowInFilesButton, [this] { ShowFile(); });
    Connect(c.PopupNewFolderButton,
            [this] { m.shell.Tell(m.fileops.MakeFolder(m.controls.FileListBox->Path())); });
    Connect(c.PopupRefreshButton, [this] { m.navigation.ReadAgain(); });
    Connect(c.TreeCopyPathButton, [this] {
        m.clipboard.SetText(m_folder);
        m.shell.ShowMessage("Copied '" + m_folder + "'");
    });
    Connect(c.TreeShowInFilesButton, [this] { ShowInFileManager(m_folder, {}); });
    Connect(c.TreeNewFolderButton, [this] {
        if (!m_folder.empty()) m.shell.Tell(m.fileops.MakeFolder(m_folder));
    });
    Connect(c.TreeRefreshButton, [this] { m.navigation.ReadAgain(); });
    // What can be done without a file, by the same entries.
    for (QAction* entry : {c.PopupPasteButton, c.PopupNewFolderButton, c.PopupShowInFilesButton,
                           c.SelectAllButton, c.PopupRefreshButton})
        c.PopupList->addAction(entry);
}

void ContextMenus::ShowListMenu(int row, QPoint onScreen) {
    (row >= 0 ? m.controls.PopupPic : m.controls.PopupList)->popup(onScreen);
}

void ContextMenus::ShowTreeMenu(const std::string& folder, QPoint onScreen) {
    m_folder = folder;
    m.controls.PopupTree->popup(onScreen);
}

// Of the files selected, one a line; of the folder when there is none.
void ContextMenus::CopyPaths() {
    const FileListBox& list = *m.controls.FileListBox;
    std::string paths;
    const std::vector<int> rows = list.SelectedRows();
    for (const int row : rows)
        paths += (paths.empty() ? "" : "\n") + JoinPath(list.Path(), list.Text(row));
    if (rows.empty()) paths = m.state.Filename;
    m.clipboard.SetText(paths);
    m.shell.ShowMessage(rows.size() > 1 ? "Copied " + std::to_string(rows.size()) + " paths"
                                        : "Copied '" + paths + "'");
}

void ContextMenus::ShowFile() {
    const std::string& folder = m.controls.FileListBox->Path();
    const std::string& file = m.state.Filename;
    const bool inFolder = FolderOf(file) == folder && m.files.Exists(file);
    ShowInFileManager(folder, inFolder ? file : std::string());
}

void ContextMenus::ShowInFileManager(const std::string& folder, const std::string& file) {
    const std::string failure = m.desktop.ShowInFileManager(folder, file);
    m.shell.ShowMessage(failure.empty() ? "Opened '" + folder + "'" : "ERROR - " + failure);
}

} // namespace tarn
