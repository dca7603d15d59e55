// Places of windows on the screens, in logical pixels.
#pragma once

#include <QRect>
#include <QSize>

class QWidget;

namespace tarn {

// Size of the screen on which the window stands, in device pixels.
QSize ScreenPixels(const QWidget& window);

// How much of a window the screens must show for its place to be left alone: enough to take hold
// of, or all of it.
enum class Seen { Part, Whole };

// Moves and sizes a window; a place off every screen is brought back onto the nearest.
void PlaceOnScreen(QWidget& window, const QRect& place, Seen seen = Seen::Part);

// The place moved to the screen of that name, unless it lies there or there is none.
QRect OnScreen(const QRect& place, const QString& screen);

// The nearest place inside one of the screens for a rectangle; size kept where it fits.
QRect BroughtBack(const QRect& place, const QList<QRect>& screens, Seen seen);

// The window's place: the frame's corner, the size of the inside.
QRect PlaceOf(const QWidget& window);

// Above the other windows; to be called once, before the window is first shown.
void KeepOnTop(QWidget& window);

// The same for a window that may be up: it neither goes nor moves.
void SetOnTop(QWidget& window, bool top);
bool IsOnTop(const QWidget& window);

// Whether the window system tells where windows stand.
bool PlacesAreKnown();

} // namespace tarn
