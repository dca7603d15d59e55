// How the pictures of a show are seen: each whole in its area, or all of them at one scale, round
// the same place of each.
#pragma once

#include "common/zoom.h"
#include "imaging/ImgX.h"
#include "slides/ShowSignals.h"
#include "slides/SlideArithmetic.h"

#include <vector>

namespace tarn {

class ShowZoom {
public:
    ShowZoom(SlideLayout layout, const SlideScreen& screen) : m_layout(layout), m_screen(screen) {}

    bool IsZoomed() const { return m_view.IsZoomed(); }

    // Sizes of the pictures that stand, as turned, area by area: the one under the pointer says how
    // far a way goes. False when the wish changes nothing.
    bool Follow(const ViewWish& wish, const std::vector<PixelSize>& pictures);

    // What is seen of a zoomed picture in its area, brightened. All its pixels are to be at hand.
    QImage Seen(const ImgX& whole, int brightness) const;

    // Turns of the picture that stands, and the next one, which comes without them.
    ZoomView& View() { return m_view; }

private:
    ZoomPane PaneOf(PixelSize picture) const;

    SlideLayout m_layout;
    SlideScreen m_screen;
    ZoomView m_view;
};

} // namespace tarn
