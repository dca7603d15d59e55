// The switchboard: what one room may ask of another. A room implements its own interface itself; a
// test implements the one or two that its room rings.
#pragma once

#include <string>

namespace tarn {

enum class Pane;

class NavigationCommands {
public:
    virtual ~NavigationCommands() = default;
    virtual void FileListBox_Click() = 0;
    virtual void SelectRow(int row) = 0; // raises FileListBox_Click; outside the list nothing
    virtual void NextButton_Click() = 0;
    virtual void PrevButton_Click() = 0;
    virtual void ClearMultiselect() = 0;
    virtual void Update_Num_Files(int index) = 0;
    virtual void EnableListCommands() = 0;
    virtual void RefreshDirButton_Click() = 0;
    // The view history starts anew; with the current row as its first entry, or with none.
    virtual void ResetFileHistory(bool withCurrent) = 0;
};

class DisplayCommands {
public:
    virtual ~DisplayCommands() = default;
    virtual void DisplayPicture() = 0;
    virtual void ShowPreview() = 0;
    virtual void Redraw() = 0;
    virtual void SetPictureCommands(bool enabled) = 0;
    virtual void RotateRightButton_Click() = 0;
    virtual void RotateLeftButton_Click() = 0;
    virtual void MirrorButton_Click() = 0;
    virtual void FlipButton_Click() = 0;
    virtual void ViewFull() = 0;
    virtual void OneToOneButton_Click() = 0;
};

class InfoCommands {
public:
    virtual ~InfoCommands() = default;
    virtual void ReadPictureInfo() = 0;
    virtual void SetFileDatesButton_Click() = 0;
};

class NotesCommands {
public:
    virtual ~NotesCommands() = default;
    // The current file is another one: its note comes into the box, what stood there goes into the
    // restore buffer.
    virtual void CheckForNotes() = 0;
    virtual void SetNotesFilename() = 0;
    virtual bool SaveNote() = 0; // false: Label_error says why
    virtual void SaveNotesButton_Click() = 0;
    virtual void ClearNotesButton_Click() = 0;
    virtual void RestoreNotesButton_Click() = 0;
    virtual void DeleteNotesButton_Click() = 0;
    virtual void SetSaveCommands() = 0;  // on when there is something to save and a place for it
    virtual void NoteFilesChanged() = 0; // files came into or left the notes folder
};

class VideoCommands {
public:
    virtual ~VideoCommands() = default;
    virtual void ShowVideoFile() = 0;
    virtual void CloseVideoClip() = 0; // an open clip, if there is one
    virtual void Load_web() = 0;
};

// The window as a whole: what no room owns.
class ShellCommands {
public:
    virtual ~ShellCommands() = default;
    virtual void ShowPane(Pane pane) = 0;             // one pane up, the others down
    virtual void FocusPane() = 0;                     // the keyboard goes to the pane that is up
    virtual void SetBusy(bool busy) = 0;              // hourglass; each true needs its false
    virtual void ShowMessage(const std::string&) = 0; // the message line, FileDateText
    virtual void ShowStatus(const std::string&) = 0;  // the status bar
    virtual void ShowError(const std::string&) = 0;   // Label_error; empty hides it
    virtual void SetListCommands(bool enabled) = 0;   // slides and note saving need a list
    // The help window on a page: 1 navigation, 2 slides, 3 size window, 4 1:1, 5 two and four
    // pictures.
    virtual void ShowHelpPage(int page) = 0;
};

} // namespace tarn
