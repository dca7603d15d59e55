#include "widgets/printing/PagePainter.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <cmath>

namespace tarn {

namespace {

constexpr double kTwipsPerPoint = 20;
constexpr double kLeastSide = 1; // a picture thinner than this is its frame alone

class Drawer {
public:
    explicit Drawer(QPainter& painter) : m_painter(painter) {}

    void operator()(const PaperText& order) const {
        const QFont font = ToTwipFont(order.font);
        m_painter.setFont(font);
        const double baseline = order.y + QFontMetricsF(font).ascent();
        m_painter.drawText(QPointF(order.x, baseline), QString::fromStdString(order.text));
    }
    void operator()(const PaperRule& order) const {
        m_painter.drawLine(QPointF(order.x, order.y), QPointF(order.toX, order.y));
    }
    void operator()(const PaperBox& order) const { m_painter.drawRect(ToRect(order)); }
    void operator()(const PaperPicture& order) const {
        if (order.place.width < kLeastSide || order.place.height < kLeastSide) return;
        const auto length = static_cast<int>(order.jpeg.size());
        const auto* bytes = reinterpret_cast<const uchar*>(order.jpeg.data());
        m_painter.drawImage(ToRect(order.place), QImage::fromData(bytes, length, "JPG"));
    }

private:
    static QRectF ToRect(const PaperBox& box) { return {box.x, box.y, box.width, box.height}; }

    QPainter& m_painter;
};

} // namespace

QFont ToTwipFont(const PaperFont& font) {
    QFont made(QString::fromStdString(font.family));
    if (font.family.rfind("Courier", 0) == 0) made.setStyleHint(QFont::TypeWriter);
    made.setPixelSize(static_cast<int>(std::lround(font.points * kTwipsPerPoint)));
    made.setHintingPreference(QFont::PreferNoHinting);
    made.setBold(font.bold);
    made.setItalic(font.italic);
    made.setUnderline(font.underline);
    return made;
}

void PaintPage(QPainter& painter, const PaperPage& page) {
    painter.setPen(QPen(Qt::black, kPaperLine, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    const Drawer drawer(painter);
    for (const PaperOrder& order : page) std::visit(drawer, order);
}

} // namespace tarn
