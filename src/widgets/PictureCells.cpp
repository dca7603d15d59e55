#include "widgets/PictureCells.h"

#include "widgets/NameRows.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>

namespace tarn {

namespace {

constexpr int kMargin = 6; // around the picture

// Upon the lower left corner of the picture, on a ground of the list's own.
void DrawMarkOn(QPainter& painter, const QRect& square, const QStyleOptionViewItem& option,
                const ShownMark& shown) {
    if (shown.mark == Mark()) return;
    QRect place(square.left(), square.bottom() - option.fontMetrics.height(),
                MarkWidth(option.fontMetrics), option.fontMetrics.height());
    if (shown.mark.stars == 0) place.setWidth(option.fontMetrics.height());
    QColor ground = option.palette.color(QPalette::Base);
    ground.setAlpha(200);
    painter.fillRect(place, ground);
    painter.setFont(option.font);
    DrawMark(painter, place, shown, option.palette.color(QPalette::Text));
}

void DrawPicture(QPainter& painter, const QImage& picture, const QRect& square) {
    const QSizeF device = picture.size() / painter.device()->devicePixelRatioF();
    const QSizeF size = device.width() > square.width() || device.height() > square.height()
                            ? QSizeF(picture.size()).scaled(square.size(), Qt::KeepAspectRatio)
                            : device;
    QRectF place(QPointF(0, 0), size);
    place.moveCenter(QRectF(square).center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, picture);
}

} // namespace

QSize PictureCells::CellSize(const QFontMetrics& font) {
    return {kCellPicture + 2 * kMargin, kCellPicture + 2 * kMargin + font.height() + kMargin};
}

QSize PictureCells::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return CellSize(option.fontMetrics);
}

void PictureCells::paint(QPainter* painter, const QStyleOptionViewItem& given,
                         const QModelIndex& index) const {
    QStyleOptionViewItem option = given;
    initStyleOption(&option, index);
    const ShownMark shown = markOf ? markOf(index.row()) : ShownMark();
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    painter->save();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    const QRect square(option.rect.left() + (option.rect.width() - kCellPicture) / 2,
                       option.rect.top() + kMargin, kCellPicture, kCellPicture);
    const bool selected = option.state & QStyle::State_Selected;
    const QColor ink = option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    const QImage picture = pictureOf ? pictureOf(index.row()) : QImage();
    if (picture.isNull()) {
        QColor faint = ink;
        faint.setAlpha(60);
        painter->setPen(faint);
        painter->drawRect(square.adjusted(8, 14, -8, -14));
    } else {
        DrawPicture(*painter, picture, square);
    }
    DrawMarkOn(*painter, square, option, shown);
    StrikeRejected(option, shown.mark);
    if (!option.icon.isNull())
        option.icon.paint(painter, QRect(square.topLeft(), option.decorationSize));
    const QRect name(option.rect.left() + 2, square.bottom() + 3, option.rect.width() - 4,
                     option.fontMetrics.height());
    painter->setPen(ink);
    painter->setFont(option.font);
    painter->drawText(name, Qt::AlignHCenter | Qt::AlignTop,
                      option.fontMetrics.elidedText(option.text, Qt::ElideMiddle, name.width()));
    if (option.state & QStyle::State_HasFocus) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.backgroundColor = option.palette.color(QPalette::Base);
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
    }
    painter->restore();
}

} // namespace tarn
