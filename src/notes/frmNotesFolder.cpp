#include "notes/frmNotesFolder.h"

#include "common/codepage.h"
#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "history/Changes.h"
#include "notes/NoteText.h"
#include "notes/NoteWindows.h"
#include "notes/NotesRoom.h"
#include "platform/EventPump.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kProgressEvery = 50; // milliseconds

} // namespace

void frmNotesFolder::OpenWindow() {
    m_wasAway = false;
    Form_Activate();
    show();
    raise();
    activateWindow();
}

void frmNotesFolder::KeepPlace() {
    TakePlace(*this, m.state.NotesFolderPlace);
}

bool frmNotesFolder::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate) m_wasAway = true;
    if (event->type() == QEvent::WindowActivate && m_wasAway && !m.state.BatchRuns) {
        m_wasAway = false;
        // A click that brings the window up may fall on Delete: it is meant for the note it sees.
        if (QGuiApplication::mouseButtons() == Qt::NoButton)
            Form_Activate();
        else
            m_list->Refresh();
    }
    return QDialog::event(event);
}

// The list anew, on the note of the picture in the main window; a text that is being edited stays.
void frmNotesFolder::Form_Activate() {
    m_updateText->clear();
    const std::string& folder = m.state.NotesFolder;
    m_folderText->setText(ToQt(folder));
    if (folder != m_lastFolder) ShowNothing();
    m_lastFolder = folder;
    if (!m.files.IsFolder(folder) || !m_list->SetPath(folder)) {
        m_list->SetPath({}); // not the rows of a folder that is not shown
        ShowNothing();
        return;
    }
    m_list->Refresh();
    const int row = IsEdited() ? m_list->RowOf(LastPart(m_note.path)) : RowOfPicture();
    if (row >= 0)
        SelectRow(row);
    else if (!IsEdited() && m_list->RowOf(LastPart(m_note.path)) >= 0)
        ShowNote(m_note.path);
    else if (!IsEdited())
        ShowNothing();
}

// The row with the note of the picture in the main window; -1 when there is none.
int frmNotesFolder::RowOfPicture() const {
    m.notes.SetNotesFilename();
    const int row = m_list->RowOf(LastPart(m.state.NotesFilename));
    const std::string& loaded = m_room.LoadedPath();
    return row < 0 && FolderOf(loaded) == m_list->Path() ? m_list->RowOf(LastPart(loaded)) : row;
}

// Another note, or none, is about to stand in the box.
void frmNotesFolder::KeepEdit() {
    if (IsEdited()) m_room.DropText({LastPart(m_note.path), m_box->Text()});
}

void frmNotesFolder::ShowNothing() {
    KeepEdit();
    m_note = {};
    m_shownText.clear();
    m_box->Load({});
    m_label->setText(m_list->Count() < 1 ? QStringLiteral("Notes folder is empty") : QString());
    EnableCommands(false);
}

// Text without a note would have no place to go.
void frmNotesFolder::EnableCommands(bool enabled) {
    m_edit->setReadOnly(!enabled);
    m_update->setEnabled(enabled);
    m_delete->setEnabled(enabled);
}

void frmNotesFolder::SelectRow(int row) {
    m_list->UnselectAll();
    m_list->Select(row);
}

// The same row, or the last one where fewer are left.
void frmNotesFolder::SelectNear(int row) {
    if (m_list->Count() > 0) SelectRow(std::clamp(row, 0, m_list->Count() - 1));
}

void frmNotesFolder::Fail(const std::string& text, const std::string& why) {
    m.shell.ShowError(text);
    m.shell.ShowMessage("ERROR - " + why);
}

bool frmNotesFolder::IsEdited() const {
    return !m_note.path.empty() && m_box->Text() != m_shownText;
}

void frmNotesFolder::NotesFileListBox_Click() {
    const int row = m_list->CurrentRow();
    if (row < 0) return;
    const std::string path = JoinPath(m_list->Path(), m_list->Text(row));
    if (path == m_note.path && IsEdited()) return;
    ShowNote(path);
}

void frmNotesFolder::ShowNote(const std::string& path) {
    m_updateText->clear();
    auto note = m_folder.Read(path);
    if (!note) return;
    KeepEdit();
    m_note = std::move(*note);
    m_box->Load(FromCodePage(m_note.bytes));
    m_shownText = m_box->Text();
    m_label->setText(ToQt(LastPart(path)));
    EnableCommands(true);
}

void frmNotesFolder::NotesFolderNoteBox_Change() {
    if (IsEdited())
        m_room.KeepDraft(DraftPlace::Manager, {LastPart(m_note.path), m_box->Text()});
    else
        m_room.ForgetDraft(DraftPlace::Manager);
}

void frmNotesFolder::FixQButton_Click() {
    if (m_note.path.empty()) return;
    const auto fixed = WithoutQuotes(m_box->Text());
    if (!fixed) return;
    m_box->Replace(*fixed);
    m_updateText->setText(QStringLiteral("Press Update to change note."));
}

