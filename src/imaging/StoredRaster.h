// Places of a file's pixels where the picture is shown.
#pragma once

#include "imaging/Turn.h"

#include <QPointF>
#include <QSize>

namespace tarn {

struct StoredRaster {
    int width = 0; // pixels of the file
    int height = 0;
    bool bottomUp = false; // the first stored row is the bottom one

    // Of a point of the file, (0, 0) the centre of its first pixel, from the corner of the picture
    // that this turn has brought to the size `turned`. A picture with a margin less or more has the
    // same middle.
    QPointF Seen(double x, double y, const Turn& turn, QSize turned) const {
        const QSize whole = turn.Of(turned); // back: its sides are exchanged again
        const double row = bottomUp ? height - 1 - y : y;
        return turn.Of(QPointF(x + 0.5 + (whole.width() - width) / 2.0,
                               row + 0.5 + (whole.height() - height) / 2.0),
                       whole);
    }
};

} // namespace tarn
