#include "desk/places/KeptPlace.h"

#include "widgets/WindowPlaces.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>

namespace tarn {

namespace {

constexpr double kMostOfScreen = 0.9; // of a window that the window system places

} // namespace

KeptPlace::KeptPlace(QWidget& window, WindowPlace& place) : m_window(window), m_place(place) {
    window.installEventFilter(this);
}

void KeptPlace::Restore(QSize design) {
    const WindowPlace kept = m_place; // the moves below write it
    QSize size = design;
    if (kept.width >= 1) size.setWidth(kept.width / kTwipsPerPixel);
    if (kept.height >= 1) size.setHeight(kept.height / kTwipsPerPixel);
    if (kept.left == 0 && kept.top == 0)
        m_window.resize(size.boundedTo(m_window.screen()->availableSize() * kMostOfScreen));
    else
        PlaceOnScreen(m_window,
                      QRect(QPoint(kept.left / kTwipsPerPixel, kept.top / kTwipsPerPixel), size));
}

bool KeptPlace::eventFilter(QObject*, QEvent* event) {
    const bool changed = event->type() == QEvent::Move || event->type() == QEvent::Resize;
    if (!changed || !m_window.isVisible() || m_window.isMinimized() || m_window.isMaximized() ||
        m_window.isFullScreen())
        return false;
    const QRect place = PlaceOf(m_window);
    if (PlacesAreKnown()) {
        m_place.left = place.left() * kTwipsPerPixel;
        m_place.top = place.top() * kTwipsPerPixel;
    }
    m_place.width = place.width() * kTwipsPerPixel;
    m_place.height = place.height() * kTwipsPerPixel;
    return false;
}

} // namespace tarn
