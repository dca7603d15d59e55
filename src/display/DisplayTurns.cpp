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
    TurnRight();
    m_zoom.Rotate(1);
    ShowTurned();
}

void DisplayRoom::RotateLeftButton_Click() {
    TurnLeft();
    m_zoom.Rotate(-1);
    ShowTurned();
}

void DisplayRoom::TurnRight() {
    TurnQuarter(m.state.ImageRotatedRight, kRight);
}

void DisplayRoom::TurnLeft() {
    TurnQuarter(m.state.ImageRotatedLeft, kLeft);
}

void DisplayRoom::TurnQuarter(bool& flag, float degrees) {
    std::swap(m.state.ImageWidth, m.state.ImageHeight);
    flag = true;
    m_turned.Rotate(degrees);
    m_turns.Rotate(degrees == kRight ? 1 : 3);
}

void DisplayRoom::ShowTurned() {
    ShowPreview();
    m.shell.FocusPane();
}

// As the picture was turned before; only quarter turns and mirrorings come back.
void DisplayRoom::TurnAsBefore(const PreviewTurns& turns) {
    if (turns.ImageRotatedRight) TurnRight();
    if (turns.ImageRotatedLeft) TurnLeft();
    if (turns.ImageMirrored) {
        m.state.ImageMirrored = true;
        m_turned.Mirror(kLeftToRight);
        m_turns.Mirror(kLeftToRight);
    }
    if (turns.ImageFliped) {
        m.state.ImageFliped = true;
        m_turned.Mirror(kTopToBottom);
        m_turns.Mirror(kTopToBottom);
    }
}

// By the camera's orientation.
void DisplayRoom::TurnUprightNow() {
    switch (m.state.ExpOrientation) {
    case 6:
        return TurnRight();
    case 8:
        return TurnLeft();
    case 3:
        m.state.ImageTurnedHalf = true;
        m_turned.Rotate(180);
        m_turns.Rotate(2);
        return;
    default:
        return;
    }
}

void DisplayRoom::MirrorButton_Click() {
    MirrorPreview(m.state.ImageMirrored, kLeftToRight);
}

void DisplayRoom::FlipButton_Click() {
    MirrorPreview(m.state.ImageFliped, kTopToBottom);
}

// The fit or cut stays as it is, only mirrored; so is what a later preview starts from.
void DisplayRoom::MirrorPreview(bool& flag, int axis) {
    flag = true;
    m_turned.Mirror(axis);
    m_turns.Mirror(axis);
    m_preview.Mirror(axis);
    m_whole.Mirror(axis);
    m_zoom.Mirror(axis);
    PutPicture();
    m.shell.FocusPane();
}

} // namespace tarn
