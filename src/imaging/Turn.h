// A turn by right angles with or without a mirroring, kept as a value so that it can be done again
// later on other pixels of the same picture.
#pragma once

#include <QImage>
#include <QPointF>
#include <QRect>
#include <QSize>

namespace tarn {

struct Turn {
    bool mirrored = false; // left to right, before the turning
    int quarters = 0;      // 0 to 3, clockwise

    // From the picture as stored to the upright one, by the value of the camera data, 1 to 8;
    // others turn nothing.
    static Turn Upright(int orientation);

    Turn Inverse() const { return mirrored ? *this : Turn{false, (4 - quarters) % 4}; }

    // What comes after this turn.
    void Rotate(int quarterTurns);
    void Mirror(int axis); // 0 left to right, 1 top to bottom

    bool SwapsSides() const { return quarters % 2 != 0; }
    QSize Of(QSize size) const { return SwapsSides() ? size.transposed() : size; }
    QImage Of(const QImage& picture) const;
    QPointF Of(QPointF point, QSize picture) const; // from the corner of a picture of this size

    // Which part of a picture of this size becomes that part of the turned one.
    QRect Back(QRect part, QSize picture) const;
    bool IsNone() const { return !mirrored && quarters == 0; }
};

} // namespace tarn
