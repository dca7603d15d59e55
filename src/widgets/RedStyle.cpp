#include "widgets/RedStyle.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStyleOption>
#include <QWidget>

#include <algorithm>

namespace tarn {

void Redden(QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::for_each(line, line + image.width(), [](QRgb& pixel) {
            const int light = std::max(qRed(pixel), std::max(qGreen(pixel), qBlue(pixel)));
            pixel = qRgba(light, 0, 0, qAlpha(pixel));
        });
    }
}

namespace {

constexpr int kAroundCaret = 5; // what a line's caret is given on its left, and less one right

// Where the caret stands in what is painted; empty without one.
QRect CaretOf(const QWidget& painted) {
    if (const auto* line = qobject_cast<const QLineEdit*>(&painted)) {
        if (!line->hasFocus() || line->isReadOnly()) return {};
        return line->inputMethodQuery(Qt::ImCursorRectangle)
            .toRect()
            .adjusted(kAroundCaret, 0, 1 - kAroundCaret, 0);
    }
    const auto* text = qobject_cast<const QPlainTextEdit*>(painted.parentWidget());
    if (!text || !text->hasFocus() || text->isReadOnly()) return {};
    return {text->cursorRect().topLeft(), QSize(text->cursorWidth(), text->cursorRect().height())};
}

// What a field paints on.
QWidget* CaretGround(QWidget* widget) {
    if (auto* text = qobject_cast<QPlainTextEdit*>(widget)) return text->viewport();
    return qobject_cast<QLineEdit*>(widget);
}

} // namespace

bool RedCaret::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Paint || m_inside) return false;
    m_inside = true;
    QCoreApplication::sendEvent(watched, event); // painted as ever
    m_inside = false;
    auto* painted = static_cast<QWidget*>(watched);
    QPainter(painted).fillRect(CaretOf(*painted), painted->palette().color(QPalette::Text));
    return true;
}

void RedStyle::polish(QWidget* widget) {
    ClearOutlines::polish(widget);
    if (QWidget* ground = CaretGround(widget)) ground->installEventFilter(&m_caret);
}

void RedStyle::unpolish(QWidget* widget) {
    if (QWidget* ground = CaretGround(widget)) ground->removeEventFilter(&m_caret);
    ClearOutlines::unpolish(widget);
}

template <typename Draw>
void RedStyle::InRed(const QStyleOption& option, QPainter& painter, const Draw& draw) const {
    if (m_inside || option.rect.isEmpty()) return draw(&painter);
    m_inside = true;
    const qreal ratio = painter.device()->devicePixelRatioF();
    QImage image((QSizeF(option.rect.size()) * ratio).toSize(),
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    {
        QPainter inside(&image);
        inside.setFont(painter.font());
        inside.setPen(painter.pen());
        inside.setBrush(painter.brush());
        inside.setLayoutDirection(painter.layoutDirection());
        inside.translate(-option.rect.topLeft());
        draw(&inside);
    }
    m_inside = false;
    Redden(image);
    painter.drawImage(option.rect.topLeft(), image);
}

void RedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                             QPainter* painter, const QWidget* widget) const {
    InRed(*option, *painter,
          [&](QPainter* on) { ClearOutlines::drawPrimitive(element, option, on, widget); });
}

void RedStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                           const QWidget* widget) const {
    InRed(*option, *painter,
          [&](QPainter* on) { ClearOutlines::drawControl(element, option, on, widget); });
}

void RedStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                  QPainter* painter, const QWidget* widget) const {
    InRed(*option, *painter,
          [&](QPainter* on) { ClearOutlines::drawComplexControl(control, option, on, widget); });
}

void RedStyle::drawItemPixmap(QPainter* painter, const QRect& rect, int alignment,
                              const QPixmap& pixmap) const {
    QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    Redden(image);
    ClearOutlines::drawItemPixmap(painter, rect, alignment, QPixmap::fromImage(image));
}

} // namespace tarn
