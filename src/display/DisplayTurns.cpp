// The four turns. They act on the loaded picture in memory alone; the flags tell the other windows
// how to turn their own copies.
#include "display/DisplayRoom.h"

#include <utility>

namespace tarn {

namespace {

constexpr float kRight = 90;
constexpr float kLeft = 270;
constexpr int kLeftToRight = 0;
constexpr int kTopToBottom = 1;

} // namespace

void DisplayRoom::RotateRightButton_Click() {
    TurnPreview(m.state.ImageRotatedRight, kRight);
}

void DisplayRoom::RotateLeftButton_Click() {
    TurnPreview(m.state.ImageRotatedLeft, kLeft);
}

void DisplayRoom::MirrorButton_Click() {
    MirrorPreview(m.state.ImageMirrored, kLeftToRight);
}

void DisplayRoom::FlipButton_Click() {
    MirrorPreview(m.state.ImageFliped, kTopToBottom);
}

void DisplayRoom::TurnPreview(bool& flag, float degrees) {
    ProgramState& s = m.state;
    std::swap(s.ImageWidth, s.ImageHeight);
    flag = true;
    m_turned.Rotate(degrees);
    ShowPreview();
    FocusUnlessShow();
}

// The fit or cut stays as it is, only mirrored; so is what a later preview starts from.
void DisplayRoom::MirrorPreview(bool& flag, int axis) {
    flag = true;
    m_turned.Mirror(axis);
    m.state.ImgXpic.Mirror(axis);
    PutPicture();
    FocusUnlessShow();
}

// In a batch its cancel button keeps the focus.
void DisplayRoom::FocusUnlessShow() {
    if (!m.state.SlideViewing && !m.state.BatchRuns) m.shell.FocusPane();
}

} // namespace tarn
