// The key that asks for a context menu, for keyboards without one of its own.
#pragma once

#include <QKeyEvent>

namespace tarn {

inline bool AsksForMenu(const QKeyEvent& event) {
    return event.key() == Qt::Key_F10 && event.modifiers() & Qt::ShiftModifier;
}

} // namespace tarn