void frmNotesFolder::UpdateButton_Click() {
    std::string why;
    const std::string text = m_box->Text();
    const auto bytes = IsEdited() ? ToCodePage(text, &why) : m_note.bytes;
    if (!bytes) why = "the character '" + why + "' has no place in a note";
    m.shell.ShowError({});
    Changes changes(m.history, "Update note '" + LastPart(m_note.path) + "'");
    if (!bytes || !NotesFolderFiles::Update(changes, m_note, *bytes, &why)) {
        Fail("Error saving to notes folder: " + m.state.NotesFolder + (bytes ? "" : " - " + why),
             why);
        return;
    }
    m_shownText = text;
    m_room.NoteWasSaved(text);
    m_room.NoteFilesChanged();
    if (TakesPartInMainWindow({m_note.path})) m.display.Redraw();
    m_updateText->setText(ToQt("Updated - " + LastPart(m_note.path)));
}

bool frmNotesFolder::TakesPartInMainWindow(const std::vector<std::string>& paths) {
    m.notes.SetNotesFilename();
    return std::any_of(paths.begin(), paths.end(), [this](const std::string& path) {
        return path == m.state.NotesFilename || path == m_room.LoadedPath();
    });
}

void frmNotesFolder::DeleteButton_Click() {
    const std::string path = m_note.path;
    const int row = m_list->CurrentRow();
    std::string why;
    m.shell.ShowError({});
    Changes changes(m.history, "Delete note '" + LastPart(path) + "'");
    if (!NotesFolderFiles::Delete(changes, path, &why)) {
        Fail("Error deleting notes file '" + path + "'", why);
        return;
    }
    const bool shown = TakesPartInMainWindow({path});
    m_room.NoteFilesChanged();
    if (shown) m.display.Redraw();
    m_list->Refresh();
    m_list->setFocus();
    ShowNothing();
    SelectNear(row);
    m_updateText->setText(ToQt("Deleted - " + LastPart(path)));
}

// Works through the whole list; what has changed shows when all is done.
NotesRun frmNotesFolder::Run(const std::string& what,
                             NotesRun (NotesFolderFiles::*work)(Files&,
                                                                const std::vector<std::string>&,
                                                                const NotesFolderFiles::GoOn&)) {
    std::vector<std::string> paths;
    paths.reserve(static_cast<std::size_t>(m_list->Count()));
    for (int row = 0; row < m_list->Count(); ++row)
        paths.push_back(JoinPath(m_list->Path(), m_list->Text(row)));
    m.shell.ShowError({});
    NotesRun run;
    {
        const BatchRun batch(m);
        QElapsedTimer sinceShown;
        Changes changes(m.history, what);
        run = (m_folder.*work)(changes, paths, [&](std::size_t number) {
            if (sinceShown.isValid() && sinceShown.elapsed() < kProgressEvery) return true;
            sinceShown.start();
            return batch.Step("Note " + std::to_string(number) + " of " +
                              std::to_string(paths.size()));
        });
    }
    if (m.events.ProgramEnds()) return run;
    m_room.NoteFilesChanged();
    if (TakesPartInMainWindow(run.changed)) m.display.Redraw();
    return run;
}

void frmNotesFolder::TellRun(const NotesRun& run, const std::string& text) {
    m_updateText->setText(ToQt(text));
    m.shell.ShowMessage(text);
    if (!run.failed.empty())
        Fail("Error saving to notes folder: " + m.state.NotesFolder, run.error);
}

void frmNotesFolder::FixQallButton_Click() {
    const NotesRun run = Run("Remove quotes from notes", &NotesFolderFiles::FixAll);
    const bool shown =
        std::find(run.changed.begin(), run.changed.end(), m_note.path) != run.changed.end();
    if (shown && !IsEdited()) ShowNote(m_note.path);
    TellRun(run, "Removed quotes from " + std::to_string(run.changed.size()) + " notes.");
}

void frmNotesFolder::CommandNew_Click() {
    const NotesRun run = Run("Rename of .txt notes to .enf", &NotesFolderFiles::Convert);
    const int row = m_list->CurrentRow();
    m_list->Refresh();
    const auto renamed = run.renamed.find(m_note.path);
    const std::string shown = renamed == run.renamed.end() ? m_note.path : renamed->second;
    if (IsEdited() && shown != m_note.path) { // the edit goes with its note
        m_note.path = shown;
        m_label->setText(ToQt(LastPart(shown)));
        NotesFolderNoteBox_Change();
    }
    const int now = shown.empty() ? -1 : m_list->RowOf(LastPart(shown));
    if (now >= 0) {
        SelectRow(now); // what was overwritten or has another name is read anew
    } else if (!shown.empty() && !IsEdited()) {
        ShowNothing();
        SelectNear(row);
    }
    TellRun(run, std::to_string(run.changed.size()) + " notes renamed from *.txt to *.enf");
}

// The F key fixes the note that stands in the box; the list takes no letter for its own search.
bool frmNotesFolder::eventFilter(QObject* watched, QEvent* event) {
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (watched != m_list || !key) return QDialog::eventFilter(watched, event);
    const auto* what = static_cast<QKeyEvent*>(event);
    if (what->key() != Qt::Key_F || what->modifiers() != Qt::NoModifier)
        return QDialog::eventFilter(watched, event);
    if (what->isAutoRepeat()) return true;
    const bool released = event->type() == QEvent::KeyRelease;
    if (released && m_fixPressed) FixQButton_Click();
    m_fixPressed = !released;
    return true;
}

} // namespace tarn
