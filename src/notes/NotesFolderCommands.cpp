// The notes folder, start and end, and the windows of the notes room.
#include "notes/FrmNewNotes.h"
#include "notes/NoteFormats.h"
#include "notes/NotesRoom.h"
#include "notes/frmFillNotes.h"
#include "notes/frmKits.h"
#include "notes/frmNotesFolder.h"

#include "common/paths.h"
#include "history/Changes.h"
#include "platform/Desktop.h"
#include "platform/ProgramFiles.h"
#include "platform/QtText.h"
#include "platform/SettingsStore.h"
#include "platform/WholeFile.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardItemModel>

namespace tarn {

namespace {

constexpr int kNoteChoices = 3; // behind them their box has other ones

NoteChoice ChoiceOf(int index) {
    return index < kNoteChoices ? static_cast<NoteChoice>(index) : NoteChoice::All;
}

// Only those that ask for notes.
void EnableNoteChoices(QComboBox& box, bool enabled) {
    auto* const rows = qobject_cast<QStandardItemModel*>(box.model());
    for (int index = 1; rows && index < kNoteChoices; ++index)
        rows->item(index)->setEnabled(enabled);
}

} // namespace

void NotesRoom::ShowSettings() {
    ShowFolder();
    m.controls.clearNotesSaveButton->setChecked(m.state.ClearNotesSavePlus != 0);
    ShowStepToolTips();
}

// Everything that follows from a notes folder being set or not.
void NotesRoom::ShowFolder() {
    const MainControls& c = m.controls;
    const std::string& folder = m.state.NotesFolder;
    const bool set = !folder.empty();
    c.NotesFrame->setToolTip(ToToolTip(folder));
    SetEnabled(c.DisplayNotesFolderButton, set);
    SetEnabled(c.CommandNotesNew, set);
    c.NotesOnlyMenu->setEnabled(set);
    c.FilesNotesMenu->setEnabled(set);
    SetSaveCommands();
    m_store.index.SetFolder(folder);
    const auto hasNote = [this](const std::string& name) { return m_store.index.HasNote(name); };
    c.FileListBox->SetNoteMarks(set ? std::function<bool(const std::string&)>(hasNote) : nullptr);
    EnableNoteChoices(*c.NoteFilterCombo, set);
    if (ChoiceOf(c.NoteFilterCombo->currentIndex()) != NoteChoice::All) {
        if (!set) c.NoteFilterCombo->setCurrentIndex(0);
        NoteFilterCombo_Click(c.NoteFilterCombo->currentIndex());
    }
}

void NotesRoom::clearNotesSaveButton_Click() {
    m.state.ClearNotesSavePlus = m.controls.clearNotesSaveButton->isChecked();
    ShowStepToolTips();
}

void NotesRoom::ShowStepToolTips() {
    const std::string how = m.state.ClearNotesSavePlus ? "Save notes, clear; advance to "
                                                       : "Save notes, no clear; advance to ";
    m.controls.SaveNotes2Button->setToolTip(ToQt(how + "next picture"));
    m.controls.SaveNotes3Button->setToolTip(ToQt(how + "previous picture"));
}

void NotesRoom::SetNotesButton_Click() {
    const std::string title = "Set Folder were Notes data will be kept";
    const std::string& before = m.state.NotesFolder;
    const std::string chosen =
        m.dialogs.ChooseFolder(title, before.empty() ? m.files.HomeFolder() : before);
    if (chosen.empty()) return;
    m.state.NotesFolder = WithoutTrailingSeparator(chosen);
    m.shell.ShowMessage("Notes folder set to '" + m.state.NotesFolder + "'");
    if (m_manager) m_manager->hide();
    if (m_kits) m_kits->hide(); // its list is of the folder before
    ShowFolder();
}

void NotesRoom::ClearNotesFolderButton_Click() {
    m.shell.ShowMessage("Notes folder cleared, no files were deleted");
    m.state.NotesFolder.clear();
    SetEnabled(m.controls.DeleteNotesButton, false);
    SetCaption("Notes");
    if (m_manager) m_manager->hide();
    if (m_composer) m_composer->CommandCancel_Click(); // its list has no place any more
    if (m_kits) m_kits->hide();
    ShowFolder();
}

// The list anew with the same file current; where it is no longer listed, on its first row.
void NotesRoom::NoteFilterCombo_Click(int index) {
    FileListBox& list = *m.controls.FileListBox;
    const NoteChoice choice = ChoiceOf(index);
    const bool choosesByNote = choice != NoteChoice::All;
    if (!choosesByNote && !m_choosesByNote) return; // by marks
    m_choosesByNote = choosesByNote;
    list.SetNoteChoice(choice);
    m.navigation.RefreshDirButton_Click();
    m.navigation.ResetFileHistory(true);
    if (list.CurrentRow() < 0) m.navigation.EnableListCommands();
}

void NotesRoom::NoteFilesChanged() {
    m_store.index.Refresh();
    m.controls.FileListBox->ShowNoteMarks();
    // The note on show may be another by now; one that is being written stays.
    SetNotesFilename();
    const bool written = m.state.NoteText != m_loadedText;
    if (!m.state.FileNameOnly.empty() && !written && !m_store.IsAsLoaded(m.state.NotesFilename))
        LoadNote();
}

// A window that never had a place stands to the right of the main window, where the screen allows.
void NotesRoom::PlaceBeside(WindowPlace& place, const char* left, const char* top) {
    const QRect main = m.controls.NotesBox->window()->frameGeometry();
    if (!m.settings.Contains(left)) place.left = (main.right() + 8) * kTwipsPerPixel;
    if (!m.settings.Contains(top)) place.top = main.top() * kTwipsPerPixel;
}

void NotesRoom::CommandNotesNew_Click() {
    if (!m_composer) {
        PlaceBeside(m.state.NewNotesPlace, "leftNewNotes_position", "topNewNotes_position");
        m_composer = std::make_unique<FrmNewNotes>(m, *this);
    }
    SetSaveCommands();
    m_composer->OpenWindow();
}

// Without the kit list headers would be taken by their word.
std::optional<FactLists> NotesRoom::Lists(std::string& fault) const {
    std::string kit;
    if (const std::string path = JoinPath(m.state.NotesFolder, kKitFile);
        !m.state.NotesFolder.empty() && m.files.Exists(path)) {
        std::string error;
        const auto bytes = ReadWhole(m.files, path, kLargestKit, &error);
        if (!bytes) return fault = path + ": " + error, std::nullopt;
        kit = *bytes;
    }
    return FactLists{ParseKit(kit), ParseSites(m.state.SkySites), m.state.SkySite, 0};
}

void NotesRoom::KitsButton_Click() {
    if (!m_kits) m_kits = std::make_unique<frmKits>(m);
    m.shell.Tell(m_kits->ShowKits());
}

void NotesRoom::FillNotesButton_Click() {
    if (m.state.BatchRuns || m.state.SlideViewing) return;
    if (!m_fill) m_fill = std::make_unique<frmFillNotes>(m);
    std::string fault;
    const auto lists = Lists(fault);
    m.shell.Tell(lists ? m_fill->ShowNotes(*lists) : Outcome::Refused("ERROR - " + fault));
}

void NotesRoom::DisplayNotesFolderButton_Click() {
    if (!m_manager) {
        PlaceBeside(m.state.NotesFolderPlace, "leftNotes_position", "topNotes_position");
        m_manager = std::make_unique<frmNotesFolder>(m, *this);
    }
    m_manager->OpenWindow();
}

void NotesRoom::EditNoteSettingsFileButton_Click() {
    if (m.state.NotesFolder.empty()) {
        m.shell.ShowMessage("Notes folder has not been set");
        return;
    }
    EditFormatFile(JoinPath(m.state.NotesFolder, m.state.NFSfilename));
}

void NotesRoom::EditFormatFile(const std::string& path) {
    Changes changes(m.history, "New note formats file");
    ReadFormatFile(changes, path, ProgramFile(m.state.NFSfilename)); // there must be one to edit
    const std::string failure = m.desktop.EditText(path);
    if (!failure.empty()) m.shell.ShowMessage("ERROR - " + failure);
}

// The latest goes into the restore buffer; the others come up with their pictures.
void NotesRoom::Started() {
    const std::vector<Draft>& drafts = m_drafts.TakeUp();
    if (drafts.empty()) return;
    m.state.NotesSave = drafts.back().text;
    SetEnabled(m.controls.RestoreNotesButton, true);
    std::string names;
    for (std::size_t i = 0; i + 1 < drafts.size(); ++i)
        names += (names.empty() ? "'" : ", '") + drafts[i].fileName + "'";
    m.shell.ShowMessage("Unsaved note of '" + drafts.back().fileName +
                        "' is in the restore buffer" +
                        (names.empty() ? "" : "; kept until shown: " + names));
}

void NotesRoom::KeepValues() {
    if (m_composer) m_composer->KeepValues();
    if (m_manager) m_manager->KeepPlace();
}

bool NotesRoom::MayEnd(std::string& why) {
    if (m_drafts.Write(&why)) return true;
    why = "Unsaved text is not kept in " + m.files.StateFolder() + ": " + why;
    return false;
}

void NotesRoom::End() {
    std::string why; // the window that could tell it is closing
    m_drafts.EndRun(&why);
    if (m_composer) m_composer->CommandCancel_Click();
    if (m_manager) m_manager->hide();
    if (m.state.NoSaveOnExit) return;
    const auto write = [this](const char* key, int value) {
        m.settings.Write(key, std::to_string(value));
    };
    if (m_composer) {
        write("leftNewNotes_position", m.state.NewNotesPlace.left);
        write("topNewNotes_position", m.state.NewNotesPlace.top);
    }
    if (m_manager) {
        write("leftNotes_position", m.state.NotesFolderPlace.left);
        write("topNotes_position", m.state.NotesFolderPlace.top);
    }
    if (m_composer || m_manager) m.settings.Flush();
}

} // namespace tarn
