// The menus at the pointer: of a file in the list, of the blank below, of the picture and of a
// folder in the tree; and files that are dropped on one.
#pragma once

#include "desk/Context.h"

#include <QPoint>

#include <string>

namespace tarn {

class ContextMenus {
public:
    explicit ContextMenus(Context& context) : m(context) {}

    void ConnectControls();

private:
    void ShowListMenu(int row, QPoint onScreen);
    void ShowTreeMenu(const std::string& folder, QPoint onScreen);
    void CopyPaths();
    void ShowInFileManager(const std::string& folder, const std::string& file);
    void ShowFile();

    Context& m;
    std::string m_folder; // on which the tree's menu stands
};

} // namespace tarn
