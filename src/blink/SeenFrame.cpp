#include "blink/SeenFrame.h"

#include "sky/stack/Warp.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include <Eigen/Core>

namespace tarn {

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
constexpr double kHalf = 0.5;
constexpr int kMargin = 3;   // squares around what is seen
constexpr int kBorder = 4;   // squares beyond the frame's, as its outermost
constexpr int kTaps = 4;     // squares along each side that a pixel is made of
constexpr int kPhases = 256; // between two squares

using Four = Eigen::Array<float, kTaps, 1>;
using FourThere = Eigen::Map<const Four>;
using Weights = std::array<std::array<float, kTaps>, kPhases>;

// Smooth: a spline of third order. What is seen a little smaller than its squares would else
// tremble by a tenth of a pixel, as the screen's pixels fall between them. Sharp: through the
// values.
Weights WeightsOf(bool smooth) {
    Weights all{};
    for (int phase = 0; phase < kPhases; ++phase) {
        const double t = double(phase) / kPhases;
        const double u = 1 - t;
        const std::array<double, kTaps> exact =
            smooth ? std::array<double, kTaps>{u * u * u / 6, (4 - 6 * t * t + 3 * t * t * t) / 6,
                                               (4 - 6 * u * u + 3 * u * u * u) / 6, t * t * t / 6}
                   : std::array<double, kTaps>{-t * u * u / 2, (2 - 5 * t * t + 3 * t * t * t) / 2,
                                               (2 - 5 * u * u + 3 * u * u * u) / 2, -u * t * t / 2};
        for (std::size_t tap = 0; tap < exact.size(); ++tap)
            all[std::size_t(phase)][tap] = float(exact[tap]);
    }
    return all;
}

// Second after first.
FrameMap Joined(const FrameMap& first, const FrameMap& second) {
    FrameMap both{
        second.a * first.a + second.b * first.d, second.a * first.b + second.b * first.e, 0,
        second.d * first.a + second.e * first.d, second.d * first.b + second.e * first.e, 0};
    std::tie(both.c, both.f) = second(first.c, first.f);
    return both;
}

// Squares of samples, counted in squares of the frame, with a border around them.
struct Squares {
    int side = 1; // samples
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<float> means;

