#include "slides/SlideArithmetic.h"

#include "common/numbers.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr double kEdge = 8;   // what is left away of the screen
constexpr double kGap = 10;   // between two areas
constexpr double kStrip = 20; // for the title

int Rounded(double value) {
    return static_cast<int>(RoundHalfEven(value));
}

struct Area {
    double width;
    double height;
};

Area AreaOf(SlideLayout layout, const SlideScreen& screen) {
    const double gap = kGap * screen.unit;
    switch (layout) {
    case SlideLayout::TwoHorizontal:
        return {screen.width / 2 - gap, screen.height - gap};
    case SlideLayout::TwoVertical:
        return {screen.width - gap, screen.height / 2 - gap};
    case SlideLayout::Four:
        return {double(Rounded(screen.width / 2)), double(Rounded(screen.height / 2))};
    case SlideLayout::One:
        break;
    }
    return {screen.width, screen.height};
}

bool IsRight(int area, SlideLayout layout) {
    return layout != SlideLayout::TwoVertical && area % 2 == 1;
}

bool IsLower(int area, SlideLayout layout) {
    return layout == SlideLayout::TwoVertical ? area == 1 : area >= 2;
}

} // namespace

SlideScreen SlideScreenOf(double screenWidth, double screenHeight, double unit) {
    return {screenWidth - kEdge * unit, screenHeight - kEdge * unit, unit};
}

int AreasOf(SlideLayout layout) {
    switch (layout) {
    case SlideLayout::One:
        return 1;
    case SlideLayout::Four:
        return 4;
    default:
        return 2;
    }
}

SlideSize SlideBoxOf(SlideLayout layout, const SlideScreen& screen) {
    const Area area = AreaOf(layout, screen);
    return {std::max(1, int(area.width)), std::max(1, int(area.height - kStrip * screen.unit))};
}

SlideSize FitSlide(int width, int height, SlideLayout layout, const SlideScreen& screen) {
    const Area area = AreaOf(layout, screen);
    const double room = area.height - kStrip * screen.unit;
    if (width <= 0 || height <= 0 || (height <= room && width <= area.width))
        return {width, height};
    const double aspect = double(height) / width;
    const double byHeight = room / height;
    const double byWidth = area.width / width;
    double longSide = room / aspect;
    if (byWidth <= byHeight)
        longSide = area.width;
    else if (aspect >= 1)
        longSide = room;
    const int side = std::max(1, Rounded(longSide));
    if (width >= height) return {side, std::max(1, Rounded(side * aspect))};
    return {std::max(1, Rounded(side / aspect)), side};
}

SlidePlace PlaceSlide(SlideSize picture, int area, SlideLayout layout, const SlideScreen& screen) {
    const Area size = AreaOf(layout, screen);
    const double unit = screen.unit;
    double left = (size.width - picture.width) / 2 + kEdge / 2 * unit;
    double top = (size.height - picture.height) / 2 - kStrip / 2 * unit + kEdge / 2 * unit;
    if (IsRight(area, layout)) left += size.width + (kEdge + kGap) * unit;
    if (IsLower(area, layout)) top += size.height + kGap * unit;
    // The lower one of two stands half an edge deeper than the lower ones of four.
    if (IsLower(area, layout) && layout == SlideLayout::TwoVertical) top += kEdge / 2 * unit;
    return {Rounded(left), Rounded(top)};
}

int AreaAt(int x, int y, SlideLayout layout, const SlideScreen& screen) {
    const bool right = 2 * x > screen.width + kEdge * screen.unit;
    const bool lower = 2 * y > screen.height + kEdge * screen.unit;
    switch (layout) {
    case SlideLayout::TwoHorizontal:
        return right ? 1 : 0;
    case SlideLayout::TwoVertical:
        return lower ? 1 : 0;
    case SlideLayout::Four:
        return (lower ? 2 : 0) + (right ? 1 : 0);
    case SlideLayout::One:
        break;
    }
    return 0;
}

SlideStrip TitleStrip(int pictureHeight, int area, SlideLayout layout, const SlideScreen& screen) {
    const double unit = screen.unit;
    if (layout == SlideLayout::One)
        return {0, Rounded(screen.height - (kStrip - kEdge) * unit), Rounded(screen.width)};
    const Area size = AreaOf(layout, screen);
    double top = size.height - (size.height - pictureHeight) / 2;
    if (IsLower(area, layout)) top += size.height + kGap * unit;
    const double left = IsRight(area, layout) ? size.width + kGap * unit : 0;
    return {Rounded(left), Rounded(top), Rounded(size.width + kEdge * unit)};
}

} // namespace tarn
