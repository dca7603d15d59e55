// Controls with their names: by which tests and style sheets find them, and what a screen reader
// calls those that have no text of their own.
#pragma once

#include <QAnyStringView>
#include <QPushButton>

namespace tarn {

template <class Widget>
Widget* Named(Widget* widget, QAnyStringView name, QAnyStringView spoken = {},
              QAnyStringView tip = {}) {
    widget->setObjectName(name.toString());
    if (!spoken.isEmpty()) widget->setAccessibleName(spoken.toString());
    if (!tip.isEmpty()) widget->setToolTip(tip.toString());
    return widget;
}

// Return never presses it, only Space: Return belongs to what is being typed.
inline QPushButton* NamedButton(QAnyStringView name, QAnyStringView caption,
                                QAnyStringView tip = {}) {
    auto* button = Named(new QPushButton(caption.toString()), name, {}, tip);
    button->setAutoDefault(false);
    return button;
}

} // namespace tarn
