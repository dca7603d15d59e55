// The file list: one folder, one pattern, many rows selected at once, one current row. It is a
// snapshot that changes only with path, pattern or refresh. The click is raised from three places:
// a selection in code, the release of the mouse, a change of the current row by keyboard.
#pragma once

#include "platform/FolderWatch.h"
#include "widgets/FileListModel.h"
#include "widgets/NameRows.h"
#include "widgets/PictureCells.h"

#include <QListView>
#include <QTimer>

#include <functional>
#include <string>
#include <vector>

class QMimeData;

namespace tarn {

class FileListBox : public QListView {
    Q_OBJECT

public:
    explicit FileListBox(const Files& files, QWidget* parent = nullptr);

    // False when the folder cannot be read: the list keeps its folder. A new folder is read, and no
    // row is current; the same one again changes nothing.
    bool SetPath(const std::string& folder);
    // The patterns between ";". A folder that cannot be read keeps its rows, the next takes it
    // over.
    void SetPattern(const std::string& pattern);
    // Reads the folder again; the current row stays by name. Raises nothing.
    bool Refresh();

    // Files that have come to the folder. What is current, selected and seen stays; raises nothing.
    void AddFiles(const std::vector<std::string>& names);
    // Somebody else looks for what changes in the folder, and says what the list is not told.
    void SetFollowed(bool isFollowed);
    void SayDiskChanged() { emit diskChanged(true); }

    // Only the rows whose names `keeps` says, until it is empty; the current row stays by name.
    // Raises nothing and looks at no disk.
    void Narrow(std::function<bool(const std::string& name)> keeps);
    bool IsNarrowed() const { return m_model.IsNarrowed(); }
    // Which files are rows, and in which order; `Rearrange` asks anew, keeps what is current and
    // selected by name, and says whether that made a difference. It raises nothing.
    void SetArrange(std::function<std::vector<std::string>(const std::string& folder,
                                                           std::vector<std::string> names)>
                        arrange) {
        m_model.arrange = std::move(arrange);
    }
    bool Rearrange();
    const std::vector<std::string>& Listed() const { return m_model.Listed(); }
    bool LeavesOut(const std::string& name) const { return m_model.LeavesOut(name); } // by that
    // Files of the folder that the pattern leaves out, unsorted, as of the last look at it.
    const std::vector<std::string>& LeftOut() const { return m_model.LeftOut(); }
    const std::vector<std::string>& NotChosen() const { return m_model.NotChosen(); } // by notes

    const std::string& Path() const { return m_model.Folder(); }
    const std::string& Pattern() const { return m_model.Pattern(); }
    int Count() const { return m_model.Count(); }
    const std::string& Text(int row) const { return m_model.Text(row); }
    int RowOf(const std::string& name) const { return m_model.RowOf(name); }
    int CurrentRow() const { return currentIndex().isValid() ? currentIndex().row() : -1; }

    // Selects a row beside what is selected, makes it current and raises the click, also when it
    // was current. A row outside the list does nothing.
    void Select(int row);

    bool IsSelected(int row) const;
    std::vector<int> SelectedRows() const; // ascending
    // The current row stays; nothing is raised; the cost does not grow with the list.
    void UnselectAll();
    void SelectEveryRow();

    // Marks at the files that have a note (none to end them), and which files are listed by them
    // from the next reading on. A note that came or went shows after ShowNoteMarks.
    void SetNoteMarks(std::function<bool(const std::string& name)> hasNote);
    void SetNoteChoice(NoteChoice choice) { m_model.noteChoice = choice; }
    void ShowNoteMarks() { viewport()->update(); }

    // The user's marks, drawn ahead of the names and upon the pictures; there is room for them
    // from the first `ShowMarks` that says so on.
    void SetMarks(std::function<ShownMark(const std::string& name)> markOf);
    void ShowMarks(bool anyMarked);

    // Rows as small pictures side by side, or as names one beneath the other. `pictureOf` is asked
    // for rows that are painted; null while there is none.
    void SetPictures(std::function<QImage(int row)> pictureOf);
    void ShowPictures(bool pictures);
    bool ShowsPictures() const { return isWrapping(); }
    std::vector<int> SeenRows() const; // as far as they can be seen now

    std::function<void()> onRefresh; // before the folder is read again
    std::function<void()> onClick;
    std::function<void()> onDoubleClick;
    // A menu is asked for on a row, which has become the current one, or beside all (-1).
    std::function<void(int row, QPoint onScreen)> onMenu;

    // What a drag takes along: the selected files as copies for other programs.
    QMimeData* DragData() const; // the caller owns it; null without a selection

signals:
    // Whether the folder on disk has changed since it was read. Sidecars that are not listed make
    // no difference: each mark writes one, and the folder is not read again for it.
    void diskChanged(bool changed);
    // A folder, or the same one anew.
    void folderRead();
    // Rows that have come, ascending, each as it stood once it was there; none where all rows stand
    // anew. Ahead of folderRead, which comes alone where what has come is listed and no row.
    void filesAdded(const std::vector<int>& rows);
    // After each look at the folder.
    void leftOutChanged();

protected:
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;

private:
    bool ReadFolder(const std::string& folder, const std::string& pattern);
    void DiskChanged(const std::string& name);
    bool KeepSelected(const std::function<bool()>& change);
    void RaiseClick();
    void AskMenuByKey();
    void SizeMarks();
    void SizeCells();

    FileListModel m_model;
    PictureCells m_cells; // draws pictures,
    NameRows m_names;     // this one names
    QTimer m_diskTimer;
    FolderWatch m_watch;
    bool m_isFollowed = false;
    int m_pressedRow = -1; // row of the press whose release will count
    int m_doubleRow = -1;  // row of the click before
    int m_shownRow = -1;   // current row when the mouse was pressed
};

} // namespace tarn
