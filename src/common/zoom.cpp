#include "common/zoom.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr int kFullSize = 1;
constexpr int kMost = 8;

// The next of 1, 2, 4, 8 above the scale; the largest where there is none.
int Closer(double scale) {
    int times = kFullSize;
    while (times <= scale && times < kMost) times *= 2;
    return times;
}

// The next below the scale, 0 where the unzoomed picture comes first.
int Farther(double scale, double unzoomed) {
    int times = kMost;
    while (times >= scale && times > kFullSize) times /= 2;
    return times < scale && times > unzoomed ? times : 0;
}

double Within(double middle, int side, int pane) {
    const double half = std::min(0.5, pane / (2.0 * std::max(1, side)));
    return std::clamp(middle, half, 1 - half);
}

// Where in the enlarged side the pane begins.
int Begin(double middle, int side, int seen) {
    return std::clamp(int(std::lround(middle * side - seen / 2.0)), 0, side - seen);
}

ZoomPoint Rotated(ZoomPoint point, int quarters) {
    for (int i = 0; i < quarters; ++i) point = {1 - point.y, point.x};
    return point;
}

} // namespace

bool ZoomView::Zoom(int steps, ZoomPoint at, const ZoomPane& in) {
    int times = m_times;
    for (int i = 0; i < std::abs(steps); ++i) {
        const double scale = times > 0 ? times : in.unzoomed;
        times = steps > 0 ? Closer(scale) : Farther(scale, in.unzoomed);
    }
    if (times == m_times) return false;
    const double before = Scale(in);
    const ZoomPoint middle = IsZoomed() ? Middle(in) : ZoomPoint{0.5, 0.5};
    m_times = times;
    if (!IsZoomed()) return true;
    const double way = 1 / before - 1.0 / m_times;
    SetMiddle({middle.x + at.x * way / std::max(1, in.picture.width),
               middle.y + at.y * way / std::max(1, in.picture.height)},
              in);
    return true;
}

void ZoomView::Pan(ZoomPoint way, const ZoomPane& in) {
    if (!IsZoomed()) return;
    const ZoomPoint middle = Middle(in);
    SetMiddle({middle.x - way.x / std::max(1, in.picture.width * m_times),
               middle.y - way.y / std::max(1, in.picture.height * m_times)},
              in);
}

SeenPart ZoomView::Part(const ZoomPane& in) const {
    const int width = in.picture.width * m_times;
    const int height = in.picture.height * m_times;
    const int seenWidth = std::min(width, in.pane.width);
    const int seenHeight = std::min(height, in.pane.height);
    const ZoomPoint middle = Middle(in);
    return {Begin(middle.x, width, seenWidth), Begin(middle.y, height, seenHeight), seenWidth,
            seenHeight};
}

bool ZoomView::Exceeds(const ZoomPane& in) const {
    return in.picture.width * m_times > in.pane.width ||
           in.picture.height * m_times > in.pane.height;
}

// As seen. A smaller picture in between moves the place that is remembered nowhere.
ZoomPoint ZoomView::Middle(const ZoomPane& in) const {
    ZoomPoint seen = m_middle;
    if (m_mirrored) seen.x = 1 - seen.x;
    seen = Rotated(seen, m_quarters);
    return {Within(seen.x, in.picture.width * m_times, in.pane.width),
            Within(seen.y, in.picture.height * m_times, in.pane.height)};
}

void ZoomView::SetMiddle(ZoomPoint middle, const ZoomPane& in) {
    const ZoomPoint seen{Within(middle.x, in.picture.width * m_times, in.pane.width),
                         Within(middle.y, in.picture.height * m_times, in.pane.height)};
    m_middle = Rotated(seen, 4 - m_quarters);
    if (m_mirrored) m_middle.x = 1 - m_middle.x;
}

void ZoomView::Rotate(int quarterTurns) {
    m_quarters = (m_quarters + quarterTurns % 4 + 4) % 4;
}

// A mirroring after a turn to the right is the same as a turn to the left after it.
void ZoomView::Mirror(int axis) {
    m_mirrored = !m_mirrored;
    m_quarters = axis == 0 ? (4 - m_quarters) % 4 : (6 - m_quarters) % 4;
}

void ZoomView::NextPicture() {
    m_mirrored = false;
    m_quarters = 0;
}

} // namespace tarn
