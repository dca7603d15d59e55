#include "platform/FileListBox.h"

#include "platform/QtText.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace tarn {

FileListBox::FileListBox(const Files& files, QWidget* parent) : QListView(parent), m_model(files) {
    setModel(&m_model);
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this,
            [this] { emit diskChanged(true); });
}

bool FileListBox::ReadFolder(const std::string& folder, const std::string& pattern) {
    const std::string before = Path();
    if (!m_model.Read(folder, pattern)) return false;
    if (folder != before) {
        if (!m_watcher.directories().isEmpty()) m_watcher.removePaths(m_watcher.directories());
        if (!folder.empty()) m_watcher.addPath(ToQt(folder));
    }
    emit diskChanged(false);
    return true;
}

bool FileListBox::SetPath(const std::string& folder) {
    return folder == Path() || ReadFolder(folder, Pattern());
}

bool FileListBox::SetPattern(const std::string& pattern) {
    return ReadFolder(Path(), pattern);
}

void FileListBox::Refresh() {
    const int row = CurrentRow();
    const std::string current = row >= 0 ? Text(row) : std::string();
    if (!ReadFolder(Path(), Pattern())) return;
    const int now = row >= 0 ? RowOf(current) : -1;
    if (now >= 0) setCurrentIndex(m_model.index(now));
}

void FileListBox::Select(int row) {
    if (row < 0 || row >= Count()) return;
    const QModelIndex index = m_model.index(row);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::Select);
    scrollTo(index);
    RaiseClick();
}

bool FileListBox::IsSelected(int row) const {
    return row >= 0 && row < Count() && selectionModel()->isSelected(m_model.index(row));
}

std::vector<int> FileListBox::SelectedRows() const {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
    std::sort(rows.begin(), rows.end());
    return rows;
}

void FileListBox::UnselectAll() {
    selectionModel()->clearSelection();
}

void FileListBox::SelectEveryRow() {
    if (Count() < 1) return;
    selectionModel()->select(QItemSelection(m_model.index(0), m_model.index(Count() - 1)),
                             QItemSelectionModel::Select);
}

void FileListBox::RaiseClick() {
    if (onClick) onClick();
}

void FileListBox::mousePressEvent(QMouseEvent* event) {
    m_pressed = event->button() == Qt::LeftButton;
    QListView::mousePressEvent(event);
}

void FileListBox::mouseReleaseEvent(QMouseEvent* event) {
    QListView::mouseReleaseEvent(event);
    const bool counts = m_pressed && event->button() == Qt::LeftButton;
    m_pressed = false;
    if (counts && CurrentRow() >= 0) RaiseClick();
}

void FileListBox::mouseDoubleClickEvent(QMouseEvent* event) {
    m_pressed = false; // the release to come belongs to the double click: the file is loaded once
    if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid() && onDoubleClick)
        onDoubleClick();
}

void FileListBox::keyPressEvent(QKeyEvent* event) {
    const int before = CurrentRow();
    QListView::keyPressEvent(event);
    if (CurrentRow() != before && CurrentRow() >= 0) RaiseClick();
}

} // namespace tarn
