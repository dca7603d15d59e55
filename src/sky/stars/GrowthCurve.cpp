#include "sky/stars/GrowthCurve.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr std::size_t kFewRing = 24; // samples of the sky that say less than the mesh
constexpr double kHalfDiagonal = 0.7072;

// Area of the part of the disc around the origin with 0 <= x <= `x` and 0 <= y <= `y`.
double QuarterArea(double x, double y, double radius) {
    const auto corner = [&](double a, double b) {
        a = std::min(a, radius);
        b = std::min(b, radius);
        const double square = radius * radius;
        if (a * a + b * b <= square) return a * b;
        // Below the arc: a rectangle up to where it leaves the height b, then the arc itself.
        const double from = std::sqrt(std::max(0.0, square - b * b));
        const auto arc = [&](double at) {
            return (at * std::sqrt(std::max(0.0, square - at * at)) +
                    square * std::asin(std::min(1.0, at / radius))) /
                   2;
        };
        return from * b + arc(a) - arc(from);
    };
    const double area = corner(std::abs(x), std::abs(y));
    return (x < 0) == (y < 0) ? area : -area;
}

} // namespace

double PartInDisc(double x, double y, double radius) {
    if (radius <= 0) return 0;
    const double distance = std::hypot(x, y);
    if (distance + kHalfDiagonal <= radius) return 1;
    if (distance - kHalfDiagonal >= radius) return 0;
    return QuarterArea(x + 0.5, y + 0.5, radius) - QuarterArea(x - 0.5, y + 0.5, radius) -
           QuarterArea(x + 0.5, y - 0.5, radius) + QuarterArea(x - 0.5, y - 0.5, radius);
}

GrowthCurve::GrowthCurve(const ValuePlane& plane, double x, double y, double reach, double skyReach,
                         double level) {
    const int half = int(std::ceil(reach)) + 2; // one more for what sharpens
    const int outer = std::max(half, int(std::ceil(skyReach)));
    const int middleX = int(std::lround(x));
    const int middleY = int(std::lround(y));
    m_left = middleX - half;
    m_top = middleY - half;
    m_side = 2 * half + 1;
    m_x = x - m_left;
    m_y = y - m_top;
    m_values.assign(std::size_t(m_side) * std::size_t(m_side), 0);
    std::vector<double> ring;
    for (int row = middleY - outer; row <= middleY + outer; ++row)
        for (int column = middleX - outer; column <= middleX + outer; ++column) {
            const double distance = std::hypot(column - x, row - y);
            if (distance > skyReach && distance > reach + 2) continue;
            const double value = plane.AtOrNone(column, row);
            const bool inside =
                std::abs(row - middleY) <= half && std::abs(column - middleX) <= half;
            if (inside)
                m_values[std::size_t(row - m_top) * std::size_t(m_side) +
                         std::size_t(column - m_left)] = value;
            if (std::isfinite(value)) {
                if (distance > reach && distance <= skyReach) ring.push_back(value);
            } else if (distance <= reach + 1) {
                m_whole = false;
            }
        }
    TakeLevel(ring, level);
    Sharpen();
}

void GrowthCurve::TakeLevel(std::vector<double>& ring, double level) {
    m_level = level;
    if (ring.size() < kFewRing) return;
    const double median = MedianInPlace(std::span(ring));
    const double deviation = DeviationOf(ring);
    std::erase_if(ring, [&](double value) { return std::abs(value - median) > 3 * deviation; });
    m_level = MedianInPlace(std::span(ring));
}

// Squares of one value are a little wider than what the values are samples of, by a twelfth in the
// variance along each direction; this is less of as much.
void GrowthCurve::Sharpen() {
    for (double& value : m_values) value = std::isfinite(value) ? value - m_level : 0;
    const std::vector<double> before = m_values;
    for (int y = 1; y + 1 < m_side; ++y)
        for (int x = 1; x + 1 < m_side; ++x) {
            const auto at = std::size_t(y) * std::size_t(m_side) + std::size_t(x);
            const double around = before[at - 1] + before[at + 1] +
                                  before[at - std::size_t(m_side)] +
                                  before[at + std::size_t(m_side)];
            m_values[at] = before[at] - (around - 4 * before[at]) / 24;
        }
}

double GrowthCurve::Flux(double radius) const {
    double flux = 0;
    const int top = std::max(1, int(std::floor(m_y - radius)));
    const int bottom = std::min(m_side - 2, int(std::ceil(m_y + radius)));
    const int left = std::max(1, int(std::floor(m_x - radius)));
    const int right = std::min(m_side - 2, int(std::ceil(m_x + radius)));
    const double surely = std::max(0.0, radius - kHalfDiagonal);
    const double never = radius + kHalfDiagonal;
    for (int y = top; y <= bottom; ++y)
        for (int x = left; x <= right; ++x) {
            const double dx = x - m_x;
            const double dy = y - m_y;
            const double square = dx * dx + dy * dy;
            if (square >= never * never) continue;
            const double value = m_values[std::size_t(y) * std::size_t(m_side) + std::size_t(x)];
            flux += square <= surely * surely ? value : value * PartInDisc(dx, dy, radius);
        }
    return flux;
}

double GrowthCurve::HalfFluxRadius(double total) const {
    const double half = Flux(total) / 2;
    if (!(half > 0)) return std::numeric_limits<double>::quiet_NaN();
    double low = 0;
    double high = total;
    double atLow = 0;
    double atHigh = 2 * half;
    // Between the two as a straight line would say, or in their middle.
    for (int round = 0; round < 40 && high - low > 1e-4 * high; ++round) {
        double between = low + (high - low) * (half - atLow) / (atHigh - atLow);
        if (round % 2 == 1 || !(between > low && between < high)) between = (low + high) / 2;
        const double flux = Flux(between);
        (flux < half ? low : high) = between;
        (flux < half ? atLow : atHigh) = flux;
    }
    return (low + high) / 2;
}

} // namespace tarn
