#include "sky/stack/Warp.h"

#include "common/demosaic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include <Eigen/Core>

namespace tarn {

namespace {

constexpr int kReach = 3; // samples of Lanczos to each side
constexpr int kTaps = 2 * kReach;
constexpr int kPadded = 8;     // of which the last two weigh nothing
constexpr int kPhases = 512;   // between two samples
constexpr int kMargin = 5;     // of a window around the places that are asked for
constexpr double kEdge = 1e-3; // beyond the outermost samples' centres that still counts
constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

using Four = Eigen::Array<float, 4, 1>;
using FourThere = Eigen::Map<const Four>;

struct alignas(16) Weights {
    std::array<float, kPadded> of{};
};

double Lanczos(double x) {
    if (std::abs(x) < 1e-9) return 1;
    if (std::abs(x) >= kReach) return 0;
    const double turn = std::numbers::pi * x;
    return kReach * std::sin(turn) * std::sin(turn / kReach) / (turn * turn);
}

// For the samples from two before a place to three behind it, by its part of a sample.
const std::array<Weights, kPhases + 1>& LanczosWeights() {
    static const auto kWeights = [] {
        std::array<Weights, kPhases + 1> all{};
        for (int phase = 0; phase <= kPhases; ++phase) {
            std::array<double, kTaps> exact{};
            double sum = 0;
            for (int tap = 0; tap < kTaps; ++tap) {
                exact[std::size_t(tap)] = Lanczos(tap - 2 - double(phase) / kPhases);
                sum += exact[std::size_t(tap)];
            }
            for (std::size_t tap = 0; tap < exact.size(); ++tap)
                all[std::size_t(phase)].of[tap] = float(exact[tap] / sum);
        }
        return all;
    }();
    return kWeights;
}

// Where some of the samples are no data: by the others, where those have most of the weight, and
// none where the nearest is none.
float SampleWithGaps(const float* at, int perRow, const float* along, const float* across,
                     int before, int taps) {
    constexpr float kLeast = 0.6F;
    constexpr float kNearest = 0.35F; // only it has more
    float sum = 0;
    float weight = 0;
    for (int row = 0; row < taps; ++row)
        for (int column = 0; column < taps; ++column) {
            const float value = at[std::ptrdiff_t(row - before) * perRow + column - before];
            const float part = along[column] * across[row];
            if (std::isnan(value)) {
                if (part > kNearest) return kNone;
                continue;
            }
            sum += part * value;
            weight += part;
        }
    return weight >= kLeast ? sum / weight : kNone;
}

// `at` is the sample at the whole part of the place, `right` and `down` the rest of it.
struct LanczosSample {
    const std::array<Weights, kPhases + 1>& weights = LanczosWeights();

    float operator()(const float* at, int perRow, float right, float down) const {
        const float* along = weights[std::size_t(right * kPhases + 0.5F)].of.data();
        const float* across = weights[std::size_t(down * kPhases + 0.5F)].of.data();
        const float* row = at - 2 - 2 * std::ptrdiff_t(perRow);
        Four first = across[0] * FourThere(row);
        Four second = across[0] * FourThere(row + 4);
        for (int tap = 1; tap < kTaps; ++tap) {
            row += perRow;
            first += across[tap] * FourThere(row);
            second += across[tap] * FourThere(row + 4);
        }
        const float sum = (first * FourThere(along) + second * FourThere(along + 4)).sum();
        return std::isnan(sum) ? SampleWithGaps(at, perRow, along, across, 2, kTaps) : sum;
    }
};

struct BilinearSample {
    float operator()(const float* at, int perRow, float right, float down) const {
        const float upper = at[0] + right * (at[1] - at[0]);
        const float lower = at[perRow] + right * (at[perRow + 1] - at[perRow]);
        const float value = upper + down * (lower - upper);
        if (!std::isnan(value)) return value;
        const std::array<float, 2> along{1 - right, right};
        const std::array<float, 2> across{1 - down, down};
        return SampleWithGaps(at, perRow, along.data(), across.data(), 0, 2);
    }
};

} // namespace

FrameMap Inverse(const FrameMap& map) {
    const double area = map.Area();
    FrameMap back{map.e / area, -map.b / area, 0, -map.d / area, map.a / area, 0};
    back.c = -(back.a * map.c + back.b * map.f);
    back.f = -(back.d * map.c + back.e * map.f);
    return back;
}

Warp::Warp(const FrameSamples& frame, const FrameMap& map, WarpKernel kernel)
    : m_frame(frame), m_back(Inverse(map)), m_kernel(kernel) {}

Warp::Window Warp::WindowOf(const GridPart& part) const {
    double left = m_frame.width;
    double right = -1;
    double top = m_frame.height;
    double bottom = -1;
    for (const int x : {part.left, part.left + part.width - 1})
        for (const int y : {part.top, part.top + part.height - 1}) {
            const auto [there, down] = m_back(x, y);
            left = std::min(left, there);
            right = std::max(right, there);
            top = std::min(top, down);
            bottom = std::max(bottom, down);
        }
    left = std::max(left, 0.0);
    top = std::max(top, 0.0);
    right = std::min(right, m_frame.width - 1.0);
    bottom = std::min(bottom, m_frame.height - 1.0);
    if (left > right + 1 || top > bottom + 1) return {};
    Window window;
    window.left = int(std::floor(left)) - kMargin;
    window.top = int(std::floor(top)) - kMargin;
    window.width = int(std::ceil(right)) + kMargin + 1 - window.left;
    window.height = int(std::ceil(bottom)) + kMargin + 1 - window.top;
    return window;
}

void Warp::FillPlane(const Window& window, int plane, float* to) const {
    const int begin = std::clamp(-window.left, 0, window.width); // columns before the frame's first
    const int end = std::clamp(m_frame.width - window.left, begin, window.width);
    const auto start = float(m_frame.zero);
    const auto step = float(m_frame.scale);
    for (int y = 0; y < window.height; ++y, to += window.width) {
        const int row = std::clamp(window.top + y, 0, m_frame.height - 1);
        const std::size_t at =
            (std::size_t(plane) * std::size_t(m_frame.height) + std::size_t(row)) *
                std::size_t(m_frame.width) +
            std::size_t(window.left + begin);
        if (m_frame.floats)
            std::copy_n(m_frame.floats + at, end - begin, to + begin);
        else
            for (int x = begin; x < end; ++x)
                to[x] = start + step * float(m_frame.words[at + std::size_t(x - begin)]);
        std::fill(to, to + begin, to[begin]);
        std::fill(to + end, to + window.width, to[end - 1]);
    }
}

namespace {

// A part of a mosaic, for the common demosaicing.
struct MosaicRows {
    const FrameSamples& frame;
    const float* samples;
    int left;
    int top;
    int width;
    int height;

