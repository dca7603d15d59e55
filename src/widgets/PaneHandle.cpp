#include "widgets/PaneHandle.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

namespace tarn {

PaneHandle::PaneHandle(Qt::Orientation moves, const char* name, QWidget* parent)
    : QWidget(parent), m_moves(moves) {
    setObjectName(QString::fromLatin1(name));
    setCursor(moves == Qt::Horizontal ? Qt::SplitHCursor : Qt::SplitVCursor);
    setToolTip(QStringLiteral("Drag to share the room out, double click for the first places"));
}

int PaneHandle::Along(const QMouseEvent& event) const {
    const QPoint at = event.globalPosition().toPoint();
    return m_moves == Qt::Horizontal ? at.x() : at.y();
}

void PaneHandle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    if (m_moves == Qt::Horizontal) option.state |= QStyle::State_Horizontal;
    if (m_drags || underMouse()) {
        QColor shade = palette().color(QPalette::Highlight);
        shade.setAlpha(90);
        painter.fillRect(rect(), shade);
    }
    style()->drawControl(QStyle::CE_Splitter, &option, &painter, this);
}

void PaneHandle::enterEvent(QEnterEvent*) {
    update();
}

void PaneHandle::leaveEvent(QEvent*) {
    update();
}

void PaneHandle::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !place) return;
    m_drags = true;
    m_from = Along(*event);
    m_start = place();
}

void PaneHandle::mouseMoveEvent(QMouseEvent* event) {
    if (m_drags && moveTo) moveTo(m_start + Along(*event) - m_from);
}

void PaneHandle::mouseReleaseEvent(QMouseEvent*) {
    m_drags = false;
    update();
}

void PaneHandle::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && reset) reset();
}

} // namespace tarn
