#include "sky/stack/Levels.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <cmath>

#include <Eigen/Cholesky>
#include <Eigen/Core>

namespace tarn {

namespace {

constexpr int kSamplesASide = 16; // of a cell
constexpr std::size_t kFewInCell = 12;
constexpr std::size_t kFewCells = 24; // below which only the level itself is compared
constexpr double kFar = 3;            // deviations
constexpr double kNear = 3;           // pixels between two places of one star
constexpr std::size_t kFewestCommon = 5;

using Terms = Eigen::Matrix<double, 6, 1>;

Terms TermsOf(double x, double y) {
    Terms terms;
    terms << 1, x, y, x * x, x * y, y * y;
    return terms;
}

// Of a mosaic only those of the colour: each of the four kinds of places has its turn.
void TakeCell(const FrameSamples& frame, int colour, int column, int row,
              std::vector<float>& samples) {
    const auto begin = [](int part, int parts, int count) {
        return int(std::int64_t(part) * count / parts);
    };
    const int left = begin(column, SkyGrid::kColumns, frame.width);
    const int right = begin(column + 1, SkyGrid::kColumns, frame.width);
    const int top = begin(row, SkyGrid::kRows, frame.height);
    const int bottom = begin(row + 1, SkyGrid::kRows, frame.height);
    const int stepX = std::max(1, (right - left) / kSamplesASide) | 1;
    const int stepY = std::max(1, (bottom - top) / kSamplesASide) | 1;
    samples.clear();
    for (int y = top; y < bottom; y += stepY)
        for (int x = left; x < right; x += stepX) {
            if (frame.mosaic && frame.ColourAt(x, y) != colour) continue;
            const float value = frame.At(frame.mosaic ? 0 : colour, x, y);
            if (std::isfinite(value)) samples.push_back(value);
        }
}

} // namespace

double SkyGrid::At(double x, double y) const {
    const double column = std::clamp((x + 0.5) * kColumns / width - 0.5, 0.0, kColumns - 1.0);
    const double row = std::clamp((y + 0.5) * kRows / height - 0.5, 0.0, kRows - 1.0);
    const int left = std::min(int(column), kColumns - 2);
    const int top = std::min(int(row), kRows - 2);
    const auto cell = [&](int right, int down) {
        const float value = levels[std::size_t((top + down) * kColumns + left + right)];
        return std::isnan(value) ? level : double(value);
    };
    const double upper = std::lerp(cell(0, 0), cell(1, 0), column - left);
    const double lower = std::lerp(cell(0, 1), cell(1, 1), column - left);
    return std::lerp(upper, lower, row - top);
}

namespace {

// What lies between two values that are next to each other: 0 where nothing tells it.
float StepOf(const FrameSamples& frame, const std::vector<std::vector<float>>& cells) {
    float step = std::numeric_limits<float>::infinity();
    for (std::vector<float> samples : cells) {
        std::sort(samples.begin(), samples.end());
        for (std::size_t i = 1; i < samples.size(); ++i)
            if (samples[i] > samples[i - 1]) step = std::min(step, samples[i] - samples[i - 1]);
    }
    return std::isfinite(step) ? step : frame.words ? float(frame.scale) : 0.0F;
}

// Each value anywhere in its step, evenly: medians then tell what lies between two steps, and the
// noise is never less than that of the steps.
void SpreadInSteps(float step, std::vector<float>& samples) {
    constexpr float kGolden = 0.618034F; // the most even sequence
    float part = 0.5F;
    for (float& sample : samples) {
        sample += step * (part - 0.5F);
        part += kGolden;
        if (part >= 1) part -= 1;
    }
}

} // namespace

SkyGrid SkyOf(const FrameSamples& frame, int colour) {
    SkyGrid sky;
    sky.width = frame.width;
    sky.height = frame.height;
    sky.levels.assign(std::size_t(SkyGrid::kColumns * SkyGrid::kRows),
                      std::numeric_limits<float>::quiet_NaN());
    std::vector<std::vector<float>> cells(sky.levels.size());
    for (int row = 0; row < SkyGrid::kRows; ++row)
        for (int column = 0; column < SkyGrid::kColumns; ++column)
            TakeCell(frame, colour, column, row,
                     cells[std::size_t(row * SkyGrid::kColumns + column)]);
    const float step = StepOf(frame, cells);
    std::vector<double> levels;
    std::vector<double> noises;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        std::vector<float>& samples = cells[i];
        if (samples.size() < kFewInCell) continue;
        SpreadInSteps(step, samples);
        const float level = MedianInPlace(std::span(samples));
        for (float& sample : samples) sample = std::abs(sample - level);
        sky.levels[i] = level;
        levels.push_back(level);
        noises.push_back(kDeviationOfMad * MedianInPlace(std::span(samples)));
    }
    if (levels.empty()) return sky;
    sky.level = MedianOf(levels);
    sky.noise = MedianOf(noises);
    return sky;
}

