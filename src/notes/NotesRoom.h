// The note beside the picture: the panel, its note file, and the windows that belong to notes.
#pragma once

#include "common/keys.h"
#include "desk/Context.h"
#include "desk/Room.h"
#include "notes/Drafts.h"
#include "notes/FilledFacts.h"
#include "notes/NoteBox.h"
#include "notes/NoteStore.h"

#include <QTimer>

#include <memory>
#include <string>
#include <vector>

namespace tarn {

class FrmNewNotes;
class frmFillNotes;
class frmKits;
class frmNotesFolder;

class NotesRoom : public NotesCommands, public Room {
public:
    explicit NotesRoom(Context& context); // once the window's controls are made
    ~NotesRoom() override;

    void ConnectControls() override;

    void ShowSettings() override;
    void Started() override; // what an earlier run could not save is offered
    void KeepValues() override;
    bool MayEnd(std::string& why) override; // unsaved text goes into the state folder
    void End() override;

    // The current file is another one: its note comes into the box, what stood there goes into the
    // restore buffer.
    void CheckForNotes();
    void ReloadNote() override;
    void SetNotesFilename() override;
    NoteLoad LastLoad() override { return m_load; }
    Outcome SaveNote() override;
    void SaveNotesButton_Click() override;
    void ClearNotesButton_Click();
    void EmptyBox();          // into the restore buffer
    void ClearNotesForPage(); // a page is shown: no note is
    void RestoreNotesButton_Click() override;
    void DeleteNotesButton_Click() override;
    void SetSaveCommands() override;
    Outcome SaveIfUnsaved() override { return IsUnsaved() ? SaveNote() : Outcome::Did(); }
    void NoteFilesChanged() override;
    std::string SavedNoteOf(const std::string& picture) override;
    std::string NoteTextOf(const std::string& picture) override;
    std::string NoteBytesOf(const std::string& picture) override;
    std::string UnsavedText() override { return IsUnsaved() ? m.state.NoteText : std::string(); }

    void SaveNotes2Button_Click() { SaveAndStep(true); }
    void SaveNotes3Button_Click() { SaveAndStep(false); }
    void clearNotesSaveButton_Click();
    void NotesBox_Change();
    void NoteFilterCombo_Click(int index);

    void SetNotesButton_Click();
    void ClearNotesFolderButton_Click();
    void DisplayNotesFolderButton_Click();
    void EditNoteSettingsFileButton_Click();
    void CommandNotesNew_Click();
    void KitsButton_Click();
    void FillNotesButton_Click();

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

    // For the room's own windows.
    // Of the file that is shown: as it stands on disk, which may differ in case.
    const std::string& LoadedPath() const { return m_store.Loaded().path; }
    void ReplaceText(const std::string& text) { m_box.Replace(text); }
    // Of the user, as they stand now; none, and why, where the kit list cannot be read.
    std::optional<FactLists> Lists(std::string& fault) const;
    void EditFormatFile(const std::string& path);
    void KeepDraft(DraftPlace place, const Draft& draft);
    void ForgetDraft(DraftPlace place);
    void DropText(const Draft& draft); // into the restore buffer, with a word
    void NoteWasSaved(const std::string& text);

    FrmNewNotes* Composer() const { return m_composer.get(); } // null before its first opening
    frmNotesFolder* Manager() const { return m_manager.get(); }

private:
    // A key of the note.
    struct KeyRow {
        const char* keys;
        const char* says;
        void (*act)(NotesRoom&);
        bool inBox; // else in the whole window
    };
    static const KeyRow kKeys[];

    void ConnectKeys();
    void PressSave(QPushButton& button);
    bool IsUnsaved() const;
    bool DropIntoBuffer();
    void OfferDraft();
    void LoadNote();
    void SayOfLoad(const std::string& word);
    void TakeForLoaded();
    bool WriteNote(std::string* why, std::string* misfit);
    void SaveAndStep(bool forward);
    void Step(bool forward);
    void FocusUnlessShow();
    void WriteDrafts();
    void SetCaption(const std::string& caption);
    void PlaceBeside(WindowPlace& place, const char* left, const char* top);
    void ShowFolder();
    void ShowStepToolTips();

    Context& m;
    bool m_choosesByNote = false; // the files of the list
    NoteBox m_box;
    NoteStore m_store;
    Drafts m_drafts;
    QTimer m_draftTimer;
    std::string m_noteOf; // path of the file whose note the box began with, and its name
    std::string m_nameOf; //
    NoteLoad m_load;
    std::string m_loadedText;  // what the box began with or last saved
    std::string m_loadedBytes; // the same as a note holds it
    std::string m_travelling;  // saved, and brought along to this picture by Save+ or Save-
    bool m_stepping = false;   // by Save+ or Save-
    std::unique_ptr<FrmNewNotes> m_composer;
    std::unique_ptr<frmNotesFolder> m_manager;
    std::unique_ptr<frmKits> m_kits;
    std::unique_ptr<frmFillNotes> m_fill;
};

} // namespace tarn
