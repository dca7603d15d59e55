// How the sky and the light of one frame become those of another.
#pragma once

#include "sky/stack/FrameSamples.h"
#include "sky/stars/FrameMap.h"
#include "sky/stars/FrameMeasures.h"

#include <array>
#include <span>
#include <vector>

namespace tarn {

// The sky of one colour from place to place: medians of a few hundred samples for each cell of a
// coarse grid; NaN where a cell has no data.
struct SkyGrid {
    static constexpr int kColumns = 16;
    static constexpr int kRows = 12;

    int width = 0; // of the frame, samples
    int height = 0;
    std::vector<float> levels; // row after row
    double level = 0;          // the middle of all
    double noise =
        0; // standard deviation of a sample, that of its rounding included, without stars

    // Between the cells' middles in straight lines, beyond the outermost as there.
    double At(double x, double y) const;
    double MiddleX(int column) const { return (column + 0.5) * width / kColumns - 0.5; }
    double MiddleY(int row) const { return (row + 0.5) * height / kRows - 0.5; }
};

SkyGrid SkyOf(const FrameSamples& frame, int colour);

// What is added to a frame's values, which `light` has multiplied, at a place of the reference's
// grid: a surface of second order, so that vignettes and moonlit slopes are levelled and nebulae,
// which both frames have, are not.
struct LevelSurface {
    std::array<double, 6> of{}; // 1, x, y, x^2, x y, y^2
    double width = 1;           // of the grid: places are taken from -1 to 1
    double height = 1;

    double At(double x, double y) const;
    void AddRow(int y, int left, int count, float light, float* values) const;
};
LevelSurface SurfaceBetween(const SkyGrid& frame, double light, const FrameMap& map,
                            const SkyGrid& reference);

// What the frame's values are multiplied by to have the reference's light, by the stars that both
// have; kNotMeasured where there are fewer than 5.
double LightTo(std::span<const StarPlace> reference, std::span<const StarPlace> frame,
               const FrameMap& map);

} // namespace tarn