double LevelSurface::At(double x, double y) const {
    const Terms terms = TermsOf(2 * x / width - 1, 2 * y / height - 1);
    double sum = 0;
    for (int i = 0; i < terms.size(); ++i) sum += of[std::size_t(i)] * terms[i];
    return sum;
}

void LevelSurface::AddRow(int y, int left, int count, float light, float* values) const {
    const double down = 2 * y / height - 1;
    const auto still = float(of[0] + of[2] * down + of[5] * down * down);
    const auto slope = float(of[1] + of[4] * down);
    const auto bend = float(of[3]);
    const auto step = float(2 / width);
    const auto start = float(2 * left / width - 1);
    for (int i = 0; i < count; ++i) {
        const float x = start + step * float(i);
        values[i] = values[i] * light + still + x * (slope + x * bend);
    }
}

LevelSurface SurfaceBetween(const SkyGrid& frame, double light, const FrameMap& map,
                            const SkyGrid& reference) {
    struct Cell {
        Terms terms;
        double difference;
    };
    LevelSurface surface;
    surface.width = reference.width;
    surface.height = reference.height;
    surface.of[0] = reference.level - light * frame.level;
    std::vector<Cell> cells;
    for (int row = 0; row < SkyGrid::kRows; ++row)
        for (int column = 0; column < SkyGrid::kColumns; ++column) {
            const float level = frame.levels[std::size_t(row * SkyGrid::kColumns + column)];
            const auto [x, y] = map(frame.MiddleX(column), frame.MiddleY(row));
            if (std::isnan(level) || x < 0 || y < 0 || x >= reference.width ||
                y >= reference.height)
                continue;
            cells.push_back({TermsOf(2 * x / surface.width - 1, 2 * y / surface.height - 1),
                             reference.At(x, y) - light * level});
        }
    for (int round = 0; round < 3 && cells.size() >= kFewCells; ++round) {
        Eigen::Matrix<double, 6, 6> normal = Eigen::Matrix<double, 6, 6>::Identity() * 1e-9;
        Terms right = Terms::Zero();
        for (const Cell& cell : cells) {
            normal += cell.terms * cell.terms.transpose();
            right += cell.terms * cell.difference;
        }
        const Terms solved = normal.ldlt().solve(right);
        if (!solved.allFinite()) break;
        for (int i = 0; i < solved.size(); ++i) surface.of[std::size_t(i)] = solved[i];
        std::vector<double> left;
        for (const Cell& cell : cells) left.push_back(cell.difference - cell.terms.dot(solved));
        const double far = kFar * DeviationOf(left);
        if (!(far > 0)) break;
        std::erase_if(cells, [&](const Cell& cell) {
            return std::abs(cell.difference - cell.terms.dot(solved)) > far;
        });
    }
    return surface;
}

double LightTo(std::span<const StarPlace> reference, std::span<const StarPlace> frame,
               const FrameMap& map) {
    std::vector<StarPlace> known(reference.begin(), reference.end());
    std::sort(known.begin(), known.end(),
              [](const StarPlace& one, const StarPlace& other) { return one.x < other.x; });
    std::vector<double> ratios;
    for (const StarPlace& star : frame) {
        const auto [x, y] = map(star.x, star.y);
        auto at = std::lower_bound(known.begin(), known.end(), x - kNear,
                                   [](const StarPlace& one, double left) { return one.x < left; });
        for (; at != known.end() && at->x <= x + kNear; ++at)
            if (std::hypot(at->x - x, at->y - y) < kNear && at->flux > 0 && star.flux > 0)
                ratios.push_back(double(at->flux) / star.flux);
    }
    if (ratios.size() < kFewestCommon) return kNotMeasured;
    return MedianOf(ratios) / std::abs(map.Area());
}

} // namespace tarn
