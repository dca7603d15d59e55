// What of a series' grid stands on the screen.
#pragma once

#include "common/zoom.h"
#include "sky/stars/FrameMap.h"

namespace tarn {

// The grid that all frames are laid into: that of the reference.
struct GridSize {
    int width = 0; // samples
    int height = 0;
    int cell = 1;          // pixels of the file a side in one sample
    bool bottomUp = false; // the first row is shown as the bottom one

    bool operator==(const GridSize&) const = default;
    PixelSize Pixels() const { return {width * cell, height * cell}; }
};

// A part of the grid in pixels of the screen.
struct GridView {
    int width = 0;
    int height = 0;
    double left = 0; // samples: where the middle of its first pixel lies, as seen
    double top = 0;
    double step = 1;   // samples from one pixel to the next
    int mirrorAt = -1; // last row of the grid where that is shown as the first one

    bool operator==(const GridView&) const = default;
    bool IsEmpty() const { return width < 1 || height < 1; }
    FrameMap ToGrid() const {
        if (mirrorAt < 0) return {step, 0, left, 0, step, top};
        return {step, 0, left, 0, -step, mirrorAt - top};
    }
};

// `in` has the grid's pixels as its picture.
GridView ViewOf(const GridSize& grid, const ZoomView& zoom, const ZoomPane& in);

} // namespace tarn
