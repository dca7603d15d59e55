#include "widgets/MeasureGraph.h"

#include "platform/QtText.h"
#include "widgets/Themes.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace tarn {

namespace {

constexpr int kMargin = 8;
constexpr int kBetween = 10;        // the two parts
constexpr double kUpper = 0.62;     // of the height
constexpr double kPoint = 3.5;      // half a point's width
constexpr double kReach = 9;        // of the pointer
constexpr double kLineReach = 5;    // for the line
constexpr double kDragBegins = 4;   // pixels
constexpr int kTickDistance = 46;   // pixels between two ticks at least, upwards
constexpr int kAlongDistance = 78;  // and along
constexpr double kLimitStep = 0.01; // of the range, by a key

struct FilterColour {
    const char* name;
    QRgb colour;
};
// Bright enough for a dark ground, dark enough for a light one.
constexpr FilterColour kFilters[] = {
    {"l", 0xFF7A8594},    {"lum", 0xFF7A8594}, {"luminance", 0xFF7A8594}, {"r", 0xFFD9483B},
    {"red", 0xFFD9483B},  {"g", 0xFF3E9E4F},   {"green", 0xFF3E9E4F},     {"b", 0xFF3F7FD6},
    {"blue", 0xFF3F7FD6}, {"ha", 0xFFC0398B},  {"h-alpha", 0xFFC0398B},   {"oiii", 0xFF1F9CA6},
    {"o3", 0xFF1F9CA6},   {"sii", 0xFFD07A1E}, {"s2", 0xFFD07A1E}};
constexpr QRgb kOthers[] = {0xFF4C86D0, 0xFFC8772B, 0xFF5A9E3E, 0xFF9460C4, 0xFFC24F6E, 0xFF2C9C93};

const QColor kBest(0xFF2FA84F);
const QColor kWorst(0xFFE0453A);

// The shapes of the kinds, in turn; of unit size around the origin.
QPolygonF ShapeOf(int kind) {
    static const std::vector<QPolygonF> kShapes{
        {}, // a disc
        QPolygonF({{-0.9, -0.9}, {0.9, -0.9}, {0.9, 0.9}, {-0.9, 0.9}}),
        QPolygonF({{0, -1.2}, {1.1, 0.9}, {-1.1, 0.9}}),
        QPolygonF({{0, -1.3}, {1.3, 0}, {0, 1.3}, {-1.3, 0}}),
        QPolygonF({{0, 1.2}, {1.1, -0.9}, {-1.1, -0.9}})};
    return kShapes[std::size_t(kind) % kShapes.size()];
}

void DrawShape(QPainter& painter, QPointF at, int kind, double size) {
    const QPolygonF shape = ShapeOf(kind);
    if (shape.isEmpty()) return painter.drawEllipse(at, size, size);
    QPolygonF placed;
    for (const QPointF& corner : shape) placed << at + size * corner;
    painter.drawPolygon(placed);
}

} // namespace

QColor ColourOfKind(const QString& name, int number) {
    const QString folded = name.toLower();
    for (const FilterColour& each : kFilters)
        if (folded == QLatin1String(each.name)) return Themed(QColor(each.colour));
    return Themed(QColor(kOthers[std::size_t(number) % std::size(kOthers)]));
}

