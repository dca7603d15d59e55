#include "widgets/NameRows.h"

#include <QApplication>
#include <QPainter>

namespace tarn {

void StrikeRejected(QStyleOptionViewItem& option, const Mark& mark) {
    if (mark.decision == Decision::Reject) option.font.setStrikeOut(true);
}

void NameRows::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (markOf) StrikeRejected(*option, markOf(index.row()).mark);
}

void NameRows::paint(QPainter* painter, const QStyleOptionViewItem& given,
                     const QModelIndex& index) const {
    if (!hasColumn || !markOf) return QStyledItemDelegate::paint(painter, given, index);
    QStyleOptionViewItem option = given;
    initStyleOption(&option, index);
    QRect column = given.rect;
    column.setWidth(MarkWidth(given.fontMetrics));
    painter->save();
    painter->setClipRect(column); // the rest of the row brings its own ground
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    painter->setFont(given.font);
    const bool selected = option.state & QStyle::State_Selected;
    DrawMark(*painter, column, markOf(index.row()),
             option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->restore();
    QStyleOptionViewItem rest = given;
    rest.rect.setLeft(column.right() + 1);
    QStyledItemDelegate::paint(painter, rest, index);
}

QSize NameRows::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return hasColumn ? size + QSize(MarkWidth(option.fontMetrics), 0) : size;
}

} // namespace tarn
