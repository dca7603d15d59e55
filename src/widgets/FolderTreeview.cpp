#include "widgets/FolderTreeview.h"

#include "common/paths.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QStyle>

namespace tarn {

FolderTreeview::FolderTreeview(const Files& files, QWidget* parent)
    : QTreeView(parent), m_model(files) {
    m_model.SetIcon(style()->standardIcon(QStyle::SP_DirIcon));
    setModel(&m_model);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    expand(m_model.index(0, 0, {}));
    connect(this, &QTreeView::expanded, this, &FolderTreeview::ReadAgain);
}

// What was read when a folder was last open may be old.
void FolderTreeview::ReadAgain(const QModelIndex& opened) {
    if (m_moving || m_model.canFetchMore(opened)) return;
    const QScopedValueRollback<bool> moving(m_moving, true);
    if (m_model.Reread(opened)) ShowCurrent(m_path);
}

void FolderTreeview::SetSelectedPath(const std::string& path) {
    const std::string wanted = WithoutTrailingSeparator(path);
    ShowCurrent(wanted);
    Raise(wanted);
}

void FolderTreeview::ShowCurrent(const std::string& path) {
    const QScopedValueRollback<bool> moving(m_moving, true);
    const QModelIndex index = m_model.IndexOf(path);
    if (index.isValid()) setCurrentIndex(index);
}

void FolderTreeview::PutBack(const std::string& path) {
    m_path = path;
    ShowCurrent(path);
}

void FolderTreeview::Reveal(const std::string& path) {
    const QModelIndex index = m_model.IndexOf(path);
    if (!index.isValid()) return;
    const QScopedValueRollback<bool> moving(m_moving, true);
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) expand(above);
    scrollTo(index, PositionAtCenter);
}

void FolderTreeview::Raise(const std::string& path) {
    const std::string before = m_path;
    m_path = path;
    bool cancel = false;
    if (onSelection) onSelection(path, cancel);
    if (!cancel) return;
    m_path = before;
    ShowCurrent(before);
}

void FolderTreeview::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (!m_moving && current.isValid()) Raise(m_model.PathOf(current));
}

} // namespace tarn