MeasureGraph::MeasureGraph(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void MeasureGraph::SetTitles(const Titles& titles) {
    m_titles = titles;
    WorkOutRanges();
}

void MeasureGraph::SetPoints(std::vector<GraphPoint> points, std::vector<QString> kinds) {
    m_points = std::move(points);
    m_kinds = std::move(kinds);
    WorkOutRanges();
}

void MeasureGraph::SetHint(const QString& hint) {
    m_hint = hint;
    update();
}

void MeasureGraph::SetCurrent(int point) {
    m_current = point;
    update();
}

void MeasureGraph::SetChosen(std::vector<bool> chosen) {
    m_chosen = std::move(chosen);
    update();
}

void MeasureGraph::SetLimit(std::optional<double> limit) {
    m_limit = limit;
    update();
}

void MeasureGraph::WorkOutRanges() {
    std::vector<double> along;
    std::array<std::vector<double>, 2> values;
    for (const GraphPoint& point : m_points) {
        along.push_back(point.x);
        for (std::size_t part : {0U, 1U}) values[part].push_back(point.y[part]);
    }
    m_along = WholeRange(along);
    const auto [first, last] = std::minmax_element(along.begin(), along.end());
    if (!along.empty() && *first == *last) { // one moment has an hour round it
        const double half = m_titles.isTime ? 1800 : 0.5;
        m_along = {*first - half, *first + half};
    }
    for (std::size_t part : {0U, 1U}) m_ranges[part] = RobustRange(values[part]);
    update();
}

int MeasureGraph::Left() const {
    return kMargin + fontMetrics().horizontalAdvance(QStringLiteral("00000.0")) + 6;
}

QRectF MeasureGraph::Plot(int part) const {
    const int line = fontMetrics().height();
    const double top = kMargin + line + 4; // below the legend
    const double bottom = height() - kMargin - 2 * line - 4;
    const double middle = top + kUpper * (bottom - top);
    // Each has its title above it.
    const double from = part == 0 ? top + line : middle + kBetween + line;
    const double to = part == 0 ? middle : bottom;
    return QRectF(Left(), from, std::max(1, width() - Left() - 2 * kMargin),
                  std::max(1.0, to - from));
}

QPointF MeasureGraph::PlaceOf(int point, int part) const {
    const QRectF plot = Plot(part);
    const GraphPoint& at = m_points[std::size_t(point)];
    const double up =
        std::clamp(m_ranges[std::size_t(part)].PartOf(at.y[std::size_t(part)]), 0.0, 1.0);
    return {plot.left() + m_along.PartOf(at.x) * plot.width(), plot.bottom() - up * plot.height()};
}

int MeasureGraph::PointAt(QPointF place) const {
    int nearest = -1;
    double distance = kReach;
    for (int part : {0, 1})
        for (int i = 0; i < int(m_points.size()); ++i) {
            if (!std::isfinite(m_points[std::size_t(i)].y[std::size_t(part)])) continue;
            const QPointF way = PlaceOf(i, part) - place;
            const double away = std::hypot(way.x(), way.y());
            if (away > distance) continue;
            distance = away;
            nearest = i;
        }
    return nearest;
}

double MeasureGraph::LimitAt(double y) const {
    const QRectF plot = Plot(0);
    return m_ranges[0].ValueAt(std::clamp((plot.bottom() - y) / plot.height(), 0.0, 1.0));
}

bool MeasureGraph::IsOnLimit(QPointF place) const {
    if (!m_limit) return false;
    const QRectF plot = Plot(0);
    const double y = plot.bottom() - m_ranges[0].PartOf(*m_limit) * plot.height();
    return std::abs(place.y() - y) <= kLineReach && place.x() >= plot.left();
}

void MeasureGraph::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    if (m_points.empty()) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_hint);
    } else {
        painter.setRenderHint(QPainter::Antialiasing);
        for (int part : {0, 1}) PaintPart(painter, part);
        PaintAlong(painter);
        PaintLimit(painter);
        PaintLegend(painter);
    }
    if (!hasFocus()) return;
    painter.setPen(palette().color(QPalette::Highlight));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void MeasureGraph::PaintPart(QPainter& painter, int part) const {
    const QRectF plot = Plot(part);
    const QColor text = palette().color(QPalette::Text);
    QColor faint = text;
    faint.setAlphaF(0.18F);
    const GraphRange& range = m_ranges[std::size_t(part)];
    for (const GraphTick& tick : RoundTicks(range, int(plot.height()) / kTickDistance + 2)) {
        const double y = plot.bottom() - range.PartOf(tick.value) * plot.height();
        painter.setPen(faint);
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter.setPen(text);
        painter.drawText(QRectF(0, y - 10, plot.left() - 6, 20), Qt::AlignRight | Qt::AlignVCenter,
                         ToQt(tick.label));
    }
    painter.setPen(faint);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(plot);
    painter.setPen(text);
    const int line = fontMetrics().height();
    painter.drawText(QRectF(plot.left(), plot.top() - line - 1, plot.width(), line),
                     Qt::AlignLeft | Qt::AlignVCenter, m_titles.measures[std::size_t(part)]);
    for (int i = 0; i < int(m_points.size()); ++i)
        if (i != m_current) PaintPoint(painter, i, part);
    if (m_current >= 0 && m_current < int(m_points.size())) PaintPoint(painter, m_current, part);
}

