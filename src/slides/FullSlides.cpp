#include "slides/FullSlides.h"

#include "common/dates.h"
#include "common/mark_text.h"
#include "common/paths.h"
#include "common/text.h"
#include "imaging/PicturesAhead.h"
#include "imaging/Upright.h"
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
    m_walksSelected = m_selectedFiles.size() >= 2;
    m_sequence = SlideSequence(Count(), m_walksSelected ? 0 : m_startRow);
    m_time.onAgain = [this] { Leave(SlideMove::Again); };
    m_time.pictures = [this] {
        const ImgX slide = Turned(m_slide);
        return std::vector<PixelSize>{{slide.Width(), slide.Height()}};
    };
    m_time.onView = [this](bool zoomed) {
        PaintSlide();
        DrawSlideTitle();
        m_time.Window().Refresh();
        if (zoomed) ExpectNeighbours();
    };
}

void FullSlides::CollectSelectedFiles() {
    const FileListBox& list = *m.controls.FileListBox;
    for (const int row : list.SelectedRows()) m_selectedFiles.push_back(list.Text(row));
    m_selectedFolder = list.Path();
}

int FullSlides::Count() const {
    return m_walksSelected ? static_cast<int>(m_selectedFiles.size())
                           : m.controls.FileListBox->Count();
}

std::string FullSlides::PathOf(int index) const {
    if (m_walksSelected) return JoinPath(m_selectedFolder, m_selectedFiles[std::size_t(index)]);
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
    m_time.Signals().SlideNext = false;
    m_turn = {};
    m_whole.Clear();
    m_time.Zoom().View().NextPicture();
    m_file = PathOf(m_sequence.Index());
    if (IsPassedOver(s, m_file)) return false;
    m_time.Window().SetPointer(Qt::WaitCursor);
    SetCrashFile(m_file);
    std::string error;
    const auto look = m.files.Look(m_file, &error);
    if (look) error = LoadFile(*look);
    if (!look || !m_slide.HasImage()) {
        m_copied = false; // its mark belongs to no other
        m_error = error + " - " + LastPart(m_file);
        return false;
    }
    s.FileModifiedText = s.FileDate = FormatDateText(FromFileTime(look->seconds));
    TakeAsCurrentFile();
    ReadInfo();
    return true;
}

// The error of what could not be read; of a damaged file a part may be there all the same.
std::string FullSlides::LoadFile(const FileLook& look) {
    ProgramState& s = m.state;
    std::string error = m_slide.LoadFile(m_file, WantedPixels(), m.ahead, look);
    const QSize size =
        m_slide.HasImage() ? m_slide.Facts()->header.size : ImgX::ReadFileInfo(m_file);
    if (!m_slide.HasImage()) {
        const std::string systemError = m_slide.LoadWithSystemReader(m_file);
        if (m_slide.HasImage()) error = systemError;
    }
    s.ImageWidth = size.width() != 0 ? size.width() : m_slide.Width();
    s.ImageHeight = size.height() != 0 ? size.height() : m_slide.Height();
    return error;
}

void FullSlides::TakeAsCurrentFile() {
    m.current.Choose(m_file);
    m.state.SlideNameOnly = m.state.FileNameOnly;
    m.notes.SetNotesFilename();
}

// The orientation of a file that tells none stays that of the one before; its lines do not.
void FullSlides::ReadInfo() {
    ProgramState& s = m.state;
    s.NoExif = s.ExifFound = s.DatesDiffer = false;
    std::fill_n(s.CameraDataLines.begin(), kPanelLines, std::string());
    m.info.ReadPictureInfo(*m_slide.Facts());
    m_orientation = m_slide.IsUpright() ? 1 : s.ExpOrientation;
}

void FullSlides::ShowSlide() {
    ComposeTitle();
    PlaySound();
    PaintSlide();
    DrawSlideTitle();
    m_time.Window().Refresh();
}

