#include "display/DisplayRoom.h"

#include "common/paths.h"
#include "desk/controls/DateEntries.h"
#include "desk/controls/SheetEntries.h"

#include <QCheckBox>

namespace tarn {

void DisplayRoom::ConnectControls() {
    MainControls& c = m.controls;
    Connect(c.RotateRightButton, [this] { RotateRightButton_Click(); });
    Connect(c.RotateLeftButton, [this] { RotateLeftButton_Click(); });
    Connect(c.MirrorButton, [this] { MirrorButton_Click(); });
    Connect(c.FlipButton, [this] { FlipButton_Click(); });
    Connect(c.ViewButton, [this] { ViewFull(); });
    Connect(c.OneToOneButton, [this] { OneToOneButton_Click(); });
    Connect(c.CloseOneToOneButton, [this] { CloseOneToOneButton_Click(); });
    Connect(c.OneWindowTopButton, [this] { OneWindowTopButton_Click(); });
    Connect(c.AdjustButton, [this] { AdjustButton_Click(); });
    Connect(c.StretchButton, [this] { StretchButton_Click(); });
    Connect(c.ZoomInButton, [this] { Zoom(1); });
    Connect(c.ZoomOutButton, [this] { Zoom(-1); });
    Connect(c.FitToPaneButton, [this] { FitToPaneButton_Click(); });
    Connect(c.NextImageButton, [this] { NextImageButton_Click(); });
    Connect(c.PrevImageButton, [this] { PrevImageButton_Click(); });
    Connect(c.OneXcheck, [this] { OneXcheck_Click(); });
    Connect(c.TwoXcheck, [this] { TwoXcheck_Click(); });
    m.current.Follow([this] {
        if (m.state.Kind == FileKind::Picture) return;
        m_awaited.End();
        UpdatePictureWindows();
    });
}

void DisplayRoom::Redraw() {
    const ProgramState& s = m.state;
    m.navigation.ResetFileHistory(true);
    if (!s.FileType.empty() && IsListedType(s.WebTypes, s.FileType)) {
        m.video.Load_web();
    } else if (s.VideoImage()) {
        m.video.ShowVideoFile();
        m.shell.FocusPane();
    } else {
        ReloadShownPicture();
    }
}

// Only where the picture pane is up and has a file: a clip or page shown there is left alone.
void DisplayRoom::ReloadShownPicture() {
    if (m.state.Kind != FileKind::Picture || m.state.Filename.empty()) return;
    DisplayPicture();
    m.shell.FocusPane();
}

void DisplayRoom::SetPictureCommands(bool enabled) {
    MainControls& c = m.controls;
    for (QPushButton* button : {c.ViewButton, c.RotateRightButton, c.RotateLeftButton, c.FlipButton,
                                c.MirrorButton, c.OneToOneButton})
        SetEnabled(button, enabled);
    for (QAction* entry : {c.PrintButton, c.AdjustButton, c.SyncDatesButton, c.GenerateThumbButton,
                           c.GenerateThumbCButton, c.CopyPictureButton, c.ZoomInButton,
                           c.ZoomOutButton, c.FitToPaneButton})
        SetEnabled(entry, enabled);
    for (const SheetEntry& sheet : SheetEntries(c)) SetEnabled(sheet.entry, enabled);
    if (enabled) return; // those below need camera data, too: the reader switches them on
    m.state.NoExif = true;
    EnableDateEntries(c, false);
}

void DisplayRoom::OneXcheck_Click() {
    ChangeCutMode(*m.controls.OneXcheck, *m.controls.TwoXcheck);
}

void DisplayRoom::TwoXcheck_Click() {
    ChangeCutMode(*m.controls.TwoXcheck, *m.controls.OneXcheck);
}

// The two exclude each other; unchecking one in code raises its click, which then does nothing.
void DisplayRoom::ChangeCutMode(QCheckBox& clicked, QCheckBox& other) {
    if (m_uncheckingOther) return;
    if (clicked.isChecked() && other.isChecked()) {
        m_uncheckingOther = true;
        other.setChecked(false);
        m_uncheckingOther = false;
    }
    m.state.OneX = m.controls.OneXcheck->isChecked();
    m.state.TwoX = m.controls.TwoXcheck->isChecked();
    m_zoom.Unzoom();
    ReloadShownPicture();
}

} // namespace tarn