    int Width() const { return width; }
    int Height() const { return height; }
    const float* Row(int y) const { return samples + std::ptrdiff_t(y) * width; }
    int Count(int) const { return width; }
    int Colour(int y, int x) const { return frame.ColourAt(left + x, top + y); }
};

} // namespace

// Beyond the border the mosaic goes on by twos, so that each place keeps its colour.
void Warp::FillMosaic(const Window& window) {
    const auto inside = [](int place, int count) {
        while (place < 0) place += 2;
        while (place >= count) place -= 2;
        return place;
    };
    const std::size_t samples = std::size_t(window.width) * std::size_t(window.height);
    std::vector<float> mosaic(samples);
    // An even place for its first sample keeps the colours where they are.
    for (int y = 0; y < window.height; ++y)
        for (int x = 0; x < window.width; ++x)
            mosaic[std::size_t(y) * std::size_t(window.width) + std::size_t(x)] = m_frame.At(
                0, inside(window.left + x, m_frame.width), inside(window.top + y, m_frame.height));
    constexpr int kEven = 16; // more than a window begins before the frame
    const MosaicRows rows{m_frame,      mosaic.data(), window.left + kEven, window.top + kEven,
                          window.width, window.height};
    for (int y = 0; y < window.height; ++y) {
        const std::size_t at = std::size_t(y) * std::size_t(window.width);
        DemosaicRow(rows, y, {&m_window[at], &m_window[at + samples], &m_window[at + 2 * samples]});
    }
}

void Warp::Fill(const Window& window) {
    const std::size_t samples = std::size_t(window.width) * std::size_t(window.height);
    m_window.resize(samples * std::size_t(m_frame.Colours()) + kPadded);
    if (m_frame.mosaic) return FillMosaic(window);
    for (int plane = 0; plane < m_frame.planes; ++plane)
        FillPlane(window, plane, m_window.data() + std::size_t(plane) * samples);
}

template <typename Sample>
void Warp::Interpolate(const GridPart& part, const Window& window, const float* from, float* to,
                       const Sample& sample) const {
    const double right = m_frame.width - 1 + kEdge;
    const double bottom = m_frame.height - 1 + kEdge;
    for (int y = 0; y < part.height; ++y)
        for (int x = 0; x < part.width; ++x, ++to) {
            const auto [placeX, placeY] = m_back(part.left + x, part.top + y);
            if (!(placeX >= -kEdge && placeY >= -kEdge && placeX <= right && placeY <= bottom)) {
                *to = kNone;
                continue;
            }
            // Both are above 0: the window begins before the frame.
            const double inX = placeX - window.left;
            const double inY = placeY - window.top;
            const int column = int(inX);
            const int row = int(inY);
            *to = sample(from + std::ptrdiff_t(row) * window.width + column, window.width,
                         float(inX - column), float(inY - row));
        }
}

void Warp::Take(const GridPart& part, float* to) {
    const Window window = WindowOf(part);
    if (window.width == 0) {
        std::fill_n(to, part.Samples() * std::size_t(m_frame.Colours()), kNone);
        return;
    }
    Fill(window);
    const std::size_t samples = std::size_t(window.width) * std::size_t(window.height);
    for (int colour = 0; colour < m_frame.Colours(); ++colour) {
        const float* from = m_window.data() + std::size_t(colour) * samples;
        float* colourTo = to + std::size_t(colour) * part.Samples();
        if (m_kernel == WarpKernel::Lanczos)
            Interpolate(part, window, from, colourTo, LanczosSample());
        else
            Interpolate(part, window, from, colourTo, BilinearSample());
    }
}

} // namespace tarn
