// Draws the rows of the file list as names, with their marks in a column ahead of them.
#pragma once

#include "widgets/MarkPainting.h"

#include <QStyledItemDelegate>

#include <functional>

namespace tarn {

class NameRows : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    std::function<ShownMark(int row)> markOf; // may be empty
    bool hasColumn = false;                   // room for marks in every row

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

// A rejected name is struck through.
void StrikeRejected(QStyleOptionViewItem& option, const Mark& mark);

} // namespace tarn
