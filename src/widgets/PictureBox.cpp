#include "widgets/PictureBox.h"

#include "platform/QtText.h"
#include "widgets/Themes.h"

#include <QPainter>

#include <cmath>
#include <utility>

namespace tarn {

namespace {

constexpr int kHintMargin = 12;

// Neutral and dark, under every theme: beside it pictures show their own colours.
constexpr QRgb kGround = 0xFF282828;
constexpr QRgb kHint = 0xFFB8B8B8;

// Distance to the next whole pixel of the screen.
double Fraction(double position) {
    return position - std::round(position);
}

} // namespace

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent); // every pixel is painted once, so nothing flickers
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QPalette dark = palette();
    dark.setColor(QPalette::Window, QColor(kGround));
    setPalette(dark);
}

void PictureBox::SetPicture(const QImage& picture) {
    const bool wasEmpty = m_picture.isNull();
    m_picture = picture;
    m_picture.setDevicePixelRatio(1);
    setAccessibleDescription(m_picture.isNull() ? m_hint : QString());
    update();
    if (wasEmpty != m_picture.isNull()) emit emptyChanged();
}

void PictureBox::SetRings(std::vector<SeenRing> rings) {
    if (rings.empty() && m_rings.empty()) return;
    m_rings = std::move(rings);
    update();
}

void PictureBox::SetHint(const std::string& text) {
    m_hint = ToQt(text);
    setAccessibleDescription(m_picture.isNull() ? m_hint : QString());
    if (m_picture.isNull()) update();
    emit emptyChanged();
}

void PictureBox::SetHintCovered(bool covered) {
    if (covered == m_hintCovered) return;
    m_hintCovered = covered;
    update();
}

QSize PictureBox::PixelSize() const {
    const double ratio = devicePixelRatioF();
    return {int(width() * ratio), int(height() * ratio)};
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    if (!m_picture.isNull()) {
        PaintPicture(painter);
        return;
    }
    if (m_hintCovered) return;
    painter.setPen(Themed(QColor(kHint)));
    painter.drawText(rect().adjusted(kHintMargin, kHintMargin, -kHintMargin, -kHintMargin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}

void PictureBox::PaintPicture(QPainter& painter) const {
    const double ratio = devicePixelRatioF();
    const QSize pane = PixelSize();
    // With a ratio like 1.25 the pane itself may begin between two pixels of the screen.
    const QPointF origin = QPointF(mapTo(window(), QPoint(0, 0))) * ratio;
    const QPointF place(std::floor((pane.width() - m_picture.width()) / 2.0) - Fraction(origin.x()),
                        std::floor((pane.height() - m_picture.height()) / 2.0) -
                            Fraction(origin.y()));
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(place, m_picture);
    PaintRings(painter, place);
}

// A dark line under each, or it is lost in a bright nebula.
void PictureBox::PaintRings(QPainter& painter, QPointF corner) const {
    const double ratio = devicePixelRatioF();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const SeenRing& ring : m_rings) {
        painter.setPen(QPen(QColor(0, 0, 0, 140), 3 * ratio));
        painter.drawEllipse(corner + ring.centre, ring.radius, ring.radius);
        painter.setPen(QPen(Themed(ring.colour), 1.5 * ratio));
        painter.drawEllipse(corner + ring.centre, ring.radius, ring.radius);
    }
}

} // namespace tarn
