#include "slides/ShowZoom.h"

#include "imaging/PaneCut.h"

#include <algorithm>

namespace tarn {

ZoomPane ShowZoom::PaneOf(PixelSize picture) const {
    const SlideSize box = SlideBoxOf(m_layout, m_screen);
    const SlideSize fit = FitSlide(picture.width, picture.height, m_layout, m_screen);
    const double unzoomed =
        double(std::max(fit.width, fit.height)) / std::max({1, picture.width, picture.height});
    return {picture, {box.width, box.height}, unzoomed};
}

bool ShowZoom::Follow(const ViewWish& wish, const std::vector<PixelSize>& pictures) {
    if (pictures.empty()) return false;
    const bool seen = wish.atX >= 0;
    const int area = seen ? AreaAt(wish.atX, wish.atY, m_layout, m_screen) : 0;
    // An area may hold no picture.
    const PixelSize picture = pictures[std::min(std::size_t(area), pictures.size() - 1)];
    const ZoomPane pane = PaneOf(picture);
    const SlidePlace middle = PlaceSlide({0, 0}, area, m_layout, m_screen);
    const ZoomPoint at =
        seen ? ZoomPoint{double(wish.atX - middle.left), double(wish.atY - middle.top)}
             : ZoomPoint();
    const bool wasZoomed = IsZoomed();
    if (wish.fit) m_view.Unzoom();
    if (wish.fit) return wasZoomed;
    const bool zoomed = wish.steps != 0 && m_view.Zoom(wish.steps, at, pane);
    const bool pans = IsZoomed() && (wish.panX != 0 || wish.panY != 0);
    if (pans) m_view.Pan({wish.panX, wish.panY}, pane);
    return zoomed || pans;
}

QImage ShowZoom::Seen(const ImgX& whole, int brightness) const {
    const ZoomPane pane = PaneOf({whole.Width(), whole.Height()});
    return SeenOf(whole, m_view.Times(), m_view.Part(pane), brightness);
}

} // namespace tarn
