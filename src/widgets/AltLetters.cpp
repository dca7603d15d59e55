#include "widgets/AltLetters.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace tarn {

AltLetters::AltLetters() {
    qApp->installEventFilter(this);
}

bool AltLetters::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<QKeyEvent&>(*event);
    const auto held = key.modifiers() & (Qt::AltModifier | Qt::ControlModifier);
    if (held != Qt::AltModifier || key.text().isEmpty() || !key.text().at(0).isPrint())
        return false;
    if (!qobject_cast<QLineEdit*>(watched) && !qobject_cast<QPlainTextEdit*>(watched) &&
        !qobject_cast<QTextEdit*>(watched))
        return false;
    event->ignore(); // those around the text may use it
    return true;
}

} // namespace tarn
