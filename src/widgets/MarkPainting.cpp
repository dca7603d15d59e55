#include "widgets/MarkPainting.h"

#include "widgets/Themes.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace tarn {

namespace {

// Both stand out from light, dark and selected rows, within their white rims.
constexpr QColor kGreen(0x1E, 0x8E, 0x3E);
constexpr QColor kRed(0xC6, 0x28, 0x28);
constexpr QColor kGold(0xF2, 0xA6, 0x00);

// A round field with a tick, a square one with a cross.
void DrawDecision(QPainter& painter, const QRectF& field, const ShownMark& shown) {
    const bool keeps = shown.mark.decision == Decision::Keep;
    const QColor colour = Themed(keeps ? kGreen : kRed);
    const QColor white = Themed(Qt::white);
    const double line = field.width() / 7;
    painter.setPen(QPen(shown.keptAside ? colour : white, line * (shown.keptAside ? 1 : 0.6)));
    painter.setBrush(shown.keptAside ? white : colour);
    if (keeps)
        painter.drawEllipse(field);
    else
        painter.drawRoundedRect(field, line, line);
    QPen pen(shown.keptAside ? colour : white, line * 1.2);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const auto at = [&](double x, double y) {
        return QPointF(field.left() + x * field.width(), field.top() + y * field.height());
    };
    if (keeps) {
        painter.drawPolyline(QPolygonF({at(0.27, 0.54), at(0.44, 0.70), at(0.74, 0.34)}));
    } else {
        painter.drawLine(at(0.31, 0.31), at(0.69, 0.69));
        painter.drawLine(at(0.69, 0.31), at(0.31, 0.69));
    }
}

QPolygonF Star(const QRectF& field) {
    constexpr int kPoints = 10;
    constexpr double kInner = 0.42;
    QPolygonF star;
    for (int i = 0; i < kPoints; ++i) {
        const double radius = field.width() / 2 * (i % 2 ? kInner : 1);
        const double angle = i * 2 * M_PI / kPoints;
        star << field.center() + QPointF(radius * std::sin(angle),
                                         field.height() * 0.04 - radius * std::cos(angle));
    }
    return star;
}

double SideOf(const QFontMetricsF& font) {
    return font.height() - 3;
}

} // namespace

int MarkWidth(const QFontMetrics& font) {
    return int(std::ceil(2 * SideOf(font) + font.horizontalAdvance(QLatin1Char('5')))) + 6;
}

void DrawMark(QPainter& painter, const QRectF& line, const ShownMark& shown, const QColor& ink) {
    if (shown.mark == Mark()) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = SideOf(painter.fontMetrics());
    QRectF field(line.left() + 1, line.center().y() - side / 2, side, side);
    if (shown.mark.decision != Decision::None)
        DrawDecision(painter, field.adjusted(0.5, 0.5, -0.5, -0.5), shown);
    if (shown.mark.stars > 0) {
        const QString number = QString::number(shown.mark.stars);
        const double width = painter.fontMetrics().horizontalAdvance(number);
        painter.setPen(ink);
        painter.drawText(QRectF(field.right() + 2, line.top(), width + 1, line.height()),
                         Qt::AlignVCenter | Qt::AlignLeft, number);
        field.moveLeft(field.right() + 2 + width);
        const QColor gold = Themed(kGold);
        painter.setPen(QPen(shown.keptAside ? gold : gold.darker(130), 1));
        painter.setBrush(shown.keptAside ? QBrush(Qt::NoBrush) : QBrush(gold));
        painter.drawPolygon(Star(field));
    }
    painter.restore();
}

} // namespace tarn
