#include "blink/SeenPane.h"

#include "widgets/Themes.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr QRgb kAround = 0xFF202020;
constexpr QRgb kInk = 0xFFF0F0F0;
constexpr QColor kBar(0, 0, 0, 165);
constexpr int kMargin = 6;
constexpr double kHandle = 6; // pixels around the split that take hold of it
constexpr int kMostTimes = 8;

} // namespace

SeenPane::SeenPane() {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(240, 160);
    for (int i = 0; i < 256; ++i) m_greys[std::size_t(i)] = Themed(QColor(i, i, i)).rgb();
}

void SeenPane::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    for (int i = 0; i < 256; ++i) m_greys[std::size_t(i)] = Themed(QColor(i, i, i)).rgb();
    m_isStale = true;
    update();
}

// The sum of shrunk frames may lack the last column of the whole one.
void SeenPane::SetGround(std::shared_ptr<const BlinkGround> ground) {
    constexpr int kAlike = 16; // pixels
    const PixelSize before = m_ground ? m_ground->grid.Pixels() : PixelSize{};
    const PixelSize now = ground ? ground->grid.Pixels() : before;
    const bool stays = std::abs(before.width - now.width) < kAlike &&
                       std::abs(before.height - now.height) < kAlike;
    const bool staysSeen = stays && m_ground && ground && m_ground->grid.cell == ground->grid.cell;
    m_ground = std::move(ground);
    m_lights.clear();
    for (std::size_t i = 0; m_ground && i < m_ground->codes.size(); ++i)
        m_lights.emplace_back(m_ground->codes[i], m_ground->stretch, i);
    if (staysSeen) return; // until the next frame comes
    m_frame.reset();
    m_median.reset();
    m_differenceLight.reset();
    m_isStale = true;
    if (!stays) m_zoom = {};
    update();
}

void SeenPane::SetFrame(std::shared_ptr<const SeenFrame> frame) {
    if (frame == m_frame) return;
    m_frame = std::move(frame);
    m_isStale = true;
    update();
}

void SeenPane::SetMedian(std::shared_ptr<const SeenFrame> median) {
    if (median == m_median) return;
    m_median = std::move(median);
    m_differenceLight.reset();
    m_isStale = true;
    update();
}

void SeenPane::SetSplit(bool split) {
    m_isSplit = split;
    m_isStale = true;
    update();
}

void SeenPane::SetCorner(const QString& text, const ShownMark& mark) {
    if (text == m_corner && mark == m_mark) return;
    m_corner = text;
    m_mark = mark;
    setAccessibleDescription(text);
    update();
}

void SeenPane::SetHint(const QString& hint) {
    if (hint == m_hint) return;
    m_hint = hint;
    if (m_corner.isEmpty()) setAccessibleDescription(hint);
    update();
}

ZoomPane SeenPane::PaneForZoom() const {
    const QSize pane = (QSizeF(size()) * devicePixelRatioF()).toSize();
    ZoomPane in{m_ground ? m_ground->grid.Pixels() : PixelSize{}, {pane.width(), pane.height()}, 1};
    in.unzoomed = std::min({1.0, double(pane.width()) / std::max(1, in.picture.width),
                            double(pane.height()) / std::max(1, in.picture.height)});
    return in;
}

GridView SeenPane::View() const {
    return m_ground ? ViewOf(m_ground->grid, m_zoom, PaneForZoom()) : GridView();
}

double SeenPane::Scale() const {
    return m_ground ? m_zoom.Scale(PaneForZoom()) : 0;
}

void SeenPane::ViewChanged() {
    update();
    if (onView) onView();
}

void SeenPane::Zoom(int steps, QPointF at) {
    const QPointF way = (at - QRectF(rect()).center()) * devicePixelRatioF();
    if (m_ground && m_zoom.Zoom(steps, {way.x(), way.y()}, PaneForZoom())) ViewChanged();
}

