#include "imaging/Turn.h"

#include <QTransform>

#include <iterator>

namespace tarn {

Turn Turn::Upright(int orientation) {
    constexpr Turn kTurns[] = {{false, 0}, {true, 0},  {false, 2}, {true, 2},
                               {true, 3},  {false, 1}, {true, 1},  {false, 3}};
    const bool known = orientation >= 1 && orientation <= int(std::size(kTurns));
    return known ? kTurns[orientation - 1] : Turn();
}

void Turn::Rotate(int quarterTurns) {
    quarters = (quarters + quarterTurns % 4 + 4) % 4;
}

// A mirroring after a turn to the right is the same as a turn to the left after it.
void Turn::Mirror(int axis) {
    mirrored = !mirrored;
    quarters = axis == 0 ? (4 - quarters) % 4 : (6 - quarters) % 4;
}

QImage Turn::Of(const QImage& picture) const {
    const QImage upright = mirrored ? picture.mirrored(true, false) : picture;
    return quarters == 0 ? upright : upright.transformed(QTransform().rotate(90.0 * quarters));
}

QPointF Turn::Of(QPointF point, QSize picture) const {
    if (mirrored) point.setX(picture.width() - point.x());
    for (int i = 0; i < quarters; ++i) {
        point = QPointF(picture.height() - point.y(), point.x());
        picture.transpose();
    }
    return point;
}

QRect Turn::Back(QRect part, QSize picture) const {
    QSize size = Of(picture);
    for (int i = 0; i < quarters; ++i) {
        part = QRect(part.top(), size.width() - part.left() - part.width(), part.height(),
                     part.width());
        size.transpose();
    }
    if (mirrored) part.moveLeft(size.width() - part.left() - part.width());
    return part;
}

} // namespace tarn
