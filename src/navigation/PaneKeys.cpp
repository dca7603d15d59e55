#include "navigation/PaneKeys.h"

#include "common/keys.h"
#include "navigation/NavigationRoom.h"
#include "platform/FileListBox.h"
#include "platform/PictureBox.h"

#include <QAction>
#include <QCursor>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>

namespace tarn {

namespace {

void Press(QPushButton* button) {
    button->click();
}
void Press(QAction* entry) {
    entry->trigger();
}

bool IsStep(int keycode) {
    return keycode == keys::kSpace || keycode == 'N' || keycode == 'P' || keycode == keys::kUp ||
           keycode == keys::kDown;
}

} // namespace

PaneKeys::PaneKeys(Context& context, NavigationRoom& navigation)
    : m(context), m_navigation(navigation) {
    const MainControls& c = m.controls;
    for (QWidget* pane :
         std::initializer_list<QWidget*>{c.Picture1, c.Picture2, c.LogText, c.FileListBox})
        pane->installEventFilter(this);
}

void PaneKeys::PageStep(int by) {
    m.state.FileIndex += by;
    if (by > 0)
        m.navigation.NextButton_Click();
    else
        m.navigation.PrevButton_Click();
}

bool PaneKeys::NavigationKey(int keycode) {
    switch (keycode) {
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
        PageStep(-4);
        return true;
    case keys::kPageDown:
        PageStep(4);
        return true;
    case keys::kHome:
        m.state.FileIndex = 1;
        m.navigation.PrevButton_Click();
        return true;
    case keys::kEnd:
        m.state.FileIndex = 0;
        m.navigation.PrevButton_Click();
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
    const MainControls& c = m.controls;
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
    case 'V':
        Press(c.ViewButton);
        return true;
    case 'S':
        Press(c.SlideButton);
        return true;
    case 'F':
    case '1':
        Press(c.OneToOneButton);
        return true;
    case '2':
        Press(c.Slides2Button);
        return true;
    case '4':
        Press(c.Slides4Button);
        return true;
    case 'C':
        Press(c.SlidesC2Button);
        return true;
    case 'D':
        Press(c.FixPictureDateButton);
        return true;
    case 'Y':
        Press(c.CopyImageButton3);
        return true;
    case 'U':
    case 'Z':
        Press(c.CJMButton);
        return true;
    case 'A':
    case keys::kF1 + 1:
        Press(c.RenameButton);
        return true;
    case keys::kF1:
        Press(c.HelpPicNavButton);
        return true;
    case keys::kF1 + 4:
        m.navigation.RefreshDirButton_Click();
        return true;
    case keys::kF1 + 5:
        Press(c.SetFileDatesButton);
        return true;
    case keys::kF1 + 9:
        Press(c.Exit);
        return true;
    case keys::kPrint:
    case keys::kPrintScreen:
        Press(c.PrintButton);
        return true;
    case keys::kDelete:
        return DeleteKey();
    case keys::kInsert:
        Press(c.DuplicateButton);
        return true;
    case 'B':
        Press(c.AdjustButton);
        return true;
    case 'E':
        Press(c.PopupOpenButton);
        return true;
    case 'T':
        c.NotesBox->setFocus(Qt::ShortcutFocusReason);
        return true;
    default:
        return false;
    }
}

bool PaneKeys::DeleteKey() {
    m.state.DeleteNoteToo = !m.controls.DeleteKeyNotesButton->isChecked();
    Press(m.controls.DeleteButton);
    return true;
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
    if (keycode != keys::kF1 + 1) return false;
    Press(m.controls.RenameButton);
    return true;
}

bool PaneKeys::FileListBox_KeyUp(int keycode) {
    if (keycode != keys::kF1 + 4) return false;
    m.navigation.RefreshDirButton_Click();
    return true;
}

void PaneKeys::Picture_MouseUp(bool rightButton, int x, int width) {
    if (!m.state.ImageLoaded) return;
    if (rightButton)
        m.controls.PopupPic->popup(QCursor::pos());
    else if (2 * x <= width)
        m.navigation.PrevButton_Click();
    else
        m.navigation.NextButton_Click();
}

PaneKeys::Map PaneKeys::MapOf(const QObject* pane) const {
    const MainControls& c = m.controls;
    if (pane == c.Picture1) return &PaneKeys::Picture1_KeyUp;
    if (pane == c.Picture2) return &PaneKeys::Picture2_KeyUp;
    if (pane == c.LogText) return &PaneKeys::LogText_KeyUp;
    return &PaneKeys::FileListBox_KeyUp;
}

bool PaneKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool picture = watched == m.controls.Picture1 || watched == m.controls.Picture2;
    switch (event->type()) {
    case QEvent::KeyPress:
        return KeyPress(watched, *static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
        return KeyRelease(watched, *static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        m_mouseIn = watched;
        return false;
    case QEvent::MouseButtonRelease:
        return picture && MouseRelease(watched, *static_cast<QMouseEvent*>(event));
    case QEvent::Paint:
        m_painted = true;
        return false;
    case QEvent::FocusIn:
        if (picture) m.controls.LabelNavKeys->show();
        return false;
    case QEvent::FocusOut:
        if (picture && m.state.CurrentPane != Pane::LogText) m.controls.LabelNavKeys->hide();
        return false;
    default:
        return false;
    }
}

bool PaneKeys::KeyPress(QObject* pane, const QKeyEvent& event) {
    const bool plain =
        !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    const int keycode = plain ? keys::KeyCode(event.key()) : keys::kNone;
    if (event.isAutoRepeat()) {
        const bool held = pane == m_pressedIn && keycode == m_pressedKey && IsStep(keycode);
        return held && pane != m.controls.FileListBox && Repeat(MapOf(pane), keycode);
    }
    m_pressedIn = pane;
    m_pressedKey = keycode;
    m_repeated = false;
    // The list moves by itself, and the text pane keeps what belongs to texts.
    return pane != m.controls.FileListBox && keycode != keys::kNone && keycode != keys::kTab &&
           (pane != m.controls.LogText || IsStep(keycode));
}

bool PaneKeys::Repeat(Map map, int keycode) {
    m_repeated = true;
    if (!m_painted) return true;
    m_painted = m.state.CurrentPane == Pane::LogText;
    return (this->*map)(keycode);
}

bool PaneKeys::KeyRelease(QObject* pane, const QKeyEvent& event) {
    if (event.isAutoRepeat()) return true;
    const int keycode = keys::KeyCode(event.key());
    const bool counts = pane == m_pressedIn && keycode == m_pressedKey && !m_repeated;
    const bool plain =
        !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    m_pressedIn = nullptr;
    m_pressedKey = keys::kNone;
    if (!counts || !plain || keycode == keys::kNone) return false;
    return (this->*MapOf(pane))(keycode);
}

bool PaneKeys::MouseRelease(QObject* pane, const QMouseEvent& event) {
    const bool ours = pane == m_mouseIn;
    m_mouseIn = nullptr;
    if (!ours) return false;
    const int width = static_cast<QWidget*>(pane)->width();
    Picture_MouseUp(event.button() == Qt::RightButton, event.position().toPoint().x(), width);
    return true;
}

} // namespace tarn
