#include "slides/FullSlides.h"

#include "common/dates.h"
#include "common/paths.h"
#include "common/text.h"
#include "desk/state/Replay.h"
#include "imaging/PicturesAhead.h"
#include "pictureinfo/CameraDataText.h"
#include "platform/CrashNote.h"
#include "platform/Files.h"
#include "platform/Sound.h"
#include "slides/SlidePainter.h"
#include "slides/SlideTitle.h"
#include "widgets/FileListBox.h"

#include <algorithm>

namespace tarn {

namespace {

// Videos and web files, by their names alone; all four characters count here.
bool IsPassedOver(const SelectionState& state, const std::string& path) {
    const std::string type = FileTypeOf(path);
    return Contains(ToUpper(state.VideoTypes), type) || Contains(ToUpper(state.WebTypes), type);
}

} // namespace

FullSlides::FullSlides(Context& context, ShowTime& time)
    : m(context), m_time(time), m_startFile(context.state.Filename),
      m_startRow(std::max(0, context.controls.FileListBox->CurrentRow())), m_sequence(1, 0) {
    CollectSelectedFiles();
    m_walksSelected = m.state.SelectedCount >= 2;
    m_sequence = SlideSequence(Count(), m_walksSelected ? 0 : m_startRow);
    m.state.SlideCopied = false;
}

void FullSlides::CollectSelectedFiles() {
    ProgramState& s = m.state;
    const FileListBox& list = *m.controls.FileListBox;
    s.SelectedFiles.clear();
    for (const int row : list.SelectedRows()) s.SelectedFiles.push_back(list.Text(row));
    s.SelectedFolder = list.Path();
    s.SelectedCount = static_cast<int>(s.SelectedFiles.size());
}

int FullSlides::Count() const {
    return m_walksSelected ? m.state.SelectedCount : m.controls.FileListBox->Count();
}

std::string FullSlides::PathOf(int index) const {
    if (m_walksSelected)
        return JoinPath(m.state.SelectedFolder, m.state.SelectedFiles[std::size_t(index)]);
    return JoinPath(m.controls.FileListBox->Path(), m.controls.FileListBox->Text(index));
}

void FullSlides::Run() {
    while (!m_time.Ends() && m_sequence.Resize(Count())) {
        const bool loaded = LoadSlide();
        if (loaded) ShowSlide();
        m_time.Window().SetPointer(Qt::ArrowCursor);
        if (loaded) {
            ExpectNeighbours();
            if (!Walk()) return;
        } else {
            m_time.Pump();
            if (m_time.Ends() || !m_sequence.PassOver()) return;
        }
    }
}

// Waits on the slide, then goes where a key, the mouse or the clock leads. False at the end.
bool FullSlides::Walk() {
    m_shown = true;
    m_sequence.Shown();
    m_move = SlideMove::Next;
    m_back = false;
    m_time.Wait([this](int keycode) { Dispatch(keycode); });
    if (m_time.Ends()) return false;
    m_sequence.Leave(m_move, m_back);
    return true;
}

bool FullSlides::LoadSlide() {
    ProgramState& s = m.state;
    s.SlideNext = false;
    s.WantRight = s.WantLeft = s.WantMirror = s.WantFlip = false;
    m_turn = {};
    s.SlideIndex = m_sequence.Index();
    s.SlideCount = m_sequence.Count();
    s.SlideFile = PathOf(m_sequence.Index());
    if (IsPassedOver(s, s.SlideFile)) return false;
    m_time.Window().SetPointer(Qt::WaitCursor);
    SetCrashFile(s.SlideFile);
    std::string error;
    const auto modified = m.files.ModifiedTime(s.SlideFile, &error);
    if (modified) error = LoadFile();
    if (!modified || !s.ImgXslide.HasImage()) {
        s.SlideCopied = false; // its mark belongs to no other
        m_error = error + " - " + LastPart(s.SlideFile);
        return false;
    }
    s.FileModifiedText = s.FileDate = FormatDateText(FromFileTime(*modified));
    TakeAsCurrentFile();
    ReadInfo();
    return true;
}

// The error of what could not be read; of a damaged file a part may be there all the same.
std::string FullSlides::LoadFile() {
    ProgramState& s = m.state;
    const SlideSize box = SlideBoxOf(SlideLayout::One, m_time.Screen());
    const QSize size = ImgX::ReadFileInfo(s.SlideFile);
    std::string error = s.ImgXslide.LoadFile(s.SlideFile, QSize(box.width, box.height), m.ahead);
    if (!s.ImgXslide.HasImage()) {
        const std::string systemError = s.ImgXslide.LoadWithSystemReader(s.SlideFile);
        if (s.ImgXslide.HasImage()) error = systemError;
    }
    s.ImageWidth = size.width() != 0 ? size.width() : s.ImgXslide.Width();
    s.ImageHeight = size.height() != 0 ? size.height() : s.ImgXslide.Height();
    return error;
}

void FullSlides::TakeAsCurrentFile() {
    ProgramState& s = m.state;
    s.Filename = s.SlideFile;
    s.FileNameOnly = s.SlideNameOnly = LastPart(s.SlideFile);
    s.FileType = FileTypeOf(s.SlideFile);
    m.notes.SetNotesFilename();
}

// The orientation of a file that tells none stays that of the one before; its lines do not.
void FullSlides::ReadInfo() {
    ProgramState& s = m.state;
    s.NoExif = s.ExifFound = s.DatesDiffer = false;
    std::fill_n(s.CameraDataLines.begin(), kPanelLines, std::string());
    m.info.ReadPictureInfo();
    m_orientation = s.ImgXslide.IsUpright() ? 1 : s.ExpOrientation;
}

void FullSlides::ShowSlide() {
    ComposeTitle();
    PlaySound();
    PaintSlide();
    DrawSlideTitle();
    m_time.Window().Refresh();
}

void FullSlides::ComposeTitle() {
    ProgramState& s = m.state;
    SlideTitleFacts facts{s.SlideNameOnly,  s.FileModifiedText, s.SlideIndex, s.SlideCount,
                          s.CameraSettings, s.SlideCopied,      m_refusal,    s.BrightnessValue};
    s.SlideTitle = TitleOf(facts, s);
    s.SlideCopied = false;
}

void FullSlides::PlaySound() {
    const ProgramState& s = m.state;
    if (m_sequence.IsLast() && s.BeepLastSlide)
        m.sound.PlayAndWait("picture_last.wav");
    else if (s.BeepAllSlide)
        m.sound.PlayAndWait("picture.wav");
}

// Always from the picture as decoded: turns by keys, the camera's turn behind them, the fit, the
// whole brightness, the note.
void FullSlides::PaintSlide() {
    ProgramState& s = m.state;
    frmSlideShow& window = m_time.Window();
    ImgX slide;
    slide.CopyFrom(s.ImgXslide);
    Apply(slide, m_turn);
    TurnUpright(m_orientation, slide);
    FitInto(slide, SlideLayout::One, m_time.Screen());
    slide.Brightness(s.BrightnessValue);
    QImage picture = slide.FullPicture();
    DrawSlideNotes(picture);
    const SlidePlace place =
        PlaceSlide({picture.width(), picture.height()}, 0, SlideLayout::One, m_time.Screen());
    window.Clear();
    window.PutPicture(picture, place.left, place.top);
}

void FullSlides::DrawSlideNotes(QImage& picture) const {
    const ProgramState& s = m.state;
    if (!s.SlideNotesOn) return;
    PaintText(picture, TextOnSlide(m.notes.NoteTextOf(s.SlideFile), s, s.SlideNotesMode), s,
              m_time.Screen());
}

void FullSlides::DrawSlideTitle() {
    const SlideStrip strip = TitleStrip(0, 0, SlideLayout::One, m_time.Screen());
    std::vector<SlideLine> lines;
    if (m.state.SlideTitleOn)
        lines.push_back({m.state.SlideTitle, strip.left, strip.top, strip.width});
    m_time.Window().SetLines(std::move(lines));
}

void FullSlides::ExpectNeighbours() {
    const SlideSize box = SlideBoxOf(SlideLayout::One, m_time.Screen());
    std::vector<PictureWish> wishes;
    for (const int index : m_sequence.Expected())
        if (!IsPassedOver(m.state, PathOf(index)))
            wishes.push_back({PathOf(index), QSize(box.width, box.height),
                              SizesIn(SlideLayout::One, m_time.Screen())});
    m.ahead.Expect(wishes);
}

// The same picture comes back in its turn; another one is selected, as by hand.
void FullSlides::ShowEnd() {
    ProgramState& s = m.state;
    const FileListBox& list = *m.controls.FileListBox;
    s.ImgXslide.Clear();
    const int index = m_sequence.Index();
    if (list.Count() < 1) {
        m.navigation.EnableListCommands();
    } else if (m_walksSelected || !m_shown || index >= list.Count()) {
        SelectStart();
    } else if (PathOf(index) == m_startFile && s.Filename == m_startFile) {
        WantTurn(s, m_turn);
        s.RestoreTurns = s.WantRight || s.WantLeft || s.WantMirror || s.WantFlip;
        if (list.IsSelected(index))
            m.display.DisplayPicture();
        else
            m.navigation.SelectRow(index); // a way through the views had unselected it
    } else {
        m.navigation.ClearMultiselect();
        m.navigation.SelectRow(index);
    }
    if (s.BrightnessValue != 0) m.display.AdjustButton_Click();
    if (!m_error.empty()) m.shell.ShowError(m_error);
}

// What is selected stays so.
void FullSlides::SelectStart() {
    const FileListBox& list = *m.controls.FileListBox;
    const int row = list.RowOf(LastPart(m_startFile));
    m.navigation.SelectRow(row >= 0 ? row : std::min(m_startRow, list.Count() - 1));
}

} // namespace tarn
