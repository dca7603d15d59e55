#include "widgets/FolderTreeview.h"

#include "common/paths.h"
#include "platform/FileMime.h"
#include "widgets/MenuKey.h"
#include "widgets/OwnFiles.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QStyle>

namespace tarn {

namespace {

constexpr int kHoverOpens = 700; // milliseconds that a drag rests on a folder

} // namespace

FolderTreeview::FolderTreeview(const Files& files, QWidget* parent)
    : QTreeView(parent), m_model(files) {
    m_model.SetIcon(style()->standardIcon(QStyle::SP_DirIcon));
    setModel(&m_model);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setDragDropMode(DropOnly);
    setDragDropOverwriteMode(true); // onto a folder, not between two
    setAutoExpandDelay(kHoverOpens);
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

void FolderTreeview::Refresh() {
    const QScopedValueRollback<bool> moving(m_moving, true);
    const QModelIndex here = currentIndex();
    bool changed = here.isValid() && !m_model.canFetchMore(here) && m_model.Reread(here);
    const QModelIndex above = here.parent();
    if (above.isValid() && m_model.Reread(above)) changed = true;
    if (changed || !here.isValid()) ShowCurrent(m_path);
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

// Other buttons would go to the folder.
void FolderTreeview::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) QTreeView::mousePressEvent(event);
}

void FolderTreeview::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Mouse) return AskMenuByKey();
    const QModelIndex at = indexAt(event->pos());
    if (at.isValid() && onMenu) onMenu(m_model.PathOf(at), event->globalPos());
}

void FolderTreeview::AskMenuByKey() {
    if (!onMenu || !currentIndex().isValid()) return;
    onMenu(m_model.PathOf(currentIndex()),
           viewport()->mapToGlobal(visualRect(currentIndex()).center()));
}

void FolderTreeview::keyPressEvent(QKeyEvent* event) {
    if (AsksForMenu(*event)) return AskMenuByKey();
    QTreeView::keyPressEvent(event);
}

void FolderTreeview::dropEvent(QDropEvent* event) {
    const QModelIndex at = indexAt(event->position().toPoint());
    setState(NoState);
    viewport()->update(); // the frame round the folder
    if (!at.isValid() || !event->mimeData()->hasFormat(QString::fromLatin1(kOwnFiles))) {
        event->ignore();
        return;
    }
    // The files stay with the list until the command has moved them.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const bool copy = event->modifiers() & Qt::ControlModifier;
    if (onDrop) onDrop(FilesIn(*event->mimeData()).paths, m_model.PathOf(at), copy);
}

void FolderTreeview::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (!m_moving && current.isValid()) Raise(m_model.PathOf(current));
}

} // namespace tarn