// With the camera's settings, and where it was set just now.
std::string FullSlides::MarkShown() const {
    if (!m.state.CameraSettings && m_file != m_markedFile) return {};
    return MarkText(m.marks.MarkOf(m_file).value_or(Mark()));
}

void FullSlides::ComposeTitle() {
    const ProgramState& s = m.state;
    const SlideTitleFacts facts{s.SlideNameOnly,    s.FileModifiedText, m_sequence.Index(),
                                m_sequence.Count(), s.CameraSettings,   m_copied,
                                m_refusal,          s.BrightnessValue,  MarkShown()};
    m_title = TitleOf(facts, s);
    m_copied = false;
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
    const int brightness = m.state.BrightnessValue;
    frmSlideShow& window = m_time.Window();
    QImage picture;
    if (m_time.Zoom().IsZoomed()) {
        if (!m_whole.HasImage()) m_whole.CopyFrom(m_slide);
        m_whole.FetchAll();
        if (const std::string& error = m_whole.ErrorText(); !error.empty())
            m_error = error + " - " + LastPart(m_file); // what is seen is an enlargement
        picture = m_time.Zoom().Seen(Turned(m_whole), brightness);
    } else {
        ImgX slide = Turned(m_slide);
        FitInto(slide, SlideLayout::One, m_time.Screen());
        slide.Brightness(brightness);
        picture = slide.FullPicture();
    }
    DrawSlideNotes(picture);
    const SlidePlace place =
        PlaceSlide({picture.width(), picture.height()}, 0, SlideLayout::One, m_time.Screen());
    window.Clear();
    window.PutPicture(picture, place.left, place.top);
}

ImgX FullSlides::Turned(const ImgX& decoded) const {
    ImgX slide = decoded;
    Apply(slide, m_turn);
    TurnUpright(m_orientation, slide);
    return slide;
}

// All of them while the slides are zoomed.
QSize FullSlides::WantedPixels() const {
    const SlideSize box = SlideBoxOf(SlideLayout::One, m_time.Screen());
    return m.state.SlideZoomed ? QSize() : QSize(box.width, box.height);
}

void FullSlides::DrawSlideNotes(QImage& picture) const {
    const ProgramState& s = m.state;
    if (!s.SlideNotesOn) return;
    PaintText(picture, TextOnSlide(m.notes.NoteTextOf(m_file), s, s.SlideNotesMode), s,
              m_time.Screen());
}

void FullSlides::DrawSlideTitle() {
    const SlideStrip strip = TitleStrip(0, 0, SlideLayout::One, m_time.Screen());
    std::vector<SlideLine> lines;
    if (m_time.TitleOn()) lines.push_back({m_title, strip.left, strip.top, strip.width});
    m_time.Window().SetLines(std::move(lines));
}

void FullSlides::ExpectNeighbours() {
    std::vector<PictureWish> wishes;
    for (const int index : m_sequence.Expected())
        if (!IsPassedOver(m.state, PathOf(index)))
            wishes.push_back({PathOf(index), WantedPixels(), m_time.ShownSizes()});
    m.ahead.Expect(wishes);
}

// The picture comes back in its turn: the same one again, another one as selected by hand.
void FullSlides::ShowEnd() {
    ProgramState& s = m.state;
    const FileListBox& list = *m.controls.FileListBox;
    m_slide.Clear();
    const int index = m_sequence.Index();
    if (list.Count() < 1) {
        m.navigation.EnableListCommands();
    } else if (m_walksSelected || !m_shown || index >= list.Count()) {
        SelectStart();
    } else {
        const bool same = PathOf(index) == m_startFile && s.Filename == m_startFile;
        const PictureRequest turned{.turns = TurnsOf(m_turn)};
        if (!same) m.navigation.ClearMultiselect();
        if (same && list.IsSelected(index))
            m.display.DisplayPicture(turned);
        else
            m.navigation.SelectRow(index, turned); // a way through the views had unselected it
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
