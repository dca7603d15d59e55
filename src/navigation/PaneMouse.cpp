// The mouse in the picture panes: clicks and the wheel step, a drag moves a zoomed picture.
#include "navigation/PaneKeys.h"

#include "widgets/PictureBox.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>

#include <utility>

namespace tarn {

void PaneKeys::Picture_MouseUp(bool rightButton, int x, int width, QPoint onScreen) {
    if (!m.state.ImageLoaded) return;
    if (rightButton)
        m.controls.PopupPic->popup(onScreen);
    else if (2 * x <= width)
        m.navigation.StepBy(-1, Stepping());
    else
        m.navigation.StepBy(1, Stepping());
}

void PaneKeys::MousePress(QObject* pane, const QMouseEvent& event) {
    m_mouseIn = pane;
    m_mouseAt = event.position();
    m_pans = false;
}

// Only what is zoomed moves: any other drag is none of the pane's.
bool PaneKeys::MouseMove(const QMouseEvent& event) {
    PictureBox& pane = *m.controls.Picture1;
    if (m_mouseIn != &pane || !(event.buttons() & Qt::LeftButton)) return false;
    const QPointF way = event.position() - m_mouseAt;
    if (!m_pans) {
        if (way.manhattanLength() < QApplication::startDragDistance() || !m.display.MayPan())
            return false;
        m_pans = true;
        pane.setCursor(Qt::ClosedHandCursor);
    }
    m_mouseAt = event.position();
    m.display.Pan(way);
    return true;
}

bool PaneKeys::MouseRelease(QObject* pane, const QMouseEvent& event) {
    const bool ours = pane == m_mouseIn;
    m_mouseIn = nullptr;
    if (!ours) return false;
    if (std::exchange(m_pans, false)) {
        if (m.display.MayPan())
            m.controls.Picture1->setCursor(Qt::OpenHandCursor);
        else
            m.controls.Picture1->unsetCursor();
        return true;
    }
    const int width = static_cast<QWidget*>(pane)->width();
    Picture_MouseUp(event.button() == Qt::RightButton, event.position().toPoint().x(), width,
                    event.globalPosition().toPoint());
    return true;
}

// The keyboard stays where it is.
bool PaneKeys::Wheel(const QWheelEvent& event) {
    const int notches = m_wheel.Turned(event);
    if (notches == 0) return true;
    if (event.modifiers() & Qt::ControlModifier)
        m.display.Zoom(notches, event.position());
    else
        m.navigation.StepBy(-notches, KeepingKeyboard());
    return true;
}

} // namespace tarn
