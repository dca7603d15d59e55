// Rings of a file where its picture is seen.
#pragma once

#include "desk/commands/Commands.h"
#include "widgets/PictureBox.h"

#include <vector>

namespace tarn {

// How a part of a picture is seen: turned, enlarged, and from where on.
struct SeenPlace {
    Turn turn;
    QSize turned; // pixels of the whole picture
    double scale = 1;
    QPointF begin; // of what is seen, in pixels of the enlarged picture
};

// Those that `seen` pixels show something of.
std::vector<SeenRing> RingsIn(const PictureRings& rings, const SeenPlace& place, QSize seen);

} // namespace tarn
