#include "notes/NotesRoom.h"

#include "common/codepage.h"
#include "common/paths.h"
#include "history/Changes.h"
#include "notes/FrmNewNotes.h"
#include "notes/NoteNames.h"
#include "notes/NoteText.h"
#include "notes/frmFillNotes.h"
#include "notes/frmKits.h"
#include "notes/frmNotesFolder.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>

namespace tarn {

namespace {

constexpr int kDraftDelay = 400; // milliseconds from an edit to its draft at most

} // namespace

NotesRoom::NotesRoom(Context& context)
    : m(context), m_box(*context.controls.NotesBox), m_store(context.files),
      m_drafts(context.files) {
    m_draftTimer.setSingleShot(true);
    m_draftTimer.setInterval(kDraftDelay);
    QObject::connect(&m_draftTimer, &QTimer::timeout, [this] { WriteDrafts(); });
}

NotesRoom::~NotesRoom() = default;

void NotesRoom::ConnectControls() {
    const MainControls& c = m.controls;
    Connect(c.SaveNotesButton, [this] { SaveNotesButton_Click(); });
    Connect(c.SaveNotes2Button, [this] { SaveNotes2Button_Click(); });
    Connect(c.SaveNotes3Button, [this] { SaveNotes3Button_Click(); });
    Connect(c.ClearNotesButton, [this] { ClearNotesButton_Click(); });
    Connect(c.RestoreNotesButton, [this] { RestoreNotesButton_Click(); });
    Connect(c.DeleteNotesButton, [this] { DeleteNotesButton_Click(); });
    Connect(c.clearNotesSaveButton, [this] { clearNotesSaveButton_Click(); });
    Connect(c.NotesPrevButton, [this] { Step(false); });
    Connect(c.NotesNextButton, [this] { Step(true); });
    Connect(c.CommandNotesNew, [this] { CommandNotesNew_Click(); });
    Connect(c.SetNotesButton, [this] { SetNotesButton_Click(); });
    Connect(c.ClearNotesFolderButton, [this] { ClearNotesFolderButton_Click(); });
    Connect(c.DisplayNotesFolderButton, [this] { DisplayNotesFolderButton_Click(); });
    Connect(c.EditNoteSettingsFileButton, [this] { EditNoteSettingsFileButton_Click(); });
    Connect(c.KitsButton, [this] { KitsButton_Click(); });
    Connect(c.FillNotesButton, [this] { FillNotesButton_Click(); });
    SetEnabled(c.RestoreNotesButton, false); // until there is something
    SetEnabled(c.DeleteNotesButton, false);
    SetSaveCommands();
    QObject::connect(c.NotesBox, &QPlainTextEdit::textChanged, c.NotesBox,
                     [this] { NotesBox_Change(); });
    QObject::connect(c.NoteFilterCombo, &QComboBox::activated, c.NoteFilterCombo,
                     [this](int choice) { NoteFilterCombo_Click(choice); });
    m.current.Follow([this] {
        if (m.state.WebImage())
            ClearNotesForPage();
        else
            CheckForNotes();
        if (m_composer) m_composer->FollowCurrent();
    });
    c.FileListBox->onRefresh = [this] { m_store.index.Refresh(); };
    ConnectKeys();
}

void NotesRoom::SetNotesFilename() {
    m.state.NotesFilename = NotePath(m.state.NotesFolder, m.state.FileNameOnly);
}

// Text that neither the box began with nor any note has got from here.
bool NotesRoom::IsUnsaved() const {
    const std::string& text = m.state.NoteText;
    return !text.empty() && text != m_loadedText && text != m_travelling;
}

void NotesRoom::CheckForNotes() {
    SetNotesFilename();
    // The same file shown again, in another size perhaps: what is being written stays.
    const bool same = m_noteOf == m.state.Filename && m_nameOf == m.state.FileNameOnly;
    const bool written = !m.state.NoteText.empty() && m.state.NoteText != m_loadedText;
    if (same && written && m_store.IsAsLoaded(m.state.NotesFilename)) return;
    LoadNote();
}

std::string NotesRoom::NoteTextOf(const std::string& picture) {
    return picture == m_noteOf ? m.state.NoteText : SavedNoteOf(picture);
}

std::string NotesRoom::SavedNoteOf(const std::string& picture) {
    if (m.state.NotesFolder.empty()) return {};
    const auto bytes = m_store.Read(NotePath(m.state.NotesFolder, LastPart(picture)));
    return bytes ? FromCodePage(WithoutOldMarks(*bytes)) : std::string();
}

std::string NotesRoom::NoteBytesOf(const std::string& picture) {
    if (m.state.NotesFolder.empty()) return {};
    return m_store.Read(NotePath(m.state.NotesFolder, LastPart(picture))).value_or(std::string());
}

void NotesRoom::ReloadNote() {
    SetNotesFilename();
    LoadNote();
}

void NotesRoom::LoadNote() {
    ProgramState& s = m.state;
    const std::string before = m_nameOf;
    m_load = {m_load.number + 1, {}};
    const bool dropped = DropIntoBuffer();
    const bool found =
        !s.NotesFolder.empty() && !s.FileNameOnly.empty() && m_store.Load(s.NotesFilename);
    // Also an empty text: undo must not reach the picture before.
    m_loadedBytes = found ? WithoutOldMarks(m_store.Loaded().bytes) : std::string_view();
    m_box.Load(FromCodePage(m_loadedBytes));
    TakeForLoaded();
    SetEnabled(m.controls.DeleteNotesButton, found);
    SetCaption(found ? "Notes for: " + s.FileNameOnly : "Notes");
    m.controls.FileListBox->ShowNoteMarks();
    if (dropped) SayOfLoad("Unsaved note of '" + before + "' is in the restore buffer");
    if (!m_stepping && !dropped) OfferDraft();
}

void NotesRoom::SayOfLoad(const std::string& word) {
    m_load.word = word;
    m.shell.ShowMessage(word);
}

// What an earlier run could not save comes up with its picture.
void NotesRoom::OfferDraft() {
    const Draft* draft = m_drafts.TakenUpFor(m.state.FileNameOnly);
    if (!draft || draft->text == m.state.NoteText) return;
    m.state.NotesSave = draft->text;
    SetEnabled(m.controls.RestoreNotesButton, true);
    SayOfLoad("Unsaved note of '" + draft->fileName + "' is in the restore buffer");
}

// The box's text is that of the file, now that it stands in the box.
void NotesRoom::TakeForLoaded() {
    m_noteOf = m.state.Filename;
    m_nameOf = m.state.FileNameOnly;
    m_loadedText = m_box.Text();
    m_travelling.clear();
    NotesBox_Change();
}

// What stood in the box goes into the restore buffer; true when no note has it.
bool NotesRoom::DropIntoBuffer() {
    ProgramState& s = m.state;
    if (s.NoteText.empty()) return false;
    const bool unsaved = IsUnsaved();
    s.NotesSave = s.NoteText;
    SetEnabled(m.controls.RestoreNotesButton, true);
    if (unsaved) m_drafts.Drop({m_nameOf, s.NoteText});
    m_drafts.Forget(DraftPlace::Box);
    WriteDrafts();
    return unsaved;
}

void NotesRoom::NotesBox_Change() {
    ProgramState& s = m.state;
    s.NoteText = m_box.Text();
    SetSaveCommands();
    if (IsUnsaved())
        m_drafts.Set(DraftPlace::Box, {m_nameOf, s.NoteText});
    else
        m_drafts.Forget(DraftPlace::Box);
    if (!m_draftTimer.isActive()) m_draftTimer.start();
}

void NotesRoom::KeepDraft(DraftPlace place, const Draft& draft) {
    m_drafts.Set(place, draft);
    if (!m_draftTimer.isActive()) m_draftTimer.start();
}

void NotesRoom::ForgetDraft(DraftPlace place) {
    m_drafts.Forget(place);
    if (!m_draftTimer.isActive()) m_draftTimer.start();
}

void NotesRoom::DropText(const Draft& draft) {
    m_drafts.Drop(draft);
    m_drafts.Forget(DraftPlace::Manager);
    WriteDrafts();
    m.state.NotesSave = draft.text;
    SetEnabled(m.controls.RestoreNotesButton, true);
    m.shell.ShowMessage("Unsaved text of '" + draft.fileName + "' is in the restore buffer");
}

void NotesRoom::NoteWasSaved(const std::string& text) {
    m_drafts.Saved(text);
    WriteDrafts();
}

void NotesRoom::WriteDrafts() {
    m_draftTimer.stop();
    std::string why;
    if (!m_drafts.Write(&why))
        m.shell.ShowMessage("Unsaved text is not kept in " + m.files.StateFolder() + ": " + why);
}

void NotesRoom::SetSaveCommands() {
    const ProgramState& s = m.state;
    const MainControls& c = m.controls;
    // A picture stays shown, and its note open, while the list is narrowed to others.
    const bool selected = !s.FileNameOnly.empty() &&
                          (c.FileListBox->CurrentRow() >= 0 ||
                           (c.FileListBox->LeavesOut(s.FileNameOnly) &&
                            JoinPath(c.FileListBox->Path(), s.FileNameOnly) == s.Filename));
    const bool on = !s.NotesFolder.empty() && selected && !s.NoteText.empty();
    for (QPushButton* button : {c.SaveNotesButton, c.SaveNotes2Button, c.SaveNotes3Button})
        SetEnabled(button, on);
    if (!selected) SetEnabled(c.DeleteNotesButton, false);
    if (m_composer) m_composer->EnableSave(on);
}

Outcome NotesRoom::SaveNote() {
    ProgramState& s = m.state;
    m.shell.ShowError({});
    if (s.SlideViewing && s.Filename != m_noteOf) // the current file is the slide's
        return Outcome::Refused("Not saved while a show runs: the note is of '" + m_nameOf + "'");
    SetNotesFilename();
    std::string why;
    std::string misfit;
    if (!WriteNote(&why, &misfit))
        return Outcome::Refused(
            "ERROR - " + why,
            "Error saving to notes folder: " + s.NotesFolder +
                (misfit.empty() ? "" : " - the character '" + misfit + "' has no place in a note"));
    TakeForLoaded();
    NoteWasSaved(s.NoteText);
    SetEnabled(m.controls.DeleteNotesButton, true);
    SetCaption("Notes for: " + s.FileNameOnly);
    m.controls.FileListBox->ShowNoteMarks();
    return Outcome::Did("SAVED - " + DisplayPath(s.NotesFilename));
}

// What was not edited is written back byte by byte.
bool NotesRoom::WriteNote(std::string* why, std::string* misfit) {
    const ProgramState& s = m.state;
    if (s.NotesFolder.empty()) return *why = "Notes folder has not been set", false;
    if (s.FileNameOnly.empty()) return *why = "No file is selected", false;
    // Saving nothing never replaces deleting.
    if (s.NoteText.empty()) return *why = "There is no text to save", false;
    const bool edited = m_store.Loaded().path.empty() || s.NoteText != m_loadedText;
    const auto bytes = edited ? ToCodePage(s.NoteText, misfit) : m_loadedBytes;
    if (!bytes) return *why = "'" + *misfit + "' has no place in a note", false;
    Changes changes(m.history, "Save note of '" + s.FileNameOnly + "'");
    if (!m_store.Save(changes, s.NotesFilename, *bytes, why)) return false;
    m_loadedBytes = *bytes;
    return true;
}

void NotesRoom::SaveNotesButton_Click() {
    m.shell.Tell(SaveNote());
    m_box.Focus();
}

void NotesRoom::SaveAndStep(bool forward) {
    const Outcome saved = SaveNote();
    m.shell.Tell(saved);
    if (saved) {
        const QScopedValueRollback<bool> stepping(m_stepping, true);
        Step(forward);
        if (!m.state.ClearNotesSavePlus && m.state.NoteText.empty()) {
            m_travelling = m.state.NotesSave; // saved once: no loss when it is dropped
            RestoreNotesButton_Click();
        }
    }
    m_box.Focus();
}

void NotesRoom::Step(bool forward) {
    if (forward)
        m.navigation.NextButton_Click();
    else
        m.navigation.PrevButton_Click();
    m_box.Focus();
}

void NotesRoom::ClearNotesButton_Click() {
    EmptyBox();
    FocusUnlessShow();
}

void NotesRoom::EmptyBox() {
    ProgramState& s = m.state;
    if (IsUnsaved()) m_drafts.Drop({m_nameOf, s.NoteText});
    // A second press finds nothing: what the first one took stays.
    if (!s.NoteText.empty()) s.NotesSave = s.NoteText;
    SetEnabled(m.controls.RestoreNotesButton, true);
    m_box.Replace({});
}

// What was being written goes into the restore buffer. A note that the page has is not shown, so it
// is not deleted either, and a save keeps it aside.
void NotesRoom::ClearNotesForPage() {
    SetNotesFilename();
    EmptyBox();
    m_load = {m_load.number + 1, {}};
    m_store.Forget();
    TakeForLoaded();
    SetEnabled(m.controls.DeleteNotesButton, false);
    SetCaption("Notes:");
}

void NotesRoom::RestoreNotesButton_Click() {
    m_drafts.Restored(m.state.NotesSave);
    m_box.Replace(m.state.NotesSave);
    m_box.Focus();
}

void NotesRoom::DeleteNotesButton_Click() {
    ProgramState& s = m.state;
    SetNotesFilename();
    std::string why;
    Changes changes(m.history, "Delete note of '" + s.FileNameOnly + "'");
    if (s.NotesFolder.empty() || !m_store.Delete(changes, s.NotesFilename, &why)) {
        m.shell.ShowError("Error deleting notes file '" + s.NotesFilename + "'");
        m_box.Focus();
        return;
    }
    m.shell.ShowMessage("Notes file deleted");
    if (s.NoteText.empty()) s.NotesSave = m_loadedText; // cleared before: the file's text
    ClearNotesButton_Click();
    m_loadedText.clear(); // from now on only the restore buffer has the text
    SetEnabled(m.controls.DeleteNotesButton, false);
    FocusUnlessShow();
    SetCaption("Notes:");
    m.controls.FileListBox->ShowNoteMarks();
}

void NotesRoom::FocusUnlessShow() {
    if (!m.state.SlideViewing && !m.state.OneToOneLoaded) m_box.Focus();
}

void NotesRoom::SetCaption(const std::string& caption) {
    m.controls.NotesFrame->setText(ToQt(caption));
}

} // namespace tarn
