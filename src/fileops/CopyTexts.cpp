// Notes, camera data, names and the preview on the clipboard.
#include "common/paths.h"
#include "fileops/ClipboardText.h"
#include "fileops/CopyRoom.h"
#include "platform/Clipboard.h"
#include "widgets/FileListBox.h"
#include "widgets/PictureBox.h"

#include <QAction>

namespace tarn {

void CopyRoom::ConnectClipboard() {
    MainControls& c = m.controls;
    Connect(c.CopyExifButton, [this] { CopyNotesCameraText(true, true); });
    Connect(c.CopyCameraButton[0], [this] { CopyNotesCameraText(false, true); });
    Connect(c.CopyCameraButton[1], [this] { CopyNotesCameraText(false, false); });
    Connect(c.CopyNotesButton, [this] { CopyNotesButton_Click(); });
    Connect(c.CopyExif1LineButton, [this] { CopyExif1LineButton_Click(); });
    Connect(c.CopyFilenameButton, [this] { CopyFilenameButton_Click(); });
    Connect(c.CopyPictureButton, [this] { CopyPictureButton_Click(); });
}

void CopyRoom::Advance() {
    if (m.state.CopyAuto) m.navigation.NextButton_Click();
}

void CopyRoom::PutText(const std::string& text) {
    m.clipboard.SetText(text);
    Advance();
}

void CopyRoom::CopyNotesCameraText(bool withNotes, bool trimmed) {
    PutText(NotesCameraText(m.state.NoteText, m.state.PanelRows, withNotes, trimmed));
}

void CopyRoom::CopyNotesButton_Click() {
    PutText(m.state.NoteText + "\r\n");
}

void CopyRoom::CopyExif1LineButton_Click() {
    PutText(NotesCameraLine(m.state.NoteText, m.state));
}

void CopyRoom::CopyFilenameButton_Click() {
    const FileListBox& list = *m.controls.FileListBox;
    const int row = list.CurrentRow();
    m.clipboard.SetText(row < 0 ? list.Path() : JoinPath(list.Path(), list.Text(row)));
}

void CopyRoom::CopyPictureButton_Click() {
    m.clipboard.SetPicture(m.controls.Picture1->Picture());
    Advance();
}

} // namespace tarn
