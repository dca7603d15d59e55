#include "navigation/NavigationRoom.h"

#include "common/dates.h"
#include "common/pages.h"
#include "common/paths.h"
#include "desk/controls/SheetEntries.h"
#include "desk/controls/SlideButtons.h"
#include "navigation/ClassFilter.h"
#include "navigation/CurrentRow.h"
#include "navigation/Stepping.h"
#include "platform/CrashNote.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <algorithm>

namespace tarn {

NavigationRoom::NavigationRoom(Context& context)
    : m(context), m_historyList(context, [this](int entry) { GoToFolder(entry); }),
      m_filter(context, [this] { ShowHint(); }), m_menus(context), m_find(context),
      m_arrangement(context) {}

void NavigationRoom::ConnectControls() {
    MainControls& c = m.controls;
    m_historyList.ConnectControls();
    m_filter.ConnectControls();
    m_menus.ConnectControls();
    m_find.ConnectControls();
    m_arrangement.ConnectControls();
    c.FileListBox->onClick = [this] { FileListBox_Click(); };
    c.FileListBox->onDoubleClick = [this] {
        if (!m.state.VideoImage()) m.display.ViewFull();
    };
    QObject::connect(c.FileListBox, &FileListBox::filesAdded, c.FileListBox,
                     [this](const std::vector<int>& rows) { FilesAdded(rows); });
    c.FolderTreeview1->onSelection = [this](const std::string& path, bool& cancel) {
        if (!cancel) FolderTreeview1_Selection(path);
    };
    Connect(c.NextButton, [this] { StepBy(1, Stepping()); });
    Connect(c.PrevButton, [this] { StepBy(-1, Stepping()); });
    Connect(c.FileBackButton, [this] { FileBackButton_Click(); });
    Connect(c.FileFwdButton, [this] { FileFwdButton_Click(); });
    Connect(c.FolderBackButton, [this] { FolderBackButton_Click(); });
    Connect(c.FolderFwdButton, [this] { FolderFwdButton_Click(); });
    Connect(c.FolderUpButton, [this] { FolderUpButton_Click(); });
    Connect(c.GotoCopyFolderButton, [this] { GotoCopyFolderButton_Click(); });
    Connect(c.QuickDirButton, [this] { ReadAgain(); });
    Connect(c.SelectAllButton, [this] { SelectAllButton_Click(); });
}

void NavigationRoom::ShowSettings() {
    const ProgramState& s = m.state;
    const MainControls& c = m.controls;
    const auto set = [](QCheckBox* box, int value) {
        const QSignalBlocker silent(box);
        box->setChecked(value != 0);
    };
    set(c.PCheck, s.PictureListCheck);
    set(c.VCheck, s.VideoListCheck);
    set(c.WCheck, s.WebListCheck);
    for (const SheetEntry& sheet : SheetEntries(c))
        sheet.entry->setProperty("baseCaption", sheet.entry->text());
    m.state.FileTypes = StartFileTypes(s);
    c.FileListBox->SetPattern(s.FileTypes);
    SetEnabled(c.FolderBackButton, s.HistHigh >= 1 && s.HistCur > 1);
    SetEnabled(c.FolderFwdButton, s.HistHigh >= 1 && s.HistCur < s.HistHigh);
}

void NavigationRoom::KeepValues() {
    ProgramState& s = m.state;
    s.PictureListCheck = m.controls.PCheck->isChecked();
    s.VideoListCheck = m.controls.VCheck->isChecked();
    s.WebListCheck = m.controls.WCheck->isChecked();
}

void NavigationRoom::FileListBox_Click() {
    ProgramState& s = m.state;
    if (m_clearingMultiselect || m_selectingAll) return;
    Update_Num_Files(0);
    const int row = m.controls.FileListBox->CurrentRow();
    if (row < 0) return;
    const std::string before = s.FileNameOnly;
    m.current.Choose(JoinPath(m.controls.FileListBox->Path(), m.controls.FileListBox->Text(row)),
                     row);
    for (QWidget* hidden : std::initializer_list<QWidget*>{
             m.controls.PreviewLabel, m.controls.DeletePicButton, m.controls.DeleteFitsButton,
             m.controls.QTplayButton, m.controls.LastLabel, m.controls.CropLabel})
        hidden->hide();
    m.shell.ShowStatus(s.Filename);
    SetCrashFile(s.Filename);

    std::string error;
    const auto look = m.files.Look(s.Filename, &error);
    if (!look) {
        // The box names the file from which the user came, the line the one that is meant.
        m.shell.ShowError(error + " - " + before);
        m.shell.ShowMessage("'" + LastPart(s.Filename) + "' - " + error);
        s.FileModifiedText.clear();
        m.display.ShowNothing();
        m.current.Tell(); // no note beside another file
        return;
    }
    s.FileModifiedText = FormatDateText(FromFileTime(look->seconds));
    s.VideoPending = false;
    const bool recorded = RecordSelection(row);
    if (s.ShowsText()) m.current.ShowAs(FileKind::Picture);
    m_historyList.GiveUp();
    m.video.CloseVideoClip();
    ShowChosenFile(*look);
    if (!recorded) m.shell.ShowError("Folder history is full - " + s.FileNameOnly);
}

bool NavigationRoom::RecordSelection(int row) {
    if (m_request.records) {
        m_views.Record(row);
        SetEnabled(m.controls.FileBackButton, m_views.CanGoBack());
    }
    std::int32_t* kept = m.state.HistRow();
    if (kept) *kept = row;
    return kept != nullptr;
}

void NavigationRoom::ShowChosenFile(const FileLook& look) {
    const ProgramState& s = m.state;
    if (IsListedType(s.VideoTypes, s.FileType)) {
        ShowVideo();
        return;
    }
    if (IsListedType(s.WebTypes, s.FileType))
        m.video.Load_web(m_request);
    else
        ShowPictureOrText(look);
}

void NavigationRoom::ShowVideo() {
    m.current.ShowAs(FileKind::Clip);
    m.display.SetPictureCommands(false);
    EnableSlideButtons(m.controls, false);
    m.video.ShowVideoFile(m_request);
}

void NavigationRoom::ShowPictureOrText(const FileLook& look) {
    m.state.EditCaption = "Edit";
    m.current.ShowAs(FileKind::Picture);
    m.display.SetPictureCommands(true);
    EnableSlideButtons(m.controls, true);
    if (m.state.FileType == ".TXT") {
        m.video.Load_web(m_request);
        return;
    }
    PictureRequest request = m_request;
    request.look = look;
    m.display.DisplayPicture(request);
}

void NavigationRoom::SelectRow(int row, const PictureRequest& request) {
    const QScopedValueRollback<PictureRequest> asked(m_request, request);
    m.controls.FileListBox->Select(row);
}

void NavigationRoom::Update_Num_Files(int index) {
    const int count = m.controls.FileListBox->Count();
    const int row = index != 0 ? index : m.controls.FileListBox->CurrentRow();
    m.state.TextNumOf =
        count < 1 ? std::string() : std::to_string(row + 1) + " of " + std::to_string(count);
    m.controls.TextNumOf->setText(ToQt(m.state.TextNumOf));
    m.controls.TextNumOf->setVisible(count >= 1);

    ShowPageCounts(m.controls, count);
}

void NavigationRoom::ClearMultiselect() {
    const QScopedValueRollback<bool> clearing(m_clearingMultiselect, true);
    m.controls.FileListBox->UnselectAll();
}

void NavigationRoom::StepBy(int rows, const PictureRequest& request) {
    const int row = m.state.FileIndex;
    if (row >= 0) return StepFrom(row, rows, request);
    // The file shown is hidden by what is found in the list: from outside its ends.
    const bool on = rows > 0;
    StepFrom(on ? -1 : m.controls.FileListBox->Count(), on ? 1 : -1, request);
}

void NavigationRoom::StepFrom(int row, int by, const PictureRequest& request) {
    const int count = m.controls.FileListBox->Count();
    ClearMultiselect();
    SelectRow(count < 1 ? -1 : RowFrom(row, by, count), request);
    if (m.state.ShowsText()) {
        m.state.ImageLoaded = false;
        if (request.focus) m.controls.LabelNavKeys->show();
    }
    if (request.focus) m.shell.FocusPane();
}

void NavigationRoom::SelectAllButton_Click() {
    {
        const QScopedValueRollback<bool> selecting(m_selectingAll, true);
        m.controls.FileListBox->SelectEveryRow();
    }
    m.shell.ShowMessage("All files selected " + std::to_string(m.controls.FileListBox->Count()));
}

void NavigationRoom::FileBackButton_Click() {
    ShowView(MoveThroughViews(true));
}

void NavigationRoom::FileFwdButton_Click() {
    ShowView(MoveThroughViews(false));
}

std::optional<int> NavigationRoom::MoveThroughViews(bool back) {
    const bool moves = back ? m_views.CanGoBack() : m_views.CanGoForward();
    std::optional<int> row;
    if (moves) {
        row = back ? m_views.Back() : m_views.Forward();
        ClearMultiselect();
    }
    if (back) {
        SetEnabled(m.controls.FileBackButton, m_views.CanGoBack());
        if (m_views.IsBehind()) SetEnabled(m.controls.FileFwdButton, true);
    } else {
        SetEnabled(m.controls.FileFwdButton, m_views.CanGoForward());
        if (moves) SetEnabled(m.controls.FileBackButton, true);
    }
    return row;
}

void NavigationRoom::ShowView(std::optional<int> row) {
    if (row) SelectRow(*row, {.records = false, .turns = {}});
}

void NavigationRoom::ShowWholeList() {
    m_find.Close();
}

void NavigationRoom::SetFilterShown(bool shown) {
    m_filter.SetFilterShown(shown);
}

void NavigationRoom::ResetFileHistory(bool withCurrent) {
    if (withCurrent)
        m_views.Restart(m.controls.FileListBox->CurrentRow());
    else
        m_views.Clear();
    SetEnabled(m.controls.FileBackButton, false);
    SetEnabled(m.controls.FileFwdButton, false);
}

void NavigationRoom::RefreshDirButton_Click() {
    if (!m.controls.FileListBox->Refresh())
        m.shell.ShowStatus("Cannot read " + m.controls.FileListBox->Path());
    const int row = m.controls.FileListBox->CurrentRow();
    if (row >= 0) { // the same file, counted anew
        m.state.FileIndex = row;
        m_views.RowIsNow(row);
    }
    Update_Num_Files(0);
    m.notes.SetSaveCommands();
}

// The same file, counted anew; the views before it, too.
void NavigationRoom::FilesAdded(const std::vector<int>& rows) {
    if (rows.empty()) return TakeCurrentRow(m);
    for (const int row : rows) m_views.RowCame(row);
    const int row = m.controls.FileListBox->CurrentRow();
    if (row >= 0) m.state.FileIndex = row;
    if (row >= 0 && m.state.HistRow()) *m.state.HistRow() = row;
    Update_Num_Files(0);
    m.notes.SetSaveCommands();
}

void NavigationRoom::ReadAgain() {
    const FileListBox& list = *m.controls.FileListBox;
    FolderTreeview& tree = *m.controls.FolderTreeview1;
    tree.Refresh();
    if (list.Path() != tree.SelectedPath()) { // it could not be shown
        tree.SetSelectedPath(tree.SelectedPath());
        return;
    }
    RefreshDirButton_Click();
    const int row = list.CurrentRow();
    if (row < 0)
        EnableListCommands();
    else if (IsOutOfDate())
        SelectRow(row, KeepingKeyboard());
}

// A picture that stands keeps its turns; a note that is being written stays before all.
bool NavigationRoom::IsOutOfDate() const {
    const ProgramState& s = m.state;
    if (!m.notes.UnsavedText().empty()) return false;
    if (s.Kind != FileKind::Picture || !s.ImageLoaded) return true;
    const auto modified = m.files.ModifiedTime(s.Filename);
    return !modified || FormatDateText(FromFileTime(*modified)) != s.FileModifiedText;
}

void NavigationRoom::RefreshAfterDelete() {
    const FileListBox& list = *m.controls.FileListBox;
    const int row = list.CurrentRow();
    RefreshDirButton_Click();
    if (list.CurrentRow() < 0 && list.Count() > 0) {
        ClearMultiselect();
        SelectRow(std::clamp(row, 0, list.Count() - 1));
    }
    if (list.Count() < 1) EnableListCommands();
    ResetFileHistory(list.CurrentRow() >= 0); // it counts rows
}

} // namespace tarn
