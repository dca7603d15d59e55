#include "display/WindowFit.h"

#include "common/numbers.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

bool IsEmpty(PixelSize size) {
    return size.width <= 0 || size.height <= 0;
}

// A side goes through its text on the way to a whole number: digits that a single does not show do
// not count.
int WholeSide(float side) {
    const auto shown = ParseNumber(ShortestSingle(side));
    return std::max(1, int(RoundHalfEven(shown.value_or(side))));
}

int Follow(int target, int side, int longSide) {
    return std::max(1, int(std::lround(double(target) * side / longSide)));
}

// The part's begin, so that the point is in its middle, inside the whole.
int Begin(double point, int part, int whole) {
    return std::clamp(int(std::lround(point * whole - part / 2.0)), 0, whole - part);
}

float ViewBegin(float point, int picture, int copy, int view) {
    float begin = point * (float(picture) / float(copy)) - float(view) / 2;
    if (begin < 0) begin = 0;
    if (float(picture) - begin < float(view)) begin = float(picture - view);
    return begin;
}

float Reach(float point, int picture, int copy, int view) {
    const float scale = float(copy) / float(picture);
    const float nearest = float(view) / 2 * scale;
    const float farthest = (float(picture) - float(view) / 2) * scale;
    return farthest < nearest ? point : std::clamp(point, nearest, farthest);
}

} // namespace

PixelSize LongSideTo(PixelSize picture, int target) {
    if (IsEmpty(picture)) return picture;
    if (picture.width >= picture.height)
        return {target, Follow(target, picture.height, picture.width)};
    return {Follow(target, picture.width, picture.height), target};
}

PixelSize FitSizeWindow(PixelSize picture, PixelSize window) {
    const bool fits = picture.width <= window.width && picture.height <= window.height;
    if (fits || IsEmpty(picture) || IsEmpty(window)) return picture;
    const float aspect = float(picture.height) / float(picture.width);
    const float rw = float(window.width) / float(picture.width);
    const float rh = float(window.height) / float(picture.height);
    if (rw <= rh) return LongSideTo(picture, window.width);
    if (aspect >= 1) return LongSideTo(picture, window.height);
    return LongSideTo(picture, WholeSide(float(window.height) / aspect));
}

std::string PercentText(int windowWidth, int imageWidth) {
    if (imageWidth <= 0) return {};
    return FormatFixed(double(windowWidth) / imageWidth * 100, 0) + "%";
}

std::string SizeCaption(const std::string& name, PixelSize window, const std::string& percent,
                        const std::string& numOf) {
    return name + "  (" + std::to_string(window.width) + "x" + std::to_string(window.height) +
           ")  " + percent + "  " + numOf;
}

ZoomedPart ZoomPart(PixelSize picture, PixelSize fit, PixelSize window, double zoom, double x,
                    double y) {
    const auto drawn = [zoom](int fitted, int side) {
        return std::clamp(int(std::lround(fitted * zoom)), 1, std::max(1, side));
    };
    const PixelSize seen{drawn(fit.width, window.width), drawn(fit.height, window.height)};
    const auto part = [zoom](int side, int fitted, int shown) {
        return std::clamp(int(std::lround(shown / (fitted * zoom) * side)), 1, side);
    };
    const int width = part(picture.width, fit.width, seen.width);
    const int height = part(picture.height, fit.height, seen.height);
    return {{Begin(x, width, picture.width), Begin(y, height, picture.height), width, height},
            seen};
}

PixelSize FitNavigator(PixelSize picture, PixelSize navigator) {
    if (picture.width < navigator.width && picture.height < navigator.height) return picture;
    const int target = picture.height <= picture.width ? navigator.height : navigator.width;
    return LongSideTo(picture, std::min(target, std::max(picture.width, picture.height)));
}

std::optional<ViewPlace> PlaceOfView(float x, float y, PixelSize picture, PixelSize copy,
                                     PixelSize view) {
    if (IsEmpty(picture) || IsEmpty(copy) || IsEmpty(view)) return std::nullopt;
    const float left = ViewBegin(x, picture.width, copy.width, view.width);
    const float top = ViewBegin(y, picture.height, copy.height, view.height);
    if (left < 0 || top < 0) return std::nullopt;
    return ViewPlace{int(RoundHalfEven(left)), int(RoundHalfEven(top))};
}

NavPoint WithinReach(NavPoint point, PixelSize picture, PixelSize copy, PixelSize view) {
    if (IsEmpty(picture)) return point;
    return {Reach(point.x, picture.width, copy.width, view.width),
            Reach(point.y, picture.height, copy.height, view.height)};
}

} // namespace tarn
