#include "widgets/ShownWindows.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

// Of the screen, below a title.
QRect RoomFor(const QWidget& window) {
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return {QPoint(), window.screen()->availableGeometry().size() - QSize(0, title)};
}

// Moves what the window holds into a scroll area.
void ScrollContents(QWidget& window) {
    QLayout* contents = window.layout();
    contents->setSizeConstraint(QLayout::SetDefaultConstraint);
    QWidget* focus = window.focusWidget();
    auto* inside = new QWidget();
    inside->setLayout(contents); // taken over, with its widgets
    auto* area = new QScrollArea();
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(inside);
    auto* whole = new QVBoxLayout(&window);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area);
    window.setMinimumSize(0, 0);
    window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    if (focus) focus->setFocus();
}

} // namespace

ShownWindows::ShownWindows() {
    qApp->installEventFilter(this);
}

bool ShownWindows::eventFilter(QObject* watched, QEvent* event) {
    const bool shown = event->type() == QEvent::Show;
    if ((!shown && event->type() != QEvent::Resize) || !watched->isWidgetType()) return false;
    auto* window = static_cast<QWidget*>(watched);
    if (!window->isWindow() ||
        !window->objectName().startsWith(QLatin1String("frm"), Qt::CaseInsensitive))
        return false;
    if (shown && std::find(m_windows.begin(), m_windows.end(), window) == m_windows.end())
        m_windows.emplace_back(window);
    if (!window->layout()) return false;
    if (shown) NameParts(*window);
    if (qobject_cast<QMainWindow*>(window)) return false; // it scrolls by itself
    if (shown)
        Fit(*window);
    else if (window->isVisible() && !RoomFor(*window).contains(QRect(QPoint(), window->size())))
        // Its contents have grown; its layout is at work just now.
        QMetaObject::invokeMethod(
            window, [window] { Fit(*window); }, Qt::QueuedConnection);
    return false;
}

void ShownWindows::HideAll() {
    QWidget* main = nullptr;
    for (const QPointer<QWidget>& window : m_windows)
        if (qobject_cast<QMainWindow*>(window))
            main = window;
        else if (window)
            window->hide();
    if (main) main->hide();
}

void ShownWindows::NameParts(const QWidget& window) {
    for (QComboBox* combo : window.findChildren<QComboBox*>())
        combo->view()->setAccessibleName(
            combo->accessibleName().isEmpty() ? combo->toolTip() : combo->accessibleName());
    for (const QLineEdit* line : window.findChildren<QLineEdit*>())
        if (line->isClearButtonEnabled())
            for (QToolButton* button : line->findChildren<QToolButton*>())
                button->setAccessibleName(QStringLiteral("Clear"));
}

void ShownWindows::Fit(QWidget& window) {
    QRect screen = window.screen()->availableGeometry();
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QSize room = RoomFor(window).size();
    const QSize least = window.layout()->totalMinimumSize().expandedTo(window.minimumSize());
    if (least.width() <= room.width() && least.height() <= room.height()) return;
    const int bar = window.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    ScrollContents(window);
    window.resize((least + QSize(bar, bar)).expandedTo(window.size()).boundedTo(room));
    screen.setTop(screen.top() + title);
    window.move(qBound(screen.left(), window.x(), screen.right() + 1 - window.width()),
                qBound(screen.top() - title, window.y(), screen.bottom() + 1 - window.height()));
}

} // namespace tarn