void SeenPane::Zoom(int steps) {
    const QPointF pointer = mapFromGlobal(QPointF(QCursor::pos()));
    Zoom(steps, underMouse() ? pointer : QRectF(rect()).center());
}

void SeenPane::Fit() {
    m_zoom.Unzoom();
    ViewChanged();
}

void SeenPane::FullSize() {
    if (!m_ground) return;
    const ZoomPane in = PaneForZoom();
    for (int i = 0; i < kMostTimes && m_zoom.Scale(in) > 1; ++i) m_zoom.Zoom(-1, {}, in);
    if (m_zoom.Scale(in) < 1) m_zoom.Zoom(1, {}, in);
    ViewChanged();
}

void SeenPane::GoTo(double x, double y, int times) {
    if (!m_ground) return;
    const ZoomPane in = PaneForZoom();
    while (m_zoom.Times() < times && m_zoom.Zoom(1, {}, in)) {
    }
    const GridView view = View();
    const double down = view.mirrorAt < 0 ? y : view.mirrorAt - y;
    m_zoom.Pan({view.width / 2.0 - (x - view.left) / view.step,
                view.height / 2.0 - (down - view.top) / view.step},
               in);
    ViewChanged();
}

void SeenPane::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ViewChanged();
}

void SeenPane::wheelEvent(QWheelEvent* event) {
    if (event->modifiers() & Qt::ControlModifier) {
        if (const int notches = m_notches.Turned(*event)) Zoom(notches, event->position());
    } else if (const int notches = m_steps.Turned(*event); notches != 0 && onWheel) {
        onWheel(notches);
    }
    event->accept();
}

bool SeenPane::HasDifference() const {
    return m_isSplit && m_frame && m_median && m_frame->view == m_median->view;
}

bool SeenPane::IsOnSplit(QPointF at) const {
    return m_isSplit && m_frame && std::abs(at.x() - m_splitAt * width()) <= kHandle;
}

void SeenPane::ShowPointer(QPointF at) {
    if (m_drag == Drag::Split || (m_drag == Drag::None && IsOnSplit(at)))
        setCursor(Qt::SplitHCursor);
    else if (m_drag == Drag::Picture)
        setCursor(Qt::ClosedHandCursor);
    else
        unsetCursor();
}

void SeenPane::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    m_drag = IsOnSplit(event->position()) ? Drag::Split : Drag::Picture;
    m_dragged = event->position();
    ShowPointer(event->position());
}

void SeenPane::mouseMoveEvent(QMouseEvent* event) {
    const QPointF way = event->position() - m_dragged;
    m_dragged = event->position();
    if (m_drag == Drag::Split) {
        m_splitAt = std::clamp(event->position().x() / std::max(1, width()), 0.0, 1.0);
        update();
    } else if (m_drag == Drag::Picture && m_ground && m_zoom.IsZoomed()) {
        const double ratio = devicePixelRatioF();
        m_zoom.Pan({way.x() * ratio, way.y() * ratio}, PaneForZoom());
        ViewChanged();
    }
    ShowPointer(event->position());
}

void SeenPane::mouseReleaseEvent(QMouseEvent* event) {
    m_drag = Drag::None;
    ShowPointer(event->position());
}

void SeenPane::MakePicture() {
    const SeenFrame& frame = *m_frame;
    m_picture = QImage(frame.view.width, frame.view.height, QImage::Format_RGB32);
    if (m_picture.isNull()) return;
    const std::int16_t* from = frame.codes.data();
    const std::size_t plane = frame.PerPlane();
    for (int y = 0; y < frame.view.height; ++y, from += frame.view.width) {
        auto* to = reinterpret_cast<QRgb*>(m_picture.scanLine(y));
        for (int x = 0; x < frame.view.width; ++x) {
            if (frame.planes == 1)
                to[x] = m_greys[m_lights[0](from[x])];
            else
                to[x] = qRgb(m_lights[0](from[x]), m_lights[1](from[std::size_t(x) + plane]),
                             m_lights[2](from[std::size_t(x) + 2 * plane]));
        }
    }
    if (frame.planes == 3) m_picture = Themed(m_picture);
}

