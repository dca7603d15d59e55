#include "web/ColorBox.h"

#include "web/HtmlColor.h"

#include <QPainter>
#include <QPixmap>

namespace tarn {

namespace {

constexpr QSize kSample(28, 14); // logical pixels

} // namespace

QColor ColorOf(const std::string& htmlColor) {
    const int number = NumberOfHtmlColor(htmlColor);
    return {number & 0xFF, number >> 8 & 0xFF, number >> 16 & 0xFF};
}

ColorBox::ColorBox(const QString& caption) : QPushButton(caption) {
    setIconSize(kSample);
    setAutoDefault(false);
}

void ColorBox::SetColor(const std::string& htmlColor) {
    m_color = htmlColor;
    const qreal scale = devicePixelRatioF();
    QPixmap sample(kSample * scale);
    sample.setDevicePixelRatio(scale);
    sample.fill(ColorOf(htmlColor));
    QPainter painter(&sample);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, kSample.width() - 1, kSample.height() - 1);
    painter.end();
    setIcon(sample);
    setToolTip(QStringLiteral("#") + QString::fromStdString(htmlColor));
}

} // namespace tarn
