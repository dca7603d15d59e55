// The room's windows: brightness, size window, 1:1 window. Each is made when it is first asked for.
#include "display/DisplayRoom.h"

#include "display/BusyPointer.h"
#include "display/FrmPic.h"
#include "display/frmBrightness.h"
#include "display/frmOnetoOne.h"
#include "display/frmStretch.h"
#include "imaging/Pixels.h"
#include "platform/Files.h"
#include "widgets/PictureBox.h"

#include <QAction>
#include <QPushButton>

#include <algorithm>

namespace tarn {

namespace {

void BringUp(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

} // namespace

DisplayRoom::DisplayRoom(Context& context) : m(context), m_awaited(context.controls) {
    m_awaited.onReady = [this](const PictureRequest& request) {
        ShowOrAwait(request, m.files.Look(m.state.Filename));
    };
    m_awaited.onWanted = [this](const PictureRequest& request) {
        ShowNow(request, m.files.Look(m.state.Filename));
    };
    m_awaited.onLong = [this](bool reads) {
        const std::string& name = m.state.FileNameOnly;
        m.controls.Picture1->SetHint(reads ? "Reading '" + name + "'..." : "");
    };
}

DisplayRoom::~DisplayRoom() = default;

void DisplayRoom::AdjustButton_Click() {
    if (!m_brightness) m_brightness = std::make_unique<frmBrightness>(m);
    m_brightness->Form_Load();
}

void DisplayRoom::ResetBButton_Click() {
    SetBrightness(0);
}

// Each value starts from the unchanged picture.
void DisplayRoom::SetBrightness(int value) {
    ProgramState& s = m.state;
    s.BrightnessValue = std::clamp(value, -kMostBrightness, kMostBrightness);
    if (m_brightness) m_brightness->ShowValue(s.BrightnessValue);
    if (IsZoomed() || m_preview.HasImage()) PutPicture();
    m.slides.ShowSlideAgain();
}

void DisplayRoom::ViewFull() {
    if (!m_pic) {
        m_pic = std::make_unique<FrmPic>(m);
        m_pic->onRest = [this] { ExpectNeighbours(); }; // at its size from now on
    }
    const bool opens = !m_pic->isVisible();
    m_pic->ViewFull();
    BringUp(*m_pic);
    if (opens) ExpectNeighbours();
}

void DisplayRoom::OneToOneButton_Click() {
    const BusyPointer busy(m.shell);
    if (!m_one) m_one = std::make_unique<frmOnetoOne>(m);
    const bool follows = m.state.OneToOneLoaded;
    if (follows)
        m_one->OnePicture(m.state);
    else
        m_one->Form_Load();
    BringUp(*m_one);
    m.controls.CloseOneToOneButton->show();
    if (!follows) ExpectNeighbours(); // with all their pixels from now on
}

void DisplayRoom::UpdatePictureWindows() {
    if (m.state.OneToOneLoaded && m_one) m_one->OnePicture(m.state);
    if (m_pic) m_pic->Follow();
}

void DisplayRoom::CloseOneToOneButton_Click() {
    if (m_one) m_one->close();
}

void DisplayRoom::OneWindowTopButton_Click() {
    m.state.OneAlwaysTop = m.controls.OneWindowTopButton->isChecked();
    if (m.state.OneToOneLoaded && m_one) m_one->Form_Activate();
}

} // namespace tarn
