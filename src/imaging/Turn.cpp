#include "imaging/Turn.h"

#include <QTransform>

namespace tarn {

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
