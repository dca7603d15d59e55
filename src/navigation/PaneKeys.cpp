#include "navigation/PaneKeys.h"

#include "common/keys.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/MenuKey.h"
#include "widgets/PictureBox.h"
#include "widgets/webpane/PageBrowser.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>
#include <iterator>

namespace tarn {

namespace {

void Press(QPushButton* button) {
    button->click();
}
void Press(QAction* entry) {
    entry->trigger();
}

// Keys of Picture1 that press a button or choose an entry.
template <typename Control> struct KeyFor {
    int keycode;
    Control* MainControls::*control;
};

constexpr KeyFor<QPushButton> kButtonKeys[] = {
    {'V', &MainControls::ViewButton},     {'S', &MainControls::SlideButton},
    {'F', &MainControls::OneToOneButton}, {'1', &MainControls::OneToOneButton},
    {'2', &MainControls::Slides2Button},  {'4', &MainControls::Slides4Button},
    {'C', &MainControls::SlidesC2Button}, {'Y', &MainControls::CopyImageButton3},
    {'U', &MainControls::CJMButton},      {'Z', &MainControls::CJMButton},
};

constexpr KeyFor<QAction> kEntryKeys[] = {
    {'D', &MainControls::FixPictureDateButton},
    {'A', &MainControls::RenameButton},
    {'B', &MainControls::AdjustButton},
    {keys::kPlus, &MainControls::ZoomInButton},
    {keys::kMinus, &MainControls::ZoomOutButton},
    {'9', &MainControls::FitToPaneButton},
    {'E', &MainControls::PopupOpenButton},
    {keys::kF1, &MainControls::HelpPicNavButton},
    {keys::kF2, &MainControls::RenameButton},
    {keys::kF6, &MainControls::SetFileDatesButton},
    {keys::kF10, &MainControls::Exit},
    {keys::kPrint, &MainControls::PrintButton},
    {keys::kPrintScreen, &MainControls::PrintButton},
    {keys::kDelete, &MainControls::DeleteButton},
    {keys::kInsert, &MainControls::DuplicateButton},
};

template <typename Keys> bool PressFor(const Keys& keys, int keycode, const MainControls& c) {
    const auto found = std::find_if(std::begin(keys), std::end(keys), [keycode](const auto& each) {
        return each.keycode == keycode;
    });
    if (found == std::end(keys)) return false;
    Press(c.*found->control);
    return true;
}

constexpr int kPage = 5; // rows of a page key

// The window system may send a repeat as a release and a press of the same instant, the press a
// moment later.
constexpr int kRepeatFollows = 5; // milliseconds

bool IsPlain(const QKeyEvent& event) {
    return !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
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

bool PaneKeys::NavigationKey(int keycode) {
    switch (keycode) {
    case keys::kF5:
        m.navigation.ReadAgain();
        return true;
    case keys::kSpace:
    case keys::kDown:
    case 'N':
        m.navigation.NextButton_Click();
        return true;
    case keys::kUp:
    case 'P':
        m.navigation.PrevButton_Click();
        return true;
    case keys::kPageUp:
        m.navigation.StepBy(-kPage, {});
        return true;
    case keys::kPageDown:
        m.navigation.StepBy(kPage, {});
        return true;
    case keys::kHome:
        m.navigation.StepFrom(1, -1, {});
        return true;
    case keys::kEnd:
        m.navigation.StepFrom(0, -1, {});
        return true;
    case keys::kComma:
        Press(m.controls.FileBackButton);
        return true;
    case keys::kPeriod:
        Press(m.controls.FileFwdButton);
        return true;
    default:
        return false;
    }
}

bool PaneKeys::Picture1_KeyUp(int keycode) {
    if (NavigationKey(keycode)) return true;
    if (!m.state.ImageLoaded) return false;
    switch (keycode) {
    case keys::kRight:
    case 'R':
        m.display.RotateRightButton_Click();
        return true;
    case keys::kLeft:
    case 'L':
        m.display.RotateLeftButton_Click();
        return true;
    case 'M':
        m.display.MirrorButton_Click();
        return true;
    case 'I':
        m.display.FlipButton_Click();
        return true;
    case 'O':
        m.display.Redraw();
        return true;
    case 'T':
        m.controls.NotesBox->setFocus(Qt::ShortcutFocusReason);
        return true;
    default:
        return PressFor(kButtonKeys, keycode, m.controls) ||
               PressFor(kEntryKeys, keycode, m.controls);
    }
}

bool PaneKeys::Picture2_KeyUp(int keycode) {
    switch (keycode) {
    case keys::kDelete:
        Press(m.controls.DeleteButton);
        return true;
    case keys::kInsert:
        Press(m.controls.RenameButton);
        return true;
    case keys::kComma:
    case keys::kPeriod:
        return false;
    default:
        return NavigationKey(keycode);
    }
}

bool PaneKeys::LogText_KeyUp(int keycode) {
    if (NavigationKey(keycode)) return true;
    if (keycode != keys::kF2) return false;
    Press(m.controls.RenameButton);
    return true;
}

bool PaneKeys::FileListBox_KeyUp(int keycode) {
    if (keycode != keys::kF5) return false;
    m.navigation.ReadAgain();
    return true;
}

bool PaneKeys::IsPane(const QObject* watched) const {
    const MainControls& c = m.controls;
    return watched == c.Picture1 || watched == c.Picture2 || watched == c.LogText ||
           watched == c.WebBrowser1;
}

PaneKeys::Map PaneKeys::MapOf(const QObject* pane) const {
    const MainControls& c = m.controls;
    if (pane == c.Picture1) return &PaneKeys::Picture1_KeyUp;
    if (pane == c.Picture2) return &PaneKeys::Picture2_KeyUp;
    if (pane == c.LogText || pane == c.WebBrowser1) return &PaneKeys::LogText_KeyUp;
    return &PaneKeys::FileListBox_KeyUp;
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
    Forget(keycode);
    m_pressed.push_back({pane, keycode});
    // Lists and tree move by themselves, and the text pane keeps what belongs to texts.
    return IsPane(pane) && keycode != keys::kTab &&
           ((pane != m.controls.LogText && pane != m.controls.WebBrowser1) || IsStep(keycode));
}

// A step key held down goes on in whatever pane the last step has put up.
bool PaneKeys::Repeat(QObject* pane, Pressed& pressed) {
    if (!IsStep(pressed.keycode)) return true;
    pressed.repeated = true;
    if (!m_painted) return true;
    const Map map = MapOf(pane);
    const int keycode = pressed.keycode; // the step may bring events that change the list
    (this->*map)(keycode);
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
    if (acts) (this->*MapOf(m_releasedIn))(m_releasedKey);
}

} // namespace tarn
