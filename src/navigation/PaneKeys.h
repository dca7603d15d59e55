// Keys and mouse of the picture panes and the file list. A key counts on its release, and only when
// the same pane saw its press; typing in a box never steps or deletes.
#pragma once

#include "shell/Context.h"

#include <QObject>

#include <functional>

class QKeyEvent;
class QMouseEvent;

namespace tarn {

class NavigationRoom;

class PaneKeys : public QObject {
public:
    PaneKeys(Context& context, NavigationRoom& navigation);

    // Keys shared by Picture1 and LogText; false when the key is none of them.
    bool NavigationKey(int keycode);
    bool Picture1_KeyUp(int keycode);
    bool Picture2_KeyUp(int keycode);
    bool LogText_KeyUp(int keycode);
    bool FileListBox_KeyUp(int keycode);

    // A release at x in a pane of this width.
    void Picture_MouseUp(bool rightButton, int x, int width);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Map = bool (PaneKeys::*)(int);
    Map MapOf(const QObject* pane) const;
    bool KeyPress(QObject* pane, const QKeyEvent& event);
    bool KeyRelease(QObject* pane, const QKeyEvent& event);
    bool Repeat(Map map, int keycode);
    bool MouseRelease(QObject* pane, const QMouseEvent& event);
    void PageStep(int by);
    bool DeleteKey();

    Context& m;
    NavigationRoom& m_navigation;
    QObject* m_pressedIn = nullptr; // pane and key of the press whose release will count
    int m_pressedKey = 0;
    bool m_repeated = false;      // held down: stepped already, the release steps no more
    QObject* m_mouseIn = nullptr; // pane of the mouse press
    bool m_painted = true;        // the last picture stepped to has been painted
};

} // namespace tarn
