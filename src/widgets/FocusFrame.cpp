#include "widgets/FocusFrame.h"

#include "common/colors.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kLine = 2;    // logical pixels
constexpr double kSeen = 3; // contrast that a line needs

} // namespace

FocusFrame::FocusFrame(std::vector<QWidget*> panes, QWidget* parent)
    : QWidget(parent), m_panes(std::move(panes)) {
    setObjectName(QStringLiteral("FocusFrame"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    for (QWidget* pane : m_panes) pane->installEventFilter(this);
    QObject::connect(qApp, &QApplication::focusChanged, this,
                     [this](QWidget*, QWidget* now) { Follow(now); });
}

void FocusFrame::Follow(const QWidget* focus) {
    const auto found = std::find_if(m_panes.begin(), m_panes.end(), [focus](const QWidget* pane) {
        return focus && (pane == focus || pane->isAncestorOf(focus));
    });
    m_pane = found == m_panes.end() ? nullptr : *found;
    Place();
}

void FocusFrame::Place() {
    const bool shown = m_pane && m_pane->isVisible();
    setVisible(shown);
    if (!shown) return;
    const QRect whole(m_pane->mapTo(parentWidget(), QPoint(0, 0)), m_pane->size());
    const QRect edge = whole.adjusted(kLine, kLine, -kLine, -kLine);
    setGeometry(whole);
    setMask(QRegion(QRect(QPoint(0, 0), whole.size())) -
            QRegion(edge.translated(-whole.topLeft()))); // the pane itself is painted under it
    raise();
}

bool FocusFrame::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (watched == m_pane && (type == QEvent::Resize || type == QEvent::Move ||
                              type == QEvent::Show || type == QEvent::Hide))
        Place();
    return false;
}

void FocusFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor ground = palette().color(QPalette::Window);
    const QColor marked = palette().color(QPalette::Highlight);
    const bool seen =
        ContrastOf(int(marked.rgb() & 0xFFFFFF), int(ground.rgb() & 0xFFFFFF)) >= kSeen;
    painter.fillRect(rect(), seen ? marked : palette().color(QPalette::WindowText));
}

} // namespace tarn
