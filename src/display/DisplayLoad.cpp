// From the selected file to the picture on screen, step by step.
#include "display/DisplayRoom.h"

#include "common/dates.h"
#include "common/paths.h"
#include "display/BusyPointer.h"
#include "display/FrmPic.h"
#include "display/Placeholder.h"
#include "imaging/PicturesAhead.h"
#include "imaging/fits/FitsFile.h"
#include "platform/Files.h"
#include "platform/ProgramFiles.h"
#include "platform/Sound.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>

namespace tarn {

namespace {

std::string FileDateText(const Files& files, const std::string& path) {
    const auto time = files.ModifiedTime(path);
    return time ? FormatDateText(FromFileTime(*time)) : std::string();
}

} // namespace

bool DisplayRoom::IsLastRow() const {
    const int count = m.controls.FileListBox->Count();
    return count > 0 && count == m.state.FileIndex + 1;
}

void DisplayRoom::DisplayPicture() {
    ProgramState& s = m.state;
    ForgetLastPicture();
    {
        const BusyPointer busy(m.shell);
        BeginPicture();
        const std::string error = LoadPicture();
        m_placeholder = !s.ImgXpic.HasImage();
        if (m_placeholder)
            ShowPlaceholder(error);
        else if (!error.empty() && PlaceholderFor(s.FileType).showsError)
            ShowLoadError(error); // the part that could be read is shown all the same
        if (const std::string& remark = s.ImgXpic.ColorRemark(); !remark.empty())
            m.shell.ShowStatus(s.Filename + "   " + remark);
        s.ImgXfull.CopyFrom(s.ImgXpic);
        s.ImgXfullBC.CopyFrom(s.ImgXpic);
        m_turned.CopyFrom(s.ImgXpic);
        ShowWithWantedTurns();
        ReadInfo();
        TellFitsError(error);
    }
    s.WantRight = s.WantLeft = s.WantMirror = s.WantFlip = false;
    m.controls.LastLabel->setVisible(IsLastRow());
    PlayPictureSound();
    m.notes.CheckForNotes();
    UpdateOneToOneWindow();
    if (!s.SlideViewing && !s.BatchRuns && s.FormLoadDone && !s.OneToOneNav) m.shell.FocusPane();
    if (s.FormLoadDone) TurnByOrientation();
    m.copies.PictureShown();
    FollowStretch();
    if (m_pic) m_pic->Follow();
    ExpectNeighbours();
}

void DisplayRoom::UpdateOneToOneWindow() {
    if (!m.state.OneToOneLoaded) return;
    const QScopedValueRollback<bool> arriving(m_arriving, true);
    m.display.OneToOneButton_Click();
}

void DisplayRoom::ForgetLastPicture() {
    ProgramState& s = m.state;
    s.ImgXpic.Clear();
    s.ImgXfullBC.Clear();
    m_turned.Clear();
    s.ExifFound = false;
    s.DatesDiffer = false;
    m.shell.ShowError("");
    m.controls.DeletePicButton->setVisible(false);
    m.shell.ShowMessage("");
    s.PictureDate.clear();
    s.NoExif = false;
}

void DisplayRoom::BeginPicture() {
    ProgramState& s = m.state;
    s.ImageRotatedRight = s.ImageRotatedLeft = s.ImageMirrored = s.ImageFliped = false;
    s.ImageTurnedHalf = false;
    s.DeleteNoteToo = true;
    s.ExpOrientation = 0;
    s.FileIndex = m.controls.FileListBox->CurrentRow();
    s.FileNameOnly = LastPart(s.Filename);
    s.FileDate = FileDateText(m.files, s.Filename);
    s.PanelRows.clear();
    m.controls.List1->clear();
    s.HistoryListed = false;
}

// The size comes first and from the header, so that it is known even of a file that fails later.
std::string DisplayRoom::LoadPicture() {
    ProgramState& s = m.state;
    const QSize size = ImgX::ReadFileInfo(s.Filename);
    s.ImageWidth = size.width();
    s.ImageHeight = size.height();
    std::string error = s.ImgXpic.LoadFile(s.Filename, WantedPixels(), m.ahead);
    if (!s.ImgXpic.HasImage()) {
        const std::string systemError = s.ImgXpic.LoadWithSystemReader(s.Filename);
        if (!s.ImgXpic.HasImage()) return error;
        error = systemError;
    }
    // Without a size nothing would be painted over the picture before.
    if (s.ImageWidth == 0) s.ImageWidth = s.ImgXpic.Width();
    if (s.ImageHeight == 0) s.ImageHeight = s.ImgXpic.Height();
    return error;
}

void DisplayRoom::ShowLoadError(const std::string& error) {
    m.shell.ShowError(error + " - " + m.state.FileNameOnly);
}

// A placeholder for pictures that no reader knows lies there without a word; what is wrong with one
// of a telescope stands in the line of messages.
void DisplayRoom::TellFitsError(const std::string& error) {
    const bool quiet = !PlaceholderFor(m.state.FileType).showsError;
    if (!error.empty() && quiet && IsFitsFile(m.state.Filename))
        m.shell.ShowMessage(error + " - " + m.state.FileNameOnly);
}

void DisplayRoom::ShowPlaceholder(const std::string& error) {
    ProgramState& s = m.state;
    MainControls& c = m.controls;
    const Placeholder placeholder = PlaceholderFor(s.FileType);
    c.DeletePicButton->setVisible(placeholder.offersDelete && c.FileListBox->Count() > 0);
    if (placeholder.offersDeleteFits) c.DeleteFitsButton->setVisible(true);
    if (placeholder.showsError) ShowLoadError(error);
    s.DeleteNoteToo = false;

    const std::string path = ProgramFile(std::string(placeholder.picture));
    s.ImgXpic.LoadFile(path, IsCutMode() ? QSize() : QSize(s.PreviewWidth, s.PreviewHeight));
    s.ImageWidth = s.ImgXpic.Width();
    s.ImageHeight = s.ImgXpic.Height();
    SetPictureCommands(false);
    s.MpixelText.clear();
    s.FileSizeText.clear();
    s.SizeText.clear();
    for (QLabel* text : {c.MpixelText, c.FileSizeText, c.SizeText}) text->clear();
    s.NoExif = true;
    s.ImageLoaded = false;
    if (!s.ImgXpic.HasImage()) PutNothing();
}

void DisplayRoom::ShowWithWantedTurns() {
    ProgramState& s = m.state;
    const bool restore = s.RestoreTurns;
    s.RestoreTurns = false;
    if (restore && s.WantRight) RotateRightButton_Click();
    if (restore && s.WantLeft) RotateLeftButton_Click();
    if (restore && s.WantMirror) {
        ShowPreview();
        MirrorButton_Click();
    }
    if (restore && s.WantFlip) {
        ShowPreview();
        FlipButton_Click();
    }
    const bool shown = s.WantRight || s.WantLeft || s.WantMirror || s.WantFlip;
    if (!restore || !shown) ShowPreview();
}

void DisplayRoom::ReadInfo() {
    ProgramState& s = m.state;
    if (!s.NoExif) {
        m.info.ReadPictureInfo();
        if (s.ImgXpic.IsUpright()) s.ExpOrientation = 1;
        if (!s.ImageLoaded) {
            SetPictureCommands(true);
            s.ImageLoaded = true;
        }
    }
    if (!s.DatesDiffer || !s.AutoSetFileDates) return;
    const Outcome set = m.info.SetFileDatesButton_Click();
    m.shell.Tell(set);
    if (set) m.ahead.TimesWereSet(s.Filename); // the way back finds the picture decoded
}

void DisplayRoom::PlayPictureSound() {
    const ProgramState& s = m.state;
    const char* sound = IsLastRow() && s.BeepLastSlide ? "picture_last.wav"
                        : s.BeepAllSlide               ? "picture.wav"
                                                       : nullptr;
    if (!sound) return;
    if (s.SlideViewing)
        m.sound.PlayAndWait(sound); // which holds up the next picture
    else
        m.sound.Play(sound);
}

void DisplayRoom::TurnByOrientation() {
    switch (m.state.ExpOrientation) {
    case 6:
        RotateRightButton_Click();
        break;
    case 8:
        RotateLeftButton_Click();
        break;
    case 3:
        m.state.ImageTurnedHalf = true;
        m_turned.Rotate(180);
        ShowPreview();
        break;
    default:
        break;
    }
}

} // namespace tarn
