// A frame as it would stand in the grid of another.
#pragma once

#include "sky/stack/FrameSamples.h"
#include "sky/stars/FrameMap.h"

#include <vector>

namespace tarn {

// Lanczos (three samples to each side) keeps the width of stars and nearly all of the noise's
// grain, and is what sums and differences take. Bilinear takes a third of the time and softens:
// for what is only looked at.
enum class WarpKernel { Lanczos, Bilinear };

// Of the reference's grid.
struct GridPart {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    std::size_t Samples() const { return std::size_t(width) * std::size_t(height); }
};

// For one thread. Parts of some ten thousand samples are best: of each, what the frame has there
// is made into floats first.
class Warp {
public:
    // `map` leads from the frame to the grid. What the frame's samples are views of must last.
    Warp(const FrameSamples& frame, const FrameMap& map, WarpKernel kernel = WarpKernel::Lanczos);

    // Values of the frame: colour after colour, row after row; NaN where it has none.
    void Take(const GridPart& part, float* to);

private:
    struct Window { // of the frame; reaches beyond it, where its border is repeated
        int left = 0;
        int top = 0;
        int width = 0;
        int height = 0;
    };

    Window WindowOf(const GridPart& part) const;
    void Fill(const Window& window);
    void FillPlane(const Window& window, int plane, float* to) const;
    void FillMosaic(const Window& window);
    template <typename Sample>
    void Interpolate(const GridPart& part, const Window& window, const float* from, float* to,
                     const Sample& sample) const;

    const FrameSamples& m_frame;
    FrameMap m_back; // from the grid to the frame
    WarpKernel m_kernel;
    std::vector<float> m_window; // colour after colour
};

// The map that leads back.
FrameMap Inverse(const FrameMap& map);

} // namespace tarn
