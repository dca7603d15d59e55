#include "display/Histogram.h"

#include "widgets/Themes.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr QSize kDesign(420, 120);
constexpr int kGround = 0x18;
const QColor kColumn(0xA0, 0xA0, 0xA0);
const std::array<QColor, 3> kMarks{QColor(0x40, 0x80, 0xFF), QColor(0xFF, 0xC0, 0x40),
                                   QColor(0xFF, 0xFF, 0xFF)};

} // namespace

Histogram::Histogram(QWidget* parent) : QWidget(parent) {
    setMinimumHeight(kDesign.height() / 2);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Histogram::SetCounts(const std::array<int, kColumns>& counts) {
    m_counts = counts;
    update();
}

void Histogram::SetMarks(const std::array<double, 3>& places) {
    m_marks = places;
    update();
}

QSize Histogram::sizeHint() const {
    return kDesign;
}

// By logarithms: the stars are a thousandth of the sky.
void Histogram::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Themed(QColor(kGround, kGround, kGround)));
    const double most = std::log1p(*std::max_element(m_counts.begin(), m_counts.end()));
    const double column = double(width()) / kColumns;
    for (int i = 0; most > 0 && i < kColumns; ++i) {
        const double tall = height() * std::log1p(m_counts[std::size_t(i)]) / most;
        painter.fillRect(QRectF(i * column, height() - tall, column, tall), Themed(kColumn));
    }
    for (std::size_t i = 0; i < m_marks.size(); ++i) {
        painter.setPen(Themed(kMarks[i]));
        const int x = int(std::lround(m_marks[i] * (width() - 1)));
        painter.drawLine(x, 0, x, height());
    }
}

} // namespace tarn