    int PerRow() const { return width + 2 * kBorder; }
    float* Row(int row) {
        return means.data() + std::ptrdiff_t(row + kBorder) * PerRow() + kBorder;
    }
    const float* Row(int row) const {
        return means.data() + std::ptrdiff_t(row + kBorder) * PerRow() + kBorder;
    }
};

// Those that the view's corners span.
Squares SquaresFor(const FrameSamples& samples, const FrameMap& toFrame, const GridView& view) {
    Squares squares;
    squares.side = std::max(1, int(std::sqrt(std::abs(toFrame.Area())) + 1e-6));
    const int columns = samples.width / squares.side;
    const int rows = samples.height / squares.side;
    double left = columns;
    double right = -1;
    double top = rows;
    double bottom = -1;
    for (const int u : {0, view.width - 1})
        for (const int v : {0, view.height - 1}) {
            const auto [x, y] = toFrame(u, v);
            left = std::min(left, x / squares.side);
            right = std::max(right, x / squares.side);
            top = std::min(top, y / squares.side);
            bottom = std::max(bottom, y / squares.side);
        }
    const auto within = [](double place, int count) {
        return int(std::clamp(place, 0.0, double(count)));
    };
    squares.left = within(std::floor(left) - kMargin, columns);
    squares.top = within(std::floor(top) - kMargin, rows);
    squares.width = within(std::ceil(right) + kMargin, columns) - squares.left;
    squares.height = within(std::ceil(bottom) + kMargin, rows) - squares.top;
    return squares;
}

// Sums of words are whole numbers, which go in fewer steps.
template <typename Sample, typename Sum>
void FillMeans(const Sample* plane, int perRow, float zero, float scale, Squares& squares) {
    const auto side = std::size_t(squares.side);
    const std::size_t wide = std::size_t(squares.width) * side;
    const float part = scale / float(side * side);
    squares.means.resize(std::size_t(squares.PerRow()) * std::size_t(squares.height + 2 * kBorder));
    std::vector<Sum> columns(wide);
    Sum* const sums = columns.data(); // unchecked, or they would be taken one by one
    for (int row = 0; row < squares.height; ++row) {
        float* to = squares.Row(row);
        std::fill(sums, sums + wide, Sum(0));
        for (std::size_t line = 0; line < side; ++line) {
            const Sample* from =
                plane + (std::size_t(squares.top + row) * side + line) * std::size_t(perRow) +
                std::size_t(squares.left) * side;
            for (std::size_t x = 0; x < wide; ++x) sums[x] += from[x];
        }
        const Sum* sum = sums;
        for (int column = 0; column < squares.width; ++column, sum += side) {
            Sum all = sum[0];
            for (std::size_t x = 1; x < side; ++x) all += sum[x];
            to[column] = zero + part * float(all);
        }
    }
}

void RepeatBorder(Squares& squares) {
    for (int row = 0; row < squares.height; ++row) {
        float* const at = squares.Row(row);
        std::fill(at - kBorder, at, at[0]);
        std::fill(at + squares.width, at + squares.width + kBorder, at[squares.width - 1]);
    }
    for (int i = 1; i <= kBorder; ++i) {
        std::copy_n(squares.Row(0) - kBorder, squares.PerRow(), squares.Row(-i) - kBorder);
        std::copy_n(squares.Row(squares.height - 1) - kBorder, squares.PerRow(),
                    squares.Row(squares.height - 1 + i) - kBorder);
    }
}

void Fill(const FrameSamples& samples, int plane, Squares& squares) {
    if (squares.width < 1 || squares.height < 1) return;
    const std::size_t begin =
        std::size_t(plane) * std::size_t(samples.width) * std::size_t(samples.height);
    if (samples.floats)
        FillMeans<float, float>(samples.floats + begin, samples.width, 0, 1, squares);
    else
        FillMeans<std::uint16_t, std::uint32_t>(samples.words + begin, samples.width,
                                                float(samples.zero), float(samples.scale), squares);
    RepeatBorder(squares);
}

// The pixels of a row, from the first to the one behind the last, for which start + step * pixel
// lies between two places.
void Narrow(double start, double step, double least, double most, int& first, int& end) {
    if (std::abs(step) < 1e-12) {
        if (start < least || start > most) end = first;
        return;
    }
    const double one = (least - start) / step;
    const double other = (most - start) / step;
    first = std::max(first, int(std::ceil(std::clamp(std::min(one, other), -1e6, 1e6))));
    end = std::min(end, int(std::floor(std::clamp(std::max(one, other), -1e6, 1e6))) + 1);
}

// The surface along one row of the view, which is of second order there, too.
void AddSurface(const LevelSurface& surface, const FrameMap& toGrid, int row, float light,
                std::span<float> values) {
    const double last = std::max<double>(1, double(values.size()) - 1);
    const auto at = [&](double u) {
        const auto [x, y] = toGrid(u, row);
        return surface.At(x, y);
    };
    const double begin = at(0);
    const double middle = at(last / 2);
    const double end = at(last);
    const auto start = float(begin);
    const auto slope = float((4 * middle - 3 * begin - end) / last);
    const auto bend = float(2 * (begin - 2 * middle + end) / (last * last));
    float* const to = values.data();
    const int count = int(values.size());
    for (int i = 0; i < count; ++i) {
        const auto u = float(i);
        to[i] = to[i] * light + start + u * (slope + u * bend);
    }
}

// Values at places among the middles of squares; none outside of the frame.
class RowsOfView {
public:
    RowsOfView(const FrameSamples& samples, const FrameMap& toFrame, const Squares& squares)
        : m_squares(squares), m_toFrame(toFrame), m_width(samples.width), m_height(samples.height) {
        static const Weights kSmooth = WeightsOf(true);
        static const Weights kSharp = WeightsOf(false);
        constexpr double kAlike = 1.001;
        const double step = std::sqrt(std::abs(toFrame.Area())) / squares.side;
        m_weights = step > kAlike ? kSmooth.data() : kSharp.data();
    }

