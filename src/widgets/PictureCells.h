// Draws the rows of the file list as small pictures with the name beneath.
#pragma once

#include "widgets/MarkPainting.h"

#include <QImage>
#include <QStyledItemDelegate>

#include <functional>

namespace tarn {

inline constexpr int kCellPicture = 80; // logical pixels, the side of the picture's square

class PictureCells : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // Null while there is none: the cell then shows an empty frame.
    std::function<QImage(int row)> pictureOf;
    std::function<ShownMark(int row)> markOf; // may be empty

    static QSize CellSize(const QFontMetrics& font);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tarn
