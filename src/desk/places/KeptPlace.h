// A window that comes back where it was: its last normal place lies on the desk, from where the
// settings are written.
#pragma once

#include "desk/state/WindowState.h"

#include <QObject>
#include <QSize>

class QWidget;

namespace tarn {

class KeptPlace : public QObject {
public:
    // Writes every normal place of the window into `place` from now on.
    KeptPlace(QWidget& window, WindowPlace& place);

    // Puts the window at its place, brought onto a screen. What was never kept, left and top or
    // width and height, falls to the window system and to `design`, in logical pixels.
    void Restore(QSize design);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_window;
    WindowPlace& m_place;
};

} // namespace tarn
