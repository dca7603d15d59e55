#include "blink/GridView.h"

#include <algorithm>
#include <cmath>

namespace tarn {

GridView ViewOf(const GridSize& grid, const ZoomView& zoom, const ZoomPane& in) {
    if (in.picture.width < 1 || in.picture.height < 1 || in.pane.width < 1 || in.pane.height < 1)
        return {};
    const double scale = zoom.Scale(in);
    SeenPart part;
    if (zoom.IsZoomed()) {
        part = zoom.Part(in);
    } else {
        part.width = std::clamp(int(std::lround(in.picture.width * scale)), 1, in.pane.width);
        part.height = std::clamp(int(std::lround(in.picture.height * scale)), 1, in.pane.height);
    }
    // From the middle of a pixel of the screen to one of the picture, then of its samples.
    const auto first = [&](int begin) {
        const double pixel = (begin + 0.5) / scale - 0.5;
        return (pixel - 0.5 * (grid.cell - 1)) / grid.cell;
    };
    GridView view{part.width, part.height, first(part.left), first(part.top)};
    view.step = 1 / (scale * grid.cell);
    if (grid.bottomUp) view.mirrorAt = grid.height - 1;
    return view;
}

} // namespace tarn
