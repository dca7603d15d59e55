// The folder tree: a path that can be read and set, an event for each change with a cancel flag,
// and a way to bring a path into view.
#pragma once

#include "widgets/FolderTreeModel.h"

#include <QTreeView>

#include <functional>
#include <string>
#include <vector>

namespace tarn {

class FolderTreeview : public QTreeView {
    Q_OBJECT

public:
    explicit FolderTreeview(const Files& files, QWidget* parent = nullptr);

    const std::string& SelectedPath() const { return m_path; }

    // Raises the event always, on the same call stack: also for the same path and for a missing
    // one. Separators at the end are dropped, except the root's.
    void SetSelectedPath(const std::string& path);

    // The path as it was before a change that came to nothing; raises nothing.
    void PutBack(const std::string& path);

    // Opens the folders on the way and scrolls there; a path that is not there does nothing.
    void Reveal(const std::string& path);

    // Reads the folders beside the present one and in it again; raises nothing.
    void Refresh();

    // The new path, and a flag that takes the change back.
    std::function<void(const std::string& path, bool& cancel)> onSelection;

    // A menu is asked for on a folder.
    std::function<void(const std::string& folder, QPoint onScreen)> onMenu;

    // Files of ours are dropped on a folder, to be moved or, with Ctrl, copied into it.
    std::function<void(const std::vector<std::string>& paths, const std::string& folder, bool copy)>
        onDrop;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void AskMenuByKey();
    void ReadAgain(const QModelIndex& opened);
    void ShowCurrent(const std::string& path);
    void Raise(const std::string& path);

    FolderTreeModel m_model;
    std::string m_path;
    bool m_moving = false; // the view follows a path set in code
};

} // namespace tarn
