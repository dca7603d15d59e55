#include "widgets/FileListBox.h"

#include "common/mark_text.h"
#include "common/paths.h"
#include "common/sidecar_names.h"
#include "platform/FileMime.h"
#include "platform/QtText.h"
#include "widgets/MenuKey.h"
#include "widgets/OwnFiles.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <set>

namespace tarn {

FileListBox::FileListBox(const Files& files, QWidget* parent)
    : QListView(parent), m_model(files),
      m_watch([this](const std::string& name) { DiskChanged(name); }) {
    setModel(&m_model);
    setUniformItemSizes(true);
    setItemDelegate(&m_names);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setDragEnabled(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    SizeMarks();
    // Much may happen in a folder that the list does not show: it is asked again once all rests.
    m_diskTimer.setSingleShot(true);
    m_diskTimer.setInterval(300);
    connect(&m_diskTimer, &QTimer::timeout, this, [this] {
        emit diskChanged(m_model.DiffersFromDisk());
        emit leftOutChanged();
    });
}

bool FileListBox::ReadFolder(const std::string& folder, const std::string& pattern) {
    if (!m_model.Read(folder, pattern)) return false;
    m_watch.Watch(folder);
    m_diskTimer.stop();
    emit diskChanged(false);
    emit folderRead();
    emit leftOutChanged();
    return true;
}

void FileListBox::DiskChanged(const std::string& name) {
    const bool isHidden = name.starts_with('.'); // as a file is until it is whole
    if (m_isFollowed || isHidden || (IsSidecarName(name) && !m_model.Fits(name))) return;
    m_diskTimer.start();
}

void FileListBox::Narrow(std::function<bool(const std::string&)> keeps) {
    const std::string current = CurrentRow() >= 0 ? Text(CurrentRow()) : std::string();
    m_model.Narrow(std::move(keeps));
    const int now = current.empty() ? -1 : RowOf(current);
    if (now >= 0) setCurrentIndex(m_model.index(now));
}

// By name, where the change has put all rows anew.
bool FileListBox::KeepSelected(const std::function<bool()>& change) {
    const std::string current = CurrentRow() >= 0 ? Text(CurrentRow()) : std::string();
    std::set<std::string> selected;
    for (const int row : SelectedRows()) selected.insert(Text(row));
    if (!change()) return false;
    const int now = current.empty() ? -1 : RowOf(current);
    if (now >= 0) setCurrentIndex(m_model.index(now));
    if (selected.size() < 2) return true;
    QItemSelection again;
    for (int row = 0; row < Count(); ++row)
        if (selected.contains(Text(row))) again.select(m_model.index(row), m_model.index(row));
    selectionModel()->select(again, QItemSelectionModel::ClearAndSelect);
    return true;
}

bool FileListBox::Rearrange() {
    return KeepSelected([this] { return m_model.Rearrange(); });
}

void FileListBox::SetFollowed(bool isFollowed) {
    if (m_isFollowed && !isFollowed) m_diskTimer.start(); // what has changed since is its own again
    m_isFollowed = isFollowed;
    if (m_isFollowed) m_diskTimer.stop();
}

// Rows that come above those that are seen move them on.
void FileListBox::AddFiles(const std::vector<std::string>& names) {
    const QPersistentModelIndex top = indexAt(QPoint(1, 1));
    const int before = visualRect(top).top();
    FileListModel::Added added;
    KeepSelected([&] {
        added = m_model.Add(names);
        return added.isAnew;
    });
    if (top.isValid() && !added.rows.empty()) {
        doItemsLayout();
        const int way = visualRect(top).top() - before;
        QScrollBar& bar = *verticalScrollBar();
        const int row = std::max(1, visualRect(top).height());
        bar.setValue(bar.value() + (verticalScrollMode() == ScrollPerItem ? way / row : way));
    }
    if (added.isAnew || !added.rows.empty()) emit filesAdded(added.rows);
    if (added.isAnyListed) emit folderRead();
    emit leftOutChanged();
}

bool FileListBox::SetPath(const std::string& folder) {
    return folder == Path() || ReadFolder(folder, Pattern());
}

void FileListBox::SetPattern(const std::string& pattern) {
    if (!ReadFolder(Path(), pattern)) m_model.KeepPattern(pattern);
}

void FileListBox::SetNoteMarks(std::function<bool(const std::string&)> hasNote) {
    const bool had = static_cast<bool>(m_model.hasNote);
    m_model.hasNote = std::move(hasNote);
    if (had != static_cast<bool>(m_model.hasNote)) scheduleDelayedItemsLayout();
    ShowNoteMarks();
}

void FileListBox::SetMarks(std::function<ShownMark(const std::string&)> markOf) {
    m_names.markOf = [this, markOf](int row) { return markOf(Text(row)); };
    m_cells.markOf = m_names.markOf;
    m_model.spokenMark = [markOf](const std::string& name) {
        const ShownMark shown = markOf(name);
        return SpokenMark(shown.mark) + (shown.keptAside ? ", not in its sidecar" : "");
    };
}

void FileListBox::ShowMarks(bool anyMarked) {
    if (anyMarked != m_names.hasColumn) {
        m_names.hasColumn = anyMarked;
        scheduleDelayedItemsLayout();
    }
    viewport()->update();
}

// Marks as high as the text, so that rows stay as high as they are.
void FileListBox::SizeMarks() {
    const int side = fontMetrics().height() - 2;
    setIconSize(QSize(side, side));
}

void FileListBox::changeEvent(QEvent* event) {
    QListView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
    SizeMarks();
    SizeCells();
}

void FileListBox::SetPictures(std::function<QImage(int)> pictureOf) {
    m_cells.pictureOf = std::move(pictureOf);
}

void FileListBox::SizeCells() {
    setGridSize(ShowsPictures() ? PictureCells::CellSize(fontMetrics()) : QSize());
}

void FileListBox::ShowPictures(bool pictures) {
    if (pictures == ShowsPictures()) return;
    if (pictures)
        setItemDelegate(&m_cells);
    else
        setItemDelegate(&m_names);
    setFlow(pictures ? LeftToRight : TopToBottom);
    setWrapping(pictures);
    setResizeMode(pictures ? Adjust : Fixed);
    setVerticalScrollMode(pictures ? ScrollPerPixel : ScrollPerItem);
    SizeCells();
    if (currentIndex().isValid()) scrollTo(currentIndex());
}

// Rows follow each other in both forms: from the first that is seen on.
std::vector<int> FileListBox::SeenRows() const {
    std::vector<int> rows;
    if (Count() < 1) return rows;
    const QRect seen = viewport()->rect();
    int first = 0; // by halves, since no row above it reaches into the view
    for (int last = Count() - 1; first < last;) {
        const int middle = (first + last) / 2;
        if (visualRect(m_model.index(middle)).bottom() < seen.top())
            first = middle + 1;
        else
            last = middle;
    }
    for (int row = first; row < Count(); ++row) {
        if (visualRect(m_model.index(row)).top() > seen.bottom()) break;
        rows.push_back(row);
    }
    return rows;
}

bool FileListBox::Refresh() {
    if (onRefresh) onRefresh();
    const int row = CurrentRow();
    const std::string current = row >= 0 ? Text(row) : std::string();
    if (!ReadFolder(Path(), Pattern())) return false;
    const int now = row >= 0 ? RowOf(current) : -1;
    if (now >= 0) setCurrentIndex(m_model.index(now));
    return true;
}

void FileListBox::Select(int row) {
    if (row < 0 || row >= Count()) return;
    const QModelIndex index = m_model.index(row);
    const QItemSelection before = selectionModel()->selection();
    setCurrentIndex(index); // also where a range of the shift key will begin
    selectionModel()->select(before, QItemSelectionModel::Select);
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

// Other buttons, and the blank below the rows, would move the highlight off the file shown.
void FileListBox::mousePressEvent(QMouseEvent* event) {
    m_pressedRow = event->button() == Qt::LeftButton ? indexAt(event->pos()).row() : -1;
    m_shownRow = CurrentRow();
    if (m_pressedRow >= 0) QListView::mousePressEvent(event);
}

void FileListBox::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    QListView::mouseReleaseEvent(event);
    if (m_pressedRow < 0) return;
    m_doubleRow = m_pressedRow;
    m_pressedRow = -1;
    if (CurrentRow() >= 0) RaiseClick();
}

void FileListBox::mouseDoubleClickEvent(QMouseEvent* event) {
    const int row = indexAt(event->pos()).row();
    if (event->button() != Qt::LeftButton || row < 0) return;
    if (row != m_doubleRow) { // two quick clicks on neighbours
        mousePressEvent(event);
        return;
    }
    m_pressedRow = -1; // the release to come raises nothing: the file is loaded once
    if (onDoubleClick) onDoubleClick();
}

// A file that was not the current one is shown as by a click; the release ends the drag and raises
// nothing.
void FileListBox::startDrag(Qt::DropActions) {
    m_pressedRow = -1;
    if (CurrentRow() != m_shownRow && CurrentRow() >= 0) RaiseClick();
    QMimeData* data = DragData();
    if (!data) return;
    auto* drag = new QDrag(this); // the toolkit's own from here on
    drag->setMimeData(data);
    drag->exec(Qt::CopyAction);
}

// Other programs get copies; nothing is taken away from here.
QMimeData* FileListBox::DragData() const {
    ClipboardFiles files;
    for (const int row : SelectedRows()) files.paths.push_back(JoinPath(Path(), Text(row)));
    if (files.paths.empty()) return nullptr;
    QMimeData* data = MimeOf(files);
    data->setData(QString::fromLatin1(kOwnFiles), {});
    return data;
}

void FileListBox::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Mouse) return AskMenuByKey();
    const int row = indexAt(event->pos()).row();
    const QPoint onScreen = event->globalPos();
    if (row >= 0 && !IsSelected(row)) UnselectAll();
    if (row >= 0 && (row != CurrentRow() || !IsSelected(row))) Select(row);
    if (onMenu) onMenu(row, onScreen);
}

void FileListBox::AskMenuByKey() {
    const int row = CurrentRow();
    const QRect at = row >= 0 ? visualRect(currentIndex()) : QRect();
    if (onMenu) onMenu(row, viewport()->mapToGlobal(at.center()));
}

void FileListBox::keyPressEvent(QKeyEvent* event) {
    if (AsksForMenu(*event)) return AskMenuByKey();
    const int before = CurrentRow();
    QListView::keyPressEvent(event);
    if (CurrentRow() != before && CurrentRow() >= 0) RaiseClick();
}

} // namespace tarn
