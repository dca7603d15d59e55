#include "platform/WindowPlaces.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace tarn {

QSize ScreenPixels(const QWidget& window) {
    const QScreen* screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    return screen->size() * screen->devicePixelRatio();
}

QRect BroughtBack(const QRect& place, const QList<QRect>& screens) {
    if (screens.isEmpty()) return place;
    QRect best = screens.first();
    int most = -1;
    for (const QRect& screen : screens) {
        const QRect seen = screen.intersected(place);
        const int area = seen.isValid() ? seen.width() * seen.height() : 0;
        if (area > most) {
            most = area;
            best = screen;
        }
    }
    // Never larger than the screen, and enough to take hold of: the title and some of its width.
    const QRect title(place.left(), place.top(), place.width(), 30);
    const QRect held = best.intersected(title);
    if (held.width() >= std::min(100, place.width()) && held.height() >= 20 &&
        place.top() >= best.top() && place.width() <= best.width() &&
        place.height() <= best.height())
        return place;
    QRect back = place;
    back.setSize(place.size().boundedTo(best.size()));
    back.moveLeft(std::clamp(place.left(), best.left(), best.right() + 1 - back.width()));
    back.moveTop(std::clamp(place.top(), best.top(), best.bottom() + 1 - back.height()));
    return back;
}

void PlaceOnScreen(QWidget& window, const QRect& place) {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    const QRect back = BroughtBack(place, screens);
    window.resize(back.size());
    window.move(back.topLeft());
}

QRect PlaceOf(const QWidget& window) {
    return QRect(window.pos(), window.size());
}

void KeepOnTop(QWidget& window) {
    window.setWindowFlag(Qt::WindowStaysOnTopHint);
}

// The toolkit's own way would hide the window to change its flags; the window system can do
// without.
void SetOnTop(QWidget& window, bool top) {
    if (top == IsOnTop(window)) return;
    window.overrideWindowFlags(window.windowFlags().setFlag(Qt::WindowStaysOnTopHint, top));
    if (QWindow* handle = window.windowHandle()) handle->setFlag(Qt::WindowStaysOnTopHint, top);
}

bool IsOnTop(const QWidget& window) {
    return window.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
}

bool PlacesAreKnown() {
    return QGuiApplication::platformName() != QLatin1String("wayland");
}

} // namespace tarn
