// How a picture is seen larger than it fits: at how many pixels of the screen for each of its own,
// and which place of it is in the middle. The place is kept in parts of the picture's sides, so
// that it stays from one picture to the next, whatever their sizes. Lengths are device pixels.
#pragma once

#include "common/fit.h"

namespace tarn {

struct ZoomPoint {
    double x = 0;
    double y = 0;
};

// Where a picture is seen.
struct ZoomPane {
    PixelSize picture; // as turned
    PixelSize pane;
    double unzoomed = 1; // pixels of the screen for one of the picture while it is not zoomed
};

// What is seen, counted in pixels of the enlarged picture.
struct SeenPart {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const SeenPart&) const = default;
};

class ZoomView {
public:
    // Pixels of the screen for one of the picture, 1, 2, 4 or 8; 0 while it is not zoomed.
    int Times() const { return m_times; }
    bool IsZoomed() const { return m_times > 0; }
    double Scale(const ZoomPane& in) const { return IsZoomed() ? m_times : in.unzoomed; }

    // So many steps closer, below 0 away; the last one away leaves the picture unzoomed. What lies
    // at this way from the pane's middle stays there, as far as the picture's edges allow. False
    // when there is no such step.
    bool Zoom(int steps, ZoomPoint at, const ZoomPane& in);
    void Unzoom() { m_times = 0; }

    // The picture goes this way, as far as its edges allow.
    void Pan(ZoomPoint way, const ZoomPane& in);

    SeenPart Part(const ZoomPane& in) const;

    // Whether a part of the zoomed picture lies outside the pane.
    bool Exceeds(const ZoomPane& in) const;

    // The picture that stands is turned, clockwise, or mirrored, by 0 left to right, by 1 top to
    // bottom: what is in the middle stays there. The next picture comes without that.
    void Rotate(int quarterTurns);
    void Mirror(int axis);
    void NextPicture();

private:
    ZoomPoint Middle(const ZoomPane& in) const;
    void SetMiddle(ZoomPoint middle, const ZoomPane& in);

    int m_times = 0;
    ZoomPoint m_middle{0.5, 0.5}; // 0 to 1, of the picture as it came
    bool m_mirrored = false;      // since then, left to right, before the turning
    int m_quarters = 0;           // 0 to 3, clockwise
};

} // namespace tarn
