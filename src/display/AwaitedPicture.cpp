#include "display/AwaitedPicture.h"

#include "common/keys.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

#include <chrono>
#include <utility>

namespace tarn {

namespace {

constexpr std::chrono::milliseconds kLong(300);

// Those which show another file, whatever becomes of this one, and those which need its name alone.
bool IsStepKey(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_N:
    case Qt::Key_P:
    case Qt::Key_Comma:
    case Qt::Key_Period:
    case Qt::Key_Control:
    case Qt::Key_Shift:
    case Qt::Key_Alt:
        return true;
    default:
        return false;
    }
}

bool IsWrittenInto(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget);
}

bool IsIn(const QObject* watched, const QWidget* widget) {
    const auto* const inner = qobject_cast<const QWidget*>(watched);
    return inner && (inner == widget || widget->isAncestorOf(inner));
}

} // namespace

AwaitedPicture::AwaitedPicture(MainControls& controls) : m_controls(controls) {
    m_long.setSingleShot(true);
    m_long.setInterval(kLong);
    m_long.callOnTimeout([this] { onLong(m_told = true); });
}

AwaitedPicture::~AwaitedPicture() = default;

std::function<void()> AwaitedPicture::NewCall() {
    const QPointer<AwaitedPicture> self(this);
    return [self, number = ++m_number] {
        QMetaObject::invokeMethod(
            qApp,
            [self, number] {
                if (self) self->Ready(number);
            },
            Qt::QueuedConnection);
    };
}

void AwaitedPicture::Begin(const PictureRequest& request) {
    if (!m_request) qApp->installEventFilter(this);
    m_request = request;
    m_long.start();
}

std::optional<PictureRequest> AwaitedPicture::Taken() {
    if (!m_request) return std::nullopt;
    qApp->removeEventFilter(this);
    m_long.stop();
    if (std::exchange(m_told, false)) onLong(false);
    ++m_number;
    return std::exchange(m_request, std::nullopt);
}

void AwaitedPicture::End() {
    Taken();
}

void AwaitedPicture::Ready(std::uint64_t number) {
    if (number != m_number) return;
    if (const auto request = Taken()) onReady(*request);
}

bool AwaitedPicture::Steps(const QObject* watched, const QEvent& event) const {
    const QWidget* const focus = QApplication::focusWidget();
    if (event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride)
        return focus == m_controls.FindLine ||
               (IsStepKey(static_cast<const QKeyEvent&>(event)) && !IsWrittenInto(focus));
    if (event.type() != QEvent::MouseButtonPress ||
        static_cast<const QMouseEvent&>(event).button() != Qt::LeftButton)
        return false;
    const MainControls& c = m_controls;
    for (const QWidget* widget : std::initializer_list<const QWidget*>{
             c.FileListBox, c.FolderTreeview1, c.NextButton, c.PrevButton})
        if (IsIn(watched, widget)) return true;
    return false;
}

bool AwaitedPicture::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::Drop:
        break;
    default:
        return false;
    }
    if (!watched->isWidgetType() || Steps(watched, *event)) return false;
    if (const auto request = Taken()) onWanted(*request);
    return false;
}

} // namespace tarn
