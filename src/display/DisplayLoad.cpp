// From the selected file to the picture on screen, step by step.
#include "display/DisplayRoom.h"

#include "common/dates.h"
#include "common/paths.h"
#include "display/BusyPointer.h"
#include "display/FrmPic.h"
#include "display/frmOnetoOne.h"
#include "imaging/PicturesAhead.h"
#include "imaging/Placeholder.h"
#include "imaging/fits/SkyFile.h"
#include "platform/Files.h"
#include "platform/ProgramFiles.h"
#include "platform/Sound.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace tarn {

namespace {

std::string FileDateText(const std::optional<FileLook>& look) {
    return look ? FormatDateText(FromFileTime(look->seconds)) : std::string();
}

} // namespace

bool DisplayRoom::IsLastRow() const {
    const int count = m.controls.FileListBox->Count();
    return count > 0 && count == m.state.FileIndex + 1;
}

void DisplayRoom::DisplayPicture(const PictureRequest& request) {
    m_awaited.End();
    ForgetLastPicture();
    ShowOrAwait(request, request.look ? request.look : m.files.Look(m.state.Filename));
}

void DisplayRoom::ShowOrAwait(const PictureRequest& request, const std::optional<FileLook>& look) {
    if (!request.awaits || IsAtHand(look))
        ShowNow(request, look);
    else
        Await(request, look);
}

void DisplayRoom::ShowNow(const PictureRequest& request, const std::optional<FileLook>& look) {
    m.state.NoExif = false;
    {
        const BusyPointer busy(m.shell);
        const std::string error = LoadCurrent(look);
        ShowLoaded(request, error);
    }
    TellShown(request);
}

bool DisplayRoom::IsAtHand(const std::optional<FileLook>& look) {
    const ProgramState& s = m.state;
    if (!m_patience || !look || !s.FormLoadDone || s.SlideViewing || s.BatchRuns) return true;
    return m.ahead.Await(s.Filename, WantedPixels(), *look, *m_patience, m_awaited.NewCall());
}

// The file is the current one from now on, with an empty pane: nothing of the picture before stands
// under its name.
void DisplayRoom::Await(const PictureRequest& request, const std::optional<FileLook>& look) {
    ProgramState& s = m.state;
    BeginPicture();
    s.FileDate = FileDateText(look);
    for (ImgX* image : {&s.ImgXfull, &m_bright, &m_whole}) image->Clear();
    m_placeholder = true;
    s.ImageWidth = s.ImageHeight = 0;
    ForgetTexts();
    PutNothing();
    m.shell.ShowFileTexts();
    m.controls.LastLabel->setVisible(IsLastRow());
    m.current.Tell();
    UpdatePictureWindows();
    if (request.focus) m.shell.FocusPane();
    m_awaited.Begin(request);
}

std::string DisplayRoom::LoadCurrent(const std::optional<FileLook>& look) {
    ProgramState& s = m.state;
    BeginPicture();
    s.FileDate = FileDateText(look);
    std::string error = LoadPicture(look);
    m_placeholder = !m_turned.HasImage();
    if (m_placeholder)
        ShowPlaceholder(error);
    else if (!error.empty() && PlaceholderFor(s.FileType).showsError)
        ShowLoadError(error); // the part that could be read is shown all the same
    if (const std::string& remark = m_turned.ColorRemark(); !remark.empty())
        m.shell.ShowStatus(s.Filename + "   " + remark);
    s.ImgXfull.CopyFrom(m_turned);
    return error;
}

// The first picture after the start is not turned by the camera's orientation.
void DisplayRoom::ShowLoaded(const PictureRequest& request, const std::string& error) {
    ProgramState& s = m.state;
    if (request.turns) TurnAsBefore(*request.turns);
    ReadInfo();
    m_arrived = s;
    if (s.FormLoadDone) TurnUprightNow();
    ShowPreview();
    m.shell.ShowFileTexts();
    TellFitsError(error);
    m.controls.LastLabel->setVisible(IsLastRow());
}

void DisplayRoom::TellShown(const PictureRequest& request) {
    const ProgramState& s = m.state;
    PlayPictureSound();
    m.current.Tell();
    if (s.OneToOneLoaded && m_one) {
        const BusyPointer busy(m.shell);
        m_one->OnePicture(m_arrived, s.ExpOrientation);
    }
    if (request.focus) m.shell.FocusPane();
    FollowStretch();
    if (m_pic) m_pic->Follow();
    if (request.neighbours) ExpectNeighbours();
}

