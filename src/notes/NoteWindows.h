// What the windows of the notes room have in common: their place, in the desk's twips.
#pragma once

#include "desk/state/WindowState.h"
#include "widgets/WindowPlaces.h"

#include <QPushButton>
#include <QString>
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

// A control of a window under its given name.
template <typename Widget>
Widget* Named(Widget* widget, const QString& name, const char* tooltip = "") {
    widget->setObjectName(name);
    widget->setToolTip(QString::fromUtf8(tooltip));
    return widget;
}

inline QPushButton* NamedButton(const char* name, const char* caption, const char* tooltip = "") {
    auto* button =
        Named(new QPushButton(QString::fromUtf8(caption)), QString::fromLatin1(name), tooltip);
    button->setAutoDefault(false); // pressed by Space alone
    return button;
}

} // namespace tarn
