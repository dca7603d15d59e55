// What the windows of the notes room have in common: their place, in the desk's twips.
#pragma once

#include "desk/state/WindowState.h"
#include "widgets/Named.h"
#include "widgets/WindowPlaces.h"

#include <QWidget>

namespace tarn {

inline void PutAtPlace(QWidget& window, const WindowPlace& place) {
    PlaceOnScreen(window, QRect(QPoint(place.left / kTwipsPerPixel, place.top / kTwipsPerPixel),
                                window.sizeHint()));
}

inline void TakePlace(const QWidget& window, WindowPlace& place) {
    if (!PlacesAreKnown()) return;
    place.left = window.x() * kTwipsPerPixel;
    place.top = window.y() * kTwipsPerPixel;
}

} // namespace tarn
