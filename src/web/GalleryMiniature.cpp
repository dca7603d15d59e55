#include "web/GalleryMiniature.h"

#include "platform/QtText.h"
#include "web/ColorBox.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr double kScale = 0.25; // of the page
constexpr int kMargin = 6;      // logical pixels
constexpr int kTitleHeight = 18;
constexpr int kTextLine = 3;
constexpr int kMostLines = 5;

} // namespace

GalleryMiniature::GalleryMiniature() {
    setObjectName(QStringLiteral("GalleryMiniature"));
    setAccessibleName(QStringLiteral("Miniature of the index page"));
    setMinimumSize(sizeHint());
}

void GalleryMiniature::ShowGallery(const GallerySettings& settings, int pictures) {
    m_settings = settings;
    m_pictures = pictures;
    update();
}

void GalleryMiniature::paintEvent(QPaintEvent*) {
    const GallerySettings& s = m_settings;
    QPainter painter(this);
    painter.fillRect(rect(), ColorOf(s.HtmlThumbPageBgColor));
    const QColor border = ColorOf(s.HtmlThumbBorderColor);
    const auto pen = [&](int on) {
        return on != 0 && s.HtmlThumbBorderWidth > 0
                   ? QPen(border, std::max(1.0, s.HtmlThumbBorderWidth * kScale))
                   : QPen(Qt::NoPen);
    };
    const QRect title(kMargin, kMargin, width() - 2 * kMargin, kTitleHeight);
    painter.setPen(pen(s.ThumbTitleBorder));
    painter.drawRect(title);
    painter.setPen(ColorOf(s.HtmlThumbTextColor));
    QFont font(ToQt(s.HtmlThumbFontname));
    font.setPixelSize(kTitleHeight / 2 + 2);
    painter.setFont(font);
    painter.drawText(title, Qt::AlignCenter, ToQt(s.HtmlThumbTitle));

    const int columns = std::max(1, s.HtmlThumbSlider);
    const int gap = std::max(1, int(s.ThumbSpacing * kScale));
    const int cell = std::max(8, (width() - 2 * kMargin - gap * (columns + 1)) / columns);
    const int side = std::min(cell, width() / 3);
    const int lines = s.HtmlThumbNotes != 0 ? std::min(kMostLines, s.HtmlThumbNotesT) : 0;
    const int pad = std::max(1, int(s.ThumbPadding * kScale));
    const int picture = side * 2 / 3;
    const int height = picture + 2 * pad + (lines + (s.SizeCheck != 0 ? 1 : 0)) * kTextLine + 2;
    const int left = (width() - columns * (side + gap)) / 2;
    int y = title.bottom() + kMargin;
    for (int k = 0; k < m_pictures && y < this->height(); ++k) {
        const QRect box(left + k % columns * (side + gap), y, side, height);
        painter.setPen(pen(s.ThumbTnailBorder));
        painter.setBrush(ColorOf(s.HtmlThumbThumbBgColor));
        painter.drawRect(box);
        painter.fillRect(box.left() + pad, box.top() + pad, side - 2 * pad, picture,
                         QColor(0x6f, 0x8f, 0xaf));
        painter.setPen(ColorOf(s.HtmlThumbTextColor));
        for (int line = 0; line < lines + (s.SizeCheck != 0 ? 1 : 0); ++line) {
            const int at = box.top() + picture + 2 * pad + line * kTextLine;
            painter.drawLine(box.left() + side / 4, at, box.right() - side / 4, at);
        }
        painter.setBrush(Qt::NoBrush);
        if (k % columns == columns - 1) y += height + gap;
    }
}

} // namespace tarn
