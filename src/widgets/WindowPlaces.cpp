#include "widgets/WindowPlaces.h"

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace tarn {

QSize ScreenPixels(const QWidget& window) {
    const QScreen* screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    return screen->size() * screen->devicePixelRatio();
}

namespace {

constexpr int kTitle = 30; // logical pixels of a window's title, about

// Which shows most of it.
QRect ScreenOf(const QRect& place, const QList<QRect>& screens) {
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
    return best;
}

// Never larger than the screen, and enough to take hold of: the title and some of its width.
bool CanBeHeld(const QRect& place, const QRect& screen) {
    const QRect held = screen.intersected(QRect(place.topLeft(), QSize(place.width(), kTitle)));
    return held.width() >= std::min(100, place.width()) && held.height() >= 20 &&
           place.top() >= screen.top() && place.width() <= screen.width() &&
           place.height() <= screen.height();
}

bool IsSeenWhole(const QRect& place, const QList<QRect>& screens) {
    QRegion all;
    for (const QRect& screen : screens) all += screen;
    return QRegion(place.adjusted(0, 0, 0, kTitle)).subtracted(all).isEmpty();
}

} // namespace

QRect BroughtBack(const QRect& place, const QList<QRect>& screens, Seen seen) {
    if (screens.isEmpty()) return place;
    const QRect screen = ScreenOf(place, screens);
    if (seen == Seen::Whole ? IsSeenWhole(place, screens) : CanBeHeld(place, screen)) return place;
    QRect back = place;
    back.setSize(place.size().boundedTo(screen.size()));
    const int lowest = screen.bottom() + 1 - kTitle - back.height();
    back.moveLeft(std::clamp(place.left(), screen.left(), screen.right() + 1 - back.width()));
    back.moveTop(std::clamp(place.top(), screen.top(), std::max(screen.top(), lowest)));
    return back;
}

void PlaceOnScreen(QWidget& window, const QRect& place, Seen seen) {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    const QRect back = BroughtBack(place, screens, seen);
    window.resize(back.size());
    window.move(back.topLeft());
}

QRect OnScreen(const QRect& place, const QString& name) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen->name() != name || screen->geometry().contains(place.topLeft())) continue;
        const QScreen* from = QGuiApplication::screenAt(place.topLeft());
        const QPoint inside = from ? place.topLeft() - from->geometry().topLeft() : QPoint();
        return QRect(screen->geometry().topLeft() + inside, place.size());
    }
    return place;
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
