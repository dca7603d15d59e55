#include "shell/window/SilentRooms.h"

#include "common/paths.h"
#include "platform/PictureBox.h"

#include <QLabel>
#include <QListWidget>

namespace tarn {

void SilentVideo::Say(PictureBox* pane, const std::string& what) {
    ProgramState& s = m.state;
    s.FileNameOnly = LastPart(s.Filename);
    s.PanelRows.clear();
    s.SizeText.clear();
    s.ImageLoaded = false;
    m.display.SetPictureCommands(false);
    m.controls.List1->clear();
    for (QLabel* label : {m.controls.SizeText, m.controls.MpixelText, m.controls.FileSizeText})
        label->clear();
    const std::string text = what + " are not shown in this version";
    pane->SetPicture({});
    pane->SetHint(text);
    m.shell.ShowError({});
    m.shell.ShowMessage(text);
    m.notes.CheckForNotes();
}

} // namespace tarn
