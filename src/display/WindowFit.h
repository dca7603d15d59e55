// Arithmetic of the size window and the 1:1 window. All sizes in device pixels.
#pragma once

#include "common/fit.h"

#include <optional>
#include <string>

namespace tarn {

// The long side becomes `target`, the other follows by the proportions.
PixelSize LongSideTo(PixelSize picture, int target);

// How a picture is reduced to the size window; a smaller one stays as it is. When the width is what
// limits, the long side becomes as long as the window is wide, also of a portrait picture.
PixelSize FitSizeWindow(PixelSize picture, PixelSize window);

// The window's width against the picture's, "156%"; empty without a picture.
std::string PercentText(int windowWidth, int imageWidth);

// "night.jpg  (1000x800)  156%  3 of 12".
std::string SizeCaption(const std::string& name, PixelSize window, const std::string& percent,
                        const std::string& numOf);

struct PixelRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PixelRect&) const = default;
};

// What of the picture is seen of it at `zoom` times its fit, with the point (x, y), in parts of its
// sides, in the middle as far as its edges allow, and how large that part is drawn.
struct ZoomedPart {
    PixelRect part;
    PixelSize drawn;
};
ZoomedPart ZoomPart(PixelSize picture, PixelSize fit, PixelSize window, double zoom, double x,
                    double y);

// The reduced copy in the navigator, which is made for `navigator`; a smaller picture stays.
PixelSize FitNavigator(PixelSize picture, PixelSize navigator);

struct ViewPlace {
    int left = 0;
    int top = 0;
    bool operator==(const ViewPlace&) const = default;
};

// Where the viewport's cut begins in the picture for a point of the navigator's copy. None when the
// picture is smaller than the viewport in a direction.
std::optional<ViewPlace> PlaceOfView(float x, float y, PixelSize picture, PixelSize copy,
                                     PixelSize view);

// A navigator point that the view can reach: nearer to an edge it would show the same.
struct NavPoint {
    float x = 0;
    float y = 0;
    bool operator==(const NavPoint&) const = default;
};
NavPoint WithinReach(NavPoint point, PixelSize picture, PixelSize copy, PixelSize view);

} // namespace tarn
