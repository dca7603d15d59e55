#include "navigation/PaneKeys.h"

#include "common/keys.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/MenuKey.h"
#include "widgets/PictureBox.h"
#include "widgets/webpane/PageBrowser.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>

namespace tarn {

namespace {

// The window system may send a repeat as a release and a press of the same instant, the press a
// moment later.
constexpr int kRepeatFollows = 5; // milliseconds

bool IsPlain(const QKeyEvent& event) {
    return !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

bool IsLetter(int keycode) {
    return keycode >= '0' && keycode <= 'Z';
}

bool IsStep(int keycode) {
    return keycode == keys::kSpace || keycode == 'N' || keycode == 'P' || keycode == keys::kUp ||
           keycode == keys::kDown;
}

} // namespace

PaneKeys::PaneKeys(Context& context) : m(context) {
    const MainControls& c = m.controls;
    for (QWidget* pane :
         std::initializer_list<QWidget*>{c.Picture1, c.Picture2, c.LogText, c.WebBrowser1,
                                         c.FileListBox, c.FolderTreeview1, c.List1})
        pane->installEventFilter(this);
    m_releaseTimer.setSingleShot(true);
    m_releaseTimer.setInterval(kRepeatFollows);
    connect(&m_releaseTimer, &QTimer::timeout, this, &PaneKeys::ActOnRelease);
}

bool PaneKeys::IsPane(const QObject* watched) const {
    const MainControls& c = m.controls;
    return watched == c.Picture1 || watched == c.Picture2 || watched == c.LogText ||
           watched == c.WebBrowser1;
}

KeyPane PaneKeys::PaneOf(const QObject* watched) const {
    const MainControls& c = m.controls;
    if (watched == c.Picture1) return KeyPane::Picture;
    if (watched == c.Picture2) return KeyPane::Clip;
    if (watched == c.FileListBox) return KeyPane::Files;
    return IsPane(watched) ? KeyPane::Text : KeyPane::Lists;
}

void PaneKeys::KeyUp(const QObject* watched, int keycode) {
    if (const PaneAction act = PaneActionOf(PaneOf(watched), keycode, m.state.ImageLoaded)) act(m);
}

bool PaneKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool picture = watched == m.controls.Picture1 || watched == m.controls.Picture2;
    switch (event->type()) {
    case QEvent::KeyPress:
        if (picture && AsksForMenu(*static_cast<QKeyEvent*>(event))) return ShowPictureMenu();
        return KeyPress(watched, *static_cast<QKeyEvent*>(event));
    case QEvent::ContextMenu: // the mouse opens it by its release
        return picture &&
               static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard &&
               ShowPictureMenu();
    case QEvent::KeyRelease:
        return KeyRelease(watched, *static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        MousePress(watched, *static_cast<QMouseEvent*>(event));
        return false;
    case QEvent::MouseMove:
        return watched == m.controls.Picture1 && MouseMove(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
        return picture && MouseRelease(watched, *static_cast<QMouseEvent*>(event));
    case QEvent::Wheel:
        return watched == m.controls.Picture1 && Wheel(*static_cast<QWheelEvent*>(event));
    case QEvent::Paint:
        if (watched == m.controls.Picture1) m_painted = true;
        return false;
    case QEvent::FocusIn:
        if (picture) m.controls.LabelNavKeys->show();
        return false;
    case QEvent::FocusOut:
        if (picture && !m.state.ShowsText()) m.controls.LabelNavKeys->hide();
        return false;
    default:
        return false;
    }
}

bool PaneKeys::ShowPictureMenu() {
    const QWidget& pane =
        m.state.Kind == FileKind::Clip ? *m.controls.Picture2 : *m.controls.Picture1;
    if (m.controls.FileListBox->Count() > 0)
        m.controls.PopupPic->popup(pane.mapToGlobal(pane.rect().center()));
    return true;
}

PaneKeys::Pressed* PaneKeys::Find(int keycode) {
    for (Pressed& each : m_pressed)
        if (each.keycode == keycode) return &each;
    return nullptr;
}

void PaneKeys::Forget(int keycode) {
    std::erase_if(m_pressed, [keycode](const Pressed& each) { return each.keycode == keycode; });
}

bool PaneKeys::KeyPress(QObject* pane, const QKeyEvent& event) {
    const bool counts = IsPlain(event) && !AsksForMenu(event);
    const int keycode = counts ? keys::KeyCode(event.key()) : keys::kNone;
    const bool repeats =
        event.isAutoRepeat() || (m_releaseTimer.isActive() && m_releasedKey == keycode &&
                                 m_releasedAt == event.timestamp());
    if (m_releaseTimer.isActive() && repeats)
        m_releaseTimer.stop(); // the release before was the first half of this repeat
    else if (m_releaseTimer.isActive())
        ActOnRelease();
    if (repeats) {
        Pressed* pressed = Find(keycode);
        return IsPane(pane) && pressed && Repeat(pane, *pressed);
    }
    if (keycode == keys::kNone) return false;
    const bool letterActs = pane == m.controls.FileListBox && IsLetter(keycode);
    if (letterActs && GoesOnWord(keycode)) return false;
    Forget(keycode);
    m_pressed.push_back({pane, keycode});
    if (letterActs) return true;
    // Lists and tree move by themselves, and the text pane keeps what belongs to texts.
    return IsPane(pane) && keycode != keys::kTab &&
           ((pane != m.controls.LogText && pane != m.controls.WebBrowser1) || IsStep(keycode));
}

// The list finds names by what is typed; a letter that acts there is part of a name only behind
// others that are not.
bool PaneKeys::GoesOnWord(int keycode) {
    const bool within =
        m_typed.isValid() && m_typed.elapsed() < QApplication::keyboardInputInterval();
    if (!within && PaneActionOf(KeyPane::Files, keycode, m.state.ImageLoaded)) return false;
    m_typed.start();
    return true;
}

// A step key held down goes on in whatever pane the last step has put up.
bool PaneKeys::Repeat(QObject* pane, Pressed& pressed) {
    if (!IsStep(pressed.keycode)) return true;
    pressed.repeated = true;
    if (!m_painted) return true;
    const int keycode = pressed.keycode; // the step may bring events that change the list
    KeyUp(pane, keycode);
    m_painted = m.state.Kind != FileKind::Picture;
    return true;
}

bool PaneKeys::KeyRelease(QObject* pane, const QKeyEvent& event) {
    if (event.isAutoRepeat()) return true;
    const int keycode = keys::KeyCode(event.key());
    const Pressed* pressed = Find(keycode);
    if (!pressed) return false;
    if (pane != pressed->pane || !IsPlain(event)) {
        if (!pressed->repeated || !event.spontaneous()) Forget(keycode);
        return false;
    }
    if (m_releaseTimer.isActive()) ActOnRelease();
    m_releasedIn = pane;
    m_releasedKey = keycode;
    m_releasedAt = event.timestamp();
    if (event.spontaneous())
        m_releaseTimer.start();
    else
        ActOnRelease();
    return true;
}

void PaneKeys::ActOnRelease() {
    m_releaseTimer.stop();
    const Pressed* pressed = Find(m_releasedKey);
    const bool acts =
        pressed && !pressed->repeated && !m.state.BatchRuns; // a batch began meanwhile
    Forget(m_releasedKey);
    if (acts) KeyUp(m_releasedIn, m_releasedKey);
}

} // namespace tarn
