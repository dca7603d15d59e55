// Keys and mouse of the 1:1 window.
#include "display/frmOnetoOne.h"

#include "platform/QtText.h"
#include "widgets/PictureBox.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tarn {

namespace {

constexpr int kHelpOneToOne = 4;

} // namespace

bool frmOnetoOne::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        Form_KeyUp(m_keys.Press(*static_cast<QKeyEvent*>(event), m_painted));
        return true;
    case QEvent::KeyRelease:
        Form_KeyUp(m_keys.Release(*static_cast<QKeyEvent*>(event)));
        return true;
    case QEvent::Wheel: {
        const int notches = m_wheel.Turned(*static_cast<QWheelEvent*>(event));
        for (int i = 0; i < std::abs(notches); ++i) StepFiles(m, notches < 0 ? 1 : -1);
        return true;
    }
    case QEvent::Paint:
        m_painted = true;
        return false;
    default:
        return Mouse(watched, event);
    }
}

// clang-format off
const frmOnetoOne::KeyRow frmOnetoOne::kKeys[] = {
    {keys::kEscape, "closes the window", [](frmOnetoOne& w) { w.close(); }},
    {'X', "closes the window", [](frmOnetoOne& w) { w.close(); }},
    {keys::kDown, "next file", [](frmOnetoOne& w) { StepFiles(w.m, 1); }},
    {keys::kUp, "previous file", [](frmOnetoOne& w) { StepFiles(w.m, -1); }},
    {'S', "swaps two places", [](frmOnetoOne& w) { w.SwapPlaces(); }},
    {'T', "line of information, on and off", [](frmOnetoOne& w) { w.ToggleInfo(); }},
    {'0', "circles on the stars, on and off", [](frmOnetoOne& w) { w.m.controls.StarCirclesButton->trigger(); }},
    {'Y', "copies the file to the \"Copy to\" folder", [](frmOnetoOne& w) { w.Copy(); }},
    {keys::kDelete, "picture and note to the wastebasket", [](frmOnetoOne& w) { w.Delete(); }},
    {keys::kF1, "help", [](frmOnetoOne& w) { w.m.shell.ShowHelpPage(kHelpOneToOne); }},
};
// clang-format on

std::vector<keys::KeyLine> frmOnetoOne::KeyLines() {
    std::vector<keys::KeyLine> lines;
    for (const KeyRow& row : kKeys) keys::AddLine(lines, keys::NameOf(row.keycode), row.says);
    lines.push_back({"any other key", "the small picture, on and off"});
    return lines;
}

void frmOnetoOne::Form_KeyUp(int keycode) {
    if (keycode == keys::kNone) return;
    for (const KeyRow& row : kKeys)
        if (row.keycode == keycode) return row.act(*this);
    m_picture3->setVisible(m_picture3->isHidden());
}

void frmOnetoOne::Delete() {
    if (!m.state.SlideViewing) m.shell.Tell(m.fileops.DeleteButton_Click());
}

void frmOnetoOne::Copy() {
    if (m.state.SlideViewing) return;
    const std::string file = m.state.Filename; // the copy may advance to the next one
    const std::string name = m.state.FileNameOnly;
    const CopyOutcome copied = m.copies.CopyImage();
    m.shell.Tell(copied);
    if (!copied.copyOk.empty())
        ShowInfo(copied.copyOk);
    else if (copied && file == m.state.Filename)
        setWindowTitle(ToQt(kCaption + name + "  COPIED"));
    else
        ShowInfo(copied.text);
}

// The first time the place in view is only remembered.
void frmOnetoOne::SwapPlaces() {
    if (!m_last) return;
    const NavPoint here = *m_last;
    const NavPoint there = m_other.value_or(here);
    m_other = here;
    MoveView(there.x, there.y);
}

bool frmOnetoOne::Mouse(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        const auto& press = *static_cast<QMouseEvent*>(event);
        m_pressedIn = watched;
        m_pressedAt = press.position();
        m_dragged = false;
        if (watched == m_picture3) PressNavigator(press);
        return true;
    }
    case QEvent::MouseMove:
        if (watched == m_pressedIn) DragView(*static_cast<QMouseEvent*>(event));
        return true;
    case QEvent::MouseButtonRelease:
        if (std::exchange(m_pressedIn, nullptr) == m_picture2 && watched == m_picture2)
            ReleaseView(*static_cast<QMouseEvent*>(event));
        return true;
    default:
        return false;
    }
}

void frmOnetoOne::PressNavigator(const QMouseEvent& event) {
    const QPointF at = event.position() * devicePixelRatioF();
    if (event.button() == Qt::LeftButton)
        MoveView(float(at.x()), float(at.y()));
    else if (event.button() == Qt::RightButton)
        ToggleInfo();
}

// The picture follows the pointer; on the navigator the point in view does.
void frmOnetoOne::DragView(const QMouseEvent& event) {
    if (!(event.buttons() & Qt::LeftButton) || !m_last) return;
    const QPointF at = event.position();
    if (m_pressedIn == m_picture3) {
        const float x = std::clamp(float(at.x() * devicePixelRatioF()), 0.0F, float(m_nav.Width()));
        const float y =
            std::clamp(float(at.y() * devicePixelRatioF()), 0.0F, float(m_nav.Height()));
        MoveView(x, y);
        return;
    }
    const QPointF moved = at - m_pressedAt;
    if (!m_dragged && moved.manhattanLength() < QApplication::startDragDistance()) return;
    m_dragged = true;
    m_pressedAt = at;
    const PixelSize copy{m_nav.Width(), m_nav.Height()};
    const double x = moved.x() * devicePixelRatioF() * copy.width / std::max(1, m_full.Width());
    const double y = moved.y() * devicePixelRatioF() * copy.height / std::max(1, m_full.Height());
    // From a place that is in view, so that no way has to be dragged back in vain.
    const NavPoint from = WithinReach(*m_last, Full(), copy, View());
    const NavPoint to = WithinReach({from.x - float(x), from.y - float(y)}, Full(), copy, View());
    MoveView(to.x, to.y);
}

void frmOnetoOne::ReleaseView(const QMouseEvent& event) {
    if (event.button() == Qt::LeftButton) {
        if (!m_dragged) StepFiles(m, 2 * event.position().x() > m_picture2->width() ? 1 : -1);
    } else {
        m.shell.SetMainMinimised(!m.shell.MainMinimised());
    }
}

} // namespace tarn