void DisplayRoom::ForgetLastPicture() {
    ProgramState& s = m.state;
    m_turned.Clear();
    m_turns = {};
    m_preview.Clear();
    m_zoom.NextPicture();
    s.ExifFound = false;
    s.DatesDiffer = false;
    m.shell.ShowError("");
    m.controls.DeletePicButton->setVisible(false);
    m.shell.ShowMessage("");
    s.PictureDate.clear();
}

void DisplayRoom::BeginPicture() {
    ProgramState& s = m.state;
    static_cast<PreviewTurns&>(s) = {};
    s.DeleteNoteToo = true;
    s.ExpOrientation = 0;
    m.current.Choose(s.Filename, m.controls.FileListBox->CurrentRow());
    s.PanelRows.clear();
    s.HistoryListed = false;
}

// The size is that of the header.
std::string DisplayRoom::LoadPicture(const std::optional<FileLook>& look) {
    ProgramState& s = m.state;
    std::string error =
        m_turned.LoadFile(s.Filename, WantedPixels(), m.ahead, look.value_or(FileLook()));
    if (!m_turned.HasImage()) {
        const std::string systemError = m_turned.LoadWithSystemReader(s.Filename);
        if (!m_turned.HasImage()) return error;
        error = systemError;
    }
    const QSize size = m_turned.Facts()->header.size;
    s.ImageWidth = size.width();
    s.ImageHeight = size.height();
    // Without a size nothing would be painted over the picture before.
    if (s.ImageWidth == 0) s.ImageWidth = m_turned.Width();
    if (s.ImageHeight == 0) s.ImageHeight = m_turned.Height();
    return error;
}

void DisplayRoom::ShowLoadError(const std::string& error) {
    m.shell.ShowError(error + " - " + m.state.FileNameOnly);
}

// A placeholder for pictures that no reader knows lies there without a word; what is wrong with one
// of a telescope stands in the line of messages.
void DisplayRoom::TellFitsError(const std::string& error) {
    const bool quiet = !PlaceholderFor(m.state.FileType).showsError;
    if (!error.empty() && quiet && IsSkyFile(m.state.Filename))
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
    m_turned.LoadFile(path, IsCutMode() ? QSize() : QSize(s.PreviewWidth, s.PreviewHeight));
    s.ImageWidth = m_turned.Width();
    s.ImageHeight = m_turned.Height();
    ForgetTexts();
    if (!m_turned.HasImage()) PutNothing();
}

void DisplayRoom::ForgetTexts() {
    ProgramState& s = m.state;
    SetPictureCommands(false);
    for (std::string* text : {&s.MpixelText, &s.FileSizeText, &s.SizeText, &s.ZoomText})
        text->clear();
    s.NoExif = true;
    s.ImageLoaded = false;
}

void DisplayRoom::ReadInfo() {
    ProgramState& s = m.state;
    if (!s.NoExif) {
        m.info.ReadPictureInfo(*m_turned.Facts());
        if (m_turned.IsUpright()) s.ExpOrientation = 1;
        if (!s.ImageLoaded) {
            SetPictureCommands(true);
            s.ImageLoaded = true;
        }
    }
    if (s.DatesDiffer && s.AutoSetFileDates) SetFileDate();
}

// Until the user has said whether that is to be so, it can be taken back.
void DisplayRoom::SetFileDate() {
    ProgramState& s = m.state;
    const auto& left = s.DatesTakenBack;
    if (std::find(left.begin(), left.end(), s.Filename) != left.end()) return;
    const auto before = s.FileDatesAnswered ? std::optional<FileLook>() : m.files.Look(s.Filename);
    const Outcome set = m.info.SetFileDatesButton_Click();
    m.shell.Tell(set);
    if (!set) return;
    m.ahead.TimesWereSet(s.Filename); // the way back finds the picture decoded
    if (!before) return;
    const auto after = m.files.Look(s.Filename);
    if (!after) return;
    const auto again = std::find_if(s.DatesSet.begin(), s.DatesSet.end(),
                                    [&s](const DateChange& set) { return set.path == s.Filename; });
    if (again == s.DatesSet.end())
        s.DatesSet.push_back({s.Filename, *before, *after});
    else
        again->after = *after;
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

} // namespace tarn
