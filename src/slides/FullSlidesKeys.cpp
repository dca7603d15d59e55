// What the keys of the full-screen show do.
#include "slides/FullSlides.h"

#include "common/paths.h"
#include "slides/SlidePainter.h"
#include "widgets/FileListBox.h"

#include <QPushButton>

namespace tarn {

namespace {

constexpr int kHelpPage = 2;
constexpr int kQuarter = 90; // degrees
constexpr int kLastNotesMode = 2;

} // namespace

void FullSlides::Dispatch(int keycode) {
    const SlideEffect effect = FullEffectOf(keycode, m.state.SlideAltArrowKeys);
    if (const auto change = MarkChangeOf(effect)) return SetMark(*change);
    m_back = SkipsBack(keycode);
    switch (effect.action) {
    case SlideAction::None:
        return;
    case SlideAction::Move:
        return Leave(static_cast<SlideMove>(effect.amount));
    case SlideAction::Rotate:
    case SlideAction::Mirror:
        return Turn(effect.action, effect.amount);
    case SlideAction::Zoom:
        return m_time.ZoomBy(effect.amount);
    case SlideAction::Brightness:
        return Brighten(effect.amount);
    case SlideAction::ResetBrightness:
        return ResetBrightness();
    case SlideAction::AdjustWindow:
        return AdjustWindow();
    case SlideAction::Notes:
        return NextNotesMode();
    case SlideAction::Title:
        return ToggleTitle();
    case SlideAction::HistoryBack:
        return GoToView(true);
    case SlideAction::HistoryForward:
        return GoToView(false);
    case SlideAction::Copy:
        return Copy(false);
    case SlideAction::Convert:
        return Copy(true);
    case SlideAction::Delete:
        return Delete();
    case SlideAction::Help:
        return m_time.ShowHelp(kHelpPage);
    case SlideAction::Done:
        return m_time.End();
    default:
        return ChangeLook(effect.action);
    }
}

void FullSlides::Leave(SlideMove move) {
    m_move = move;
    m_time.Signals().Slideloop = false;
}

// The camera's turn comes behind: on a picture that it lays on its side, left and right are what is
// top and bottom before.
void FullSlides::Turn(SlideAction action, int amount) {
    const bool swaps = m_orientation == 6 || m_orientation == 8;
    ZoomView& view = m_time.Zoom().View();
    if (action == SlideAction::Rotate) {
        m_turn.Rotate(amount / kQuarter);
        view.Rotate(amount / kQuarter);
    } else {
        m_turn.Mirror(swaps ? 1 - amount : amount);
        view.Mirror(amount);
    }
    ShowSlide();
}

void FullSlides::Brighten(int step) {
    m.display.SetBrightness(m.state.BrightnessValue + step);
    ShowSlide();
}

void FullSlides::ResetBrightness() {
    m.display.ResetBButton_Click();
    Leave(SlideMove::Again);
}

void FullSlides::AdjustWindow() {
    m_sequence.ShowAgain();
    m.display.AdjustButton_Click();
    m_time.Window().Lift("frmBrightness");
    m_time.Window().TakeFocusBack();
}

void FullSlides::NextNotesMode() {
    ProgramState& s = m.state;
    s.SlideNotesMode = s.SlideNotesMode >= kLastNotesMode ? 0 : s.SlideNotesMode + 1;
    s.SlideNotesOn = s.SlideNotesMode != 0;
    Leave(SlideMove::Again);
}

void FullSlides::ToggleTitle() {
    m_time.TitleOn() = !m_time.TitleOn();
    CloseLook();
}

// Colour, font and size of the title, the background, the camera's settings.
void FullSlides::ChangeLook(SlideAction action) {
    switch (action) {
    case SlideAction::TextColor:
        m_time.NextTextColor();
        return CloseLook();
    case SlideAction::TextFont:
        m_time.NextTextFont();
        m_time.TitleOn() = true;
        return CloseLook();
    case SlideAction::TextSize:
        m_time.NextTextSize();
        m_time.TitleOn() = true;
        DrawSlideTitle();
        return m_time.Window().Refresh();
    case SlideAction::Background:
        m_time.NextBackground();
        return Leave(SlideMove::Again);
    case SlideAction::CameraSettings:
        m_time.ToggleCameraSettings();
        return Leave(SlideMove::Again);
    default:
        return;
    }
}

// Some displays need the whole picture painted again.
void FullSlides::CloseLook() {
    DrawSlideTitle();
    m_time.Window().Refresh();
    if (m.state.SlideClear) Leave(SlideMove::Again);
}

// Through the views of the folder, which count rows of the list; selected files go by their name.
void FullSlides::GoToView(bool back) {
    const FileListBox& list = *m.controls.FileListBox;
    const std::optional<int> row = m.navigation.MoveThroughViews(back);
    if (!row) return;
    int index = *row;
    if (m_walksSelected) {
        const std::string name = index >= 0 && index < list.Count() ? list.Text(index) : "";
        const auto found = std::find(m_selectedFiles.begin(), m_selectedFiles.end(), name);
        if (found == m_selectedFiles.end()) return;
        index = static_cast<int>(found - m_selectedFiles.begin());
    }
    m_sequence.GoTo(index);
    Leave(SlideMove::Again);
}

void FullSlides::Copy(bool convert) {
    TakeAsCurrentFile();
    m.shell.ShowMessage({});
    CopyOutcome copied;
    if (convert)
        static_cast<Outcome&>(copied) = m.copies.CMImage();
    else
        copied = m.copies.CopyImage();
    m.shell.Tell(copied);
    m_refusal = copied ? std::string() : copied.text;
    // Why it failed; what is kept of an earlier failure says nothing about a refusal.
    if (!copied.fault.empty() && !copied.copyOk.empty()) m_refusal = copied.copyOk;
    // A refusal without a word says nothing at all.
    m_copied = copied || !m_refusal.empty();
    Leave(SlideMove::Again);
}

void FullSlides::SetMark(const MarkChange& change) {
    m.marks.MarkFiles({m_file}, change);
    m_markedFile = m_file;
    ComposeTitle();
    DrawSlideTitle();
    m_time.Window().Refresh();
}

// The file that is seen, then the one behind it; both by their names, since others may come and go.
void FullSlides::Delete() {
    ProgramState& s = m.state;
    const FileListBox& list = *m.controls.FileListBox;
    TakeAsCurrentFile();
    const std::string name = s.SlideNameOnly;
    const std::string next =
        Count() > 0 ? LastPart(PathOf((m_sequence.Index() + 1) % Count())) : "";
    m.shell.Tell(m.fileops.DeleteButton_Click());
    if (list.RowOf(name) >= 0) return;
    if (m_walksSelected) std::erase(m_selectedFiles, name);
    m_sequence.Forget();
    if (!m_sequence.Resize(Count())) return m_time.End();
    if (!m_walksSelected && list.RowOf(next) >= 0) m_sequence.GoTo(list.RowOf(next));
    Leave(SlideMove::Again);
}

} // namespace tarn