void SeenPane::MakeDifference() {
    const SeenFrame& frame = *m_frame;
    const SeenFrame& median = *m_median;
    if (!m_differenceLight) m_differenceLight.emplace(frame, median);
    m_difference = QImage(frame.view.width, frame.view.height, QImage::Format_RGB32);
    if (m_difference.isNull()) return;
    std::size_t at = 0;
    for (int y = 0; y < frame.view.height; ++y) {
        auto* to = reinterpret_cast<QRgb*>(m_difference.scanLine(y));
        for (int x = 0; x < frame.view.width; ++x, ++at)
            to[x] = m_greys[(*m_differenceLight)(frame.codes[at], median.codes[at])];
    }
}

QRectF SeenPane::TargetOf(const GridView& seen) const {
    const GridView now = View();
    const double ratio = devicePixelRatioF();
    const QSize pane = (QSizeF(size()) * ratio).toSize();
    const double scale = seen.step / now.step;
    const double left = (pane.width() - now.width) / 2 +
                        (seen.left - seen.step / 2 - now.left + now.step / 2) / now.step;
    const double top = (pane.height() - now.height) / 2 +
                       (seen.top - seen.step / 2 - now.top + now.step / 2) / now.step;
    return {left / ratio, top / ratio, seen.width * scale / ratio, seen.height * scale / ratio};
}

void SeenPane::PaintPicture(QPainter& painter, const QImage& picture, const QRectF& part) const {
    painter.save();
    painter.setClipRect(part);
    painter.drawImage(TargetOf(m_frame->view), picture);
    painter.restore();
}

void SeenPane::PaintCorner(QPainter& painter) const {
    if (m_corner.isEmpty()) return;
    const int mark = m_mark.mark == Mark() ? 0 : MarkWidth(fontMetrics());
    const int height = fontMetrics().height() + kMargin;
    const QRect bar(0, 0, fontMetrics().horizontalAdvance(m_corner) + mark + 3 * kMargin, height);
    painter.fillRect(bar, kBar);
    const QColor ink = Themed(QColor(kInk));
    painter.setPen(ink);
    DrawMark(painter, QRectF(kMargin, 0, mark, height), m_mark, ink);
    painter.drawText(bar.adjusted(kMargin + mark, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     m_corner);
}

void SeenPane::PaintSplit(QPainter& painter) const {
    const double at = m_splitAt * width();
    painter.setPen(QPen(Themed(QColor(kInk)), 1));
    painter.drawLine(QPointF(at, 0), QPointF(at, height()));
    const QString said = HasDifference() ? QStringLiteral("less the median")
                                         : QStringLiteral("the median is being made");
    const int height = fontMetrics().height() + kMargin;
    const QRectF bar(at + 1, 0, fontMetrics().horizontalAdvance(said) + 2 * kMargin, height);
    painter.fillRect(bar.translated(0, this->height() - height), kBar);
    painter.drawText(bar.translated(0, this->height() - height), Qt::AlignCenter, said);
    painter.setBrush(Themed(QColor(kInk)));
    painter.drawRoundedRect(QRectF(at - 2, this->height() / 2.0 - 16, 4, 32), 2, 2);
}

void SeenPane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(kAround));
    painter.setPen(Themed(QColor(kInk)));
    if (!m_frame || !m_ground) {
        painter.drawText(rect().adjusted(20, 20, -20, -20), Qt::AlignCenter | Qt::TextWordWrap,
                         m_hint);
        return PaintCorner(painter);
    }
    if (m_isStale) {
        MakePicture();
        if (HasDifference()) MakeDifference();
        m_isStale = false;
    }
    PaintPicture(painter, m_picture, rect());
    if (HasDifference()) {
        const double at = m_splitAt * width();
        PaintPicture(painter, m_difference, QRectF(at, 0, width() - at, height()));
    }
    if (m_isSplit) PaintSplit(painter);
    PaintCorner(painter);
}

} // namespace tarn