// What lies outside the scale is an arrow at its edge. Best and worst have a ring, a rejected one
// is hollow and crossed out, a kept one has a second outline.
void MeasureGraph::PaintPoint(QPainter& painter, int point, int part) const {
    const GraphPoint& at = m_points[std::size_t(point)];
    const double value = at.y[std::size_t(part)];
    if (!std::isfinite(value)) return;
    const QPointF place = PlaceOf(point, part);
    const auto kind = std::size_t(at.kind);
    const QColor colour = ColourOfKind(kind < m_kinds.size() ? m_kinds[kind] : QString(), at.kind);
    const bool chosen = std::size_t(point) < m_chosen.size() && m_chosen[std::size_t(point)];
    if (point == m_current) {
        QColor mark = palette().color(QPalette::Highlight);
        painter.setPen(QPen(mark, 1.5));
        painter.drawLine(QPointF(place.x(), Plot(part).top()),
                         QPointF(place.x(), Plot(part).bottom()));
    }
    if (chosen || point == m_current) {
        QColor ground = palette().color(QPalette::Highlight);
        ground.setAlphaF(0.55F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        painter.drawEllipse(place, 2.2 * kPoint, 2.2 * kPoint);
    }
    const double part01 = m_ranges[std::size_t(part)].PartOf(value);
    painter.setPen(QPen(colour, 1.4));
    painter.setBrush(at.rejected ? QBrush(Qt::NoBrush) : QBrush(colour));
    if (part01 < 0 || part01 > 1) {
        const double way = part01 > 1 ? -1 : 1;
        painter.drawPolygon(
            QPolygonF({place, place + QPointF(-5, -8 * way), place + QPointF(5, -8 * way)}));
        return;
    }
    DrawShape(painter, place, at.kind, kPoint);
    painter.setBrush(Qt::NoBrush);
    if (at.rejected) {
        painter.drawLine(place + QPointF(-4.5, -4.5), place + QPointF(4.5, 4.5));
        painter.drawLine(place + QPointF(-4.5, 4.5), place + QPointF(4.5, -4.5));
    }
    if (at.kept) {
        painter.setPen(QPen(palette().color(QPalette::Text), 1.4));
        DrawShape(painter, place, at.kind, kPoint + 2);
    }
    if (at.accent != GraphPoint::Accent::None && part == 0) {
        painter.setPen(QPen(Themed(at.accent == GraphPoint::Accent::Best ? kBest : kWorst), 1.4));
        painter.drawEllipse(place, kPoint + 3, kPoint + 3);
    }
}

std::vector<GraphTick> MeasureGraph::AlongTicks() const {
    const int most = std::max(2, int(Plot(1).width()) / kAlongDistance);
    return m_titles.isTime ? TimeTicks(m_along, most) : RoundTicks(m_along, most);
}

void MeasureGraph::PaintAlong(QPainter& painter) const {
    const QColor text = palette().color(QPalette::Text);
    QColor faint = text;
    faint.setAlphaF(0.18F);
    const QRectF lower = Plot(1);
    for (const GraphTick& tick : AlongTicks()) {
        const double x = lower.left() + m_along.PartOf(tick.value) * lower.width();
        painter.setPen(faint);
        for (int part : {0, 1})
            painter.drawLine(QPointF(x, Plot(part).top()), QPointF(x, Plot(part).bottom()));
        painter.setPen(text);
        painter.drawText(QRectF(x - 60, lower.bottom() + 2, 120, fontMetrics().height()),
                         Qt::AlignCenter, ToQt(tick.label));
    }
    painter.drawText(QRectF(lower.left(), lower.bottom() + fontMetrics().height() + 2,
                            lower.width(), fontMetrics().height()),
                     Qt::AlignCenter, m_titles.along);
}

void MeasureGraph::PaintLimit(QPainter& painter) const {
    if (!m_limit) return;
    const QRectF plot = Plot(0);
    const double y =
        plot.bottom() - std::clamp(m_ranges[0].PartOf(*m_limit), 0.0, 1.0) * plot.height();
    const QColor colour = Themed(kWorst);
    painter.setPen(QPen(colour, 1.5, Qt::DashLine));
    painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF({QPointF(plot.right() + 1, y), QPointF(plot.right() + 10, y - 6),
                                   QPointF(plot.right() + 10, y + 6)}));
}

