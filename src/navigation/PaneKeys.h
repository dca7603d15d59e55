// Keys and mouse of the picture panes and the file list. A key counts on its release, and only when
// the same pane saw its press; typing in a box never steps or deletes.
#pragma once

#include "desk/Context.h"
#include "navigation/PaneKeyTable.h"
#include "widgets/WheelNotches.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointF>
#include <QTimer>

#include <vector>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace tarn {

class PaneKeys : public QObject {
public:
    explicit PaneKeys(Context& context);

    // A release at x in a pane of this width; the right button opens the popup at this place of
    // the screen.
    void Picture_MouseUp(bool rightButton, int x, int width, QPoint onScreen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // A key that is down: where it was pressed, and whether it has stepped by repeat.
    struct Pressed {
        QObject* pane;
        int keycode;
        bool repeated = false;
    };

    bool ShowPictureMenu();                    // in the middle of the pane
    bool IsPane(const QObject* watched) const; // else a list, whose keys move its rows
    KeyPane PaneOf(const QObject* watched) const;
    void KeyUp(const QObject* watched, int keycode);
    bool KeyPress(QObject* pane, const QKeyEvent& event);
    bool KeyRelease(QObject* pane, const QKeyEvent& event);
    Pressed* Find(int keycode);
    void Forget(int keycode);
    bool GoesOnWord(int keycode);
    bool Repeat(QObject* pane, Pressed& pressed);
    void ActOnRelease();
    void MousePress(QObject* pane, const QMouseEvent& event);
    bool MouseMove(const QMouseEvent& event);
    bool MouseRelease(QObject* pane, const QMouseEvent& event);
    bool Wheel(const QWheelEvent& event);

    Context& m;
    std::vector<Pressed> m_pressed;
    QElapsedTimer m_typed; // since the last letter of a name in the list
    QTimer m_releaseTimer; // a release that may be half of a repeat waits for it
    QObject* m_releasedIn = nullptr;
    int m_releasedKey = 0;
    unsigned long m_releasedAt = 0;
    QObject* m_mouseIn = nullptr; // pane of the mouse press
    QPointF m_mouseAt;            // its place, then that of the last pan
    bool m_pans = false;          // since then the picture has moved
    WheelNotches m_wheel;
    bool m_painted = true; // the picture stepped to last has been painted
};

} // namespace tarn
