// A frame as it is seen on the screen: laid into the grid, levelled, at the size of the view.
#pragma once

#include "blink/GridView.h"
#include "sky/stack/Codes.h"
#include "sky/stack/Levels.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tarn {

struct SeenFrame {
    GridView view;
    int planes = 1;
    std::vector<std::int16_t> codes; // plane after plane, row after row

    std::size_t PerPlane() const { return std::size_t(view.width) * std::size_t(view.height); }
};

// How one plane's values become codes of the reference.
struct PlaneLevels {
    double light = 1;
    LevelSurface surface;
    SampleCodes codes;
};

// `map` leads from the frame's samples to the grid's; planes as many as levels, no mosaic. What is
// seen smaller than it is becomes means of squares first, so that stars keep their light; then each
// pixel is taken from the sixteen squares around its place.
SeenFrame SeeFrame(const FrameSamples& samples, const FrameMap& map,
                   std::span<const PlaneLevels> levels, const GridView& view);

// The median of frames of one view, place by place.
SeenFrame MedianOfFrames(std::span<const SeenFrame* const> frames);

} // namespace tarn