void MeasureGraph::PaintLegend(QPainter& painter) const {
    const QColor text = palette().color(QPalette::Text);
    double x = Left();
    const double y = kMargin + fontMetrics().height() / 2.0;
    // What has no room for its text is left away.
    const auto fits = [&](const QString& name) {
        return x + 10 + fontMetrics().horizontalAdvance(name) < width();
    };
    const auto write = [&](const QString& name) {
        painter.setPen(text);
        painter.drawText(QPointF(x + 10, y + fontMetrics().ascent() / 2.0 - 1), name);
        x += 10 + fontMetrics().horizontalAdvance(name) + 16;
    };
    for (int kind = 0; kind < int(m_kinds.size()); ++kind) {
        const QString& filter = m_kinds[std::size_t(kind)];
        const QColor colour = ColourOfKind(filter, kind);
        const QString name = filter.isEmpty() ? QStringLiteral("no filter") : filter;
        if (!fits(name)) return;
        painter.setPen(colour);
        painter.setBrush(colour);
        DrawShape(painter, QPointF(x + 2, y), kind, kPoint);
        write(name);
    }
    painter.setBrush(Qt::NoBrush);
    const auto any = [this](GraphPoint::Accent accent) {
        return std::any_of(m_points.begin(), m_points.end(),
                           [accent](const GraphPoint& point) { return point.accent == accent; });
    };
    for (const auto& [accent, colour, name] :
         {std::tuple(GraphPoint::Accent::Best, kBest, QStringLiteral("best tenth")),
          std::tuple(GraphPoint::Accent::Worst, kWorst, QStringLiteral("worst tenth"))}) {
        if (!any(accent) || !fits(name)) continue;
        painter.setPen(QPen(Themed(colour), 1.4));
        painter.drawEllipse(QPointF(x + 2, y), kPoint + 1.5, kPoint + 1.5);
        write(name);
    }
}

bool MeasureGraph::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto& help = *static_cast<QHelpEvent*>(event);
    const int point = PointAt(QPointF(help.pos()));
    if (point >= 0 && tipOf)
        QToolTip::showText(help.globalPos(), tipOf(point), this);
    else
        QToolTip::hideText();
    return true;
}

void MeasureGraph::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || m_points.empty()) return;
    m_drags = IsOnLimit(event->position());
    m_pressed = event->position();
    if (m_drags) return;
    const int point = PointAt(event->position());
    if (point < 0) return;
    m_pressed.reset();
    if (onClick) onClick(point);
}

// A press beside all points begins a line once it is drawn away.
void MeasureGraph::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    if (m_pressed && !m_drags && Plot(0).contains(*m_pressed))
        m_drags = std::abs(at.y() - m_pressed->y()) > kDragBegins;
    if (m_pressed && m_drags) return DragTo(at.y());
    setCursor(IsOnLimit(at)      ? Qt::SizeVerCursor
              : PointAt(at) >= 0 ? Qt::PointingHandCursor
                                 : Qt::ArrowCursor);
    const int point = PointAt(at);
    if (point >= 0 && tipOf)
        QToolTip::showText(event->globalPosition().toPoint(), tipOf(point), this);
    else
        QToolTip::hideText();
}

void MeasureGraph::mouseReleaseEvent(QMouseEvent*) {
    m_pressed.reset();
    m_drags = false;
}

void MeasureGraph::DragTo(double y) {
    m_limit = LimitAt(y);
    update();
    if (onLimit) onLimit(*m_limit);
}

void MeasureGraph::Walk(int by) {
    std::vector<int> order(m_points.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [this](int one, int other) {
        return m_points[std::size_t(one)].x < m_points[std::size_t(other)].x;
    });
    const auto at = std::find(order.begin(), order.end(), m_current);
    const std::ptrdiff_t place = at == order.end() ? (by > 0 ? 0 : std::ptrdiff_t(order.size()) - 1)
                                                   : at - order.begin() + by;
    if (place >= 0 && place < std::ptrdiff_t(order.size()) && onClick)
        onClick(order[std::size_t(place)]);
}

void MeasureGraph::keyPressEvent(QKeyEvent* event) {
    const QRectF plot = Plot(0);
    const auto move = [&](double by) {
        const double part = m_limit ? m_ranges[0].PartOf(*m_limit) : (by > 0 ? 0.0 : 1.0);
        DragTo(plot.bottom() - (std::clamp(part, 0.0, 1.0) + by) * plot.height());
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return Walk(-1);
    case Qt::Key_Right:
        return Walk(+1);
    case Qt::Key_Up:
        return move(+kLimitStep);
    case Qt::Key_Down:
        return move(-kLimitStep);
    default:
        return QWidget::keyPressEvent(event);
    }
}

} // namespace tarn