    void Take(int row, std::span<float> to) const {
        const Squares& s = m_squares;
        const auto [x, y] = m_toFrame(0, row);
        int first = 0;
        int end = int(to.size());
        Narrow(x, m_toFrame.a, -kHalf, m_width - kHalf, first, end);
        Narrow(y, m_toFrame.d, -kHalf, m_height - kHalf, first, end);
        if (s.width < 1 || s.height < 1 || first >= end) {
            std::fill(to.begin(), to.end(), kNone);
            return;
        }
        std::fill(to.begin(), to.begin() + first, kNone);
        std::fill(to.begin() + end, to.end(), kNone);
        const double middle = kHalf * (s.side - 1);
        const double startX = (x - middle) / s.side - s.left;
        const double startY = (y - middle) / s.side - s.top;
        const double stepX = m_toFrame.a / s.side;
        const double stepY = m_toFrame.d / s.side;
        // In whole numbers of 2^-32: the upper half is the square, then comes the phase.
        constexpr double kOne = 4294967296.0;
        constexpr int kWhole = 32;
        constexpr int kToPhase = 24;
        constexpr std::int64_t kHalfPhase = std::int64_t(1) << (kToPhase - 1);
        const auto fixed = [](double place) { return std::int64_t(place * kOne); };
        std::int64_t placeX = fixed(startX + stepX * first + kBorder - 1) + kHalfPhase;
        std::int64_t placeY = fixed(startY + stepY * first + kBorder - 1) + kHalfPhase;
        const std::int64_t alongX = fixed(stepX);
        const std::int64_t alongY = fixed(stepY);
        const std::ptrdiff_t perRow = s.PerRow();
        const float* const means = s.means.data();
        float* const pixels = to.data();
        for (int i = first; i < end; ++i, placeX += alongX, placeY += alongY) {
            const auto& along = m_weights[std::size_t(placeX >> kToPhase) % kPhases];
            const auto& across = m_weights[std::size_t(placeY >> kToPhase) % kPhases];
            const float* at = means + (placeY >> kWhole) * perRow + (placeX >> kWhole);
            Four sum = across[0] * FourThere(at);
            for (std::size_t tap = 1; tap < kTaps; ++tap)
                sum += across[tap] * FourThere(at += perRow);
            pixels[i] = (sum * FourThere(along.data())).sum();
        }
    }

private:
    const Squares& m_squares;
    const FrameMap& m_toFrame;
    int m_width;
    int m_height;
    const std::array<float, kTaps>* m_weights; // by the part of a square
};

} // namespace

SeenFrame SeeFrame(const FrameSamples& samples, const FrameMap& map,
                   std::span<const PlaneLevels> levels, const GridView& view) {
    SeenFrame seen;
    seen.view = view;
    seen.planes = int(levels.size());
    seen.codes.resize(seen.PerPlane() * levels.size());
    const FrameMap toGrid = view.ToGrid();
    const FrameMap toFrame = Joined(toGrid, Inverse(map));
    Squares squares = SquaresFor(samples, toFrame, view);
    std::vector<float> row(std::size_t(view.width));
    std::int16_t* to = seen.codes.data();
    for (std::size_t plane = 0; plane < levels.size(); ++plane) {
        const PlaneLevels& level = levels[plane];
        Fill(samples, int(plane), squares);
        const RowsOfView rows(samples, toFrame, squares);
        for (int v = 0; v < view.height; ++v, to += view.width) {
            rows.Take(v, row);
            AddSurface(level.surface, toGrid, v, float(level.light), row);
            level.codes.CodeRow(row.data(), row.size(), to);
        }
    }
    return seen;
}

SeenFrame MedianOfFrames(std::span<const SeenFrame* const> frames) {
    SeenFrame median = *frames.front();
    std::vector<std::int16_t> column(frames.size());
    for (std::size_t i = 0; i < median.codes.size(); ++i) {
        std::size_t count = 0;
        for (const SeenFrame* frame : frames)
            if (frame->codes[i] != kNoSample) column[count++] = frame->codes[i];
        const auto middle = column.begin() + std::ptrdiff_t(count / 2);
        std::nth_element(column.begin(), middle, column.begin() + std::ptrdiff_t(count));
        median.codes[i] = count > 0 ? *middle : kNoSample;
    }
    return median;
}

} // namespace tarn
