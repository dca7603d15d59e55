#include "sky/stars/SkyMesh.h"

#include "sky/stars/RobustStatistics.h"

#include <array>
#include <cstdint>

namespace tarn {

namespace {

constexpr int kFewSamples = 16; // of a cell, below which it says nothing
constexpr int kSamplesASide = 16;
constexpr float kClip = 3;
constexpr float kFar = 2;                  // deviations of a cell's samples
constexpr float kLeastNoise = 1.0F / 4000; // of the range of values
constexpr float kOfStep = 0.3F; // deviations that a step of a coarse plane counts at least
constexpr float kSlope =
    0.95F; // of the cells' deviations, less than which is left above a sloping sky
constexpr float kWhiteNoiseLeft = 0.375F; // of the weights 1 2 1 in both directions

// Cells are wider than stars and narrower than what the sky does.
int CellOf(int width, int height) {
    const int side = std::min(width, height);
    return side >= 2048 ? 128 : side >= 256 ? 64 : 32;
}

// Numbers as good as any, and the same each time.
class Dither {
public:
    float operator()(float step) {
        m_state = m_state * 1664525U + 1013904223U;
        return (float(m_state >> 8) * 0x1p-24F - 0.5F) * step;
    }

private:
    std::uint32_t m_state = 1;
};

struct Level {
    float median = std::numeric_limits<float>::quiet_NaN();
    float noise = 0;
};

Level LevelOf(std::span<float> samples, std::vector<float>& room) {
    const float median = MedianInPlace(samples);
    room.resize(samples.size());
    std::transform(samples.begin(), samples.end(), room.begin(),
                   [&](float sample) { return std::abs(sample - median); });
    return {median, float(kDeviationOfMad) * MedianInPlace(std::span(room))};
}

Level ClippedLevel(std::span<float> samples, std::vector<float>& room) {
    Level level = LevelOf(samples, room);
    for (int round = 0; round < 3 && level.noise > 0; ++round) {
        const auto end = std::partition(samples.begin(), samples.end(), [&](float sample) {
            return std::abs(sample - level.median) <= kClip * level.noise;
        });
        const auto left = std::size_t(end - samples.begin());
        const bool clean = left + samples.size() / 50 >= samples.size();
        samples = samples.first(left);
        if (clean) break;
        level = LevelOf(samples, room);
    }
    return level;
}

// The standard deviation with what lies beyond four of them left out.
float ClippedSpread(std::span<float> samples) {
    float spread = std::numeric_limits<float>::infinity();
    float mean = MedianInPlace(samples);
    for (int round = 0; round < 5; ++round) {
        double sum = 0;
        double squares = 0;
        int count = 0;
        for (const float sample : samples) {
            if (std::abs(sample - mean) > 4 * spread) continue;
            sum += sample;
            squares += double(sample) * sample;
            ++count;
        }
        mean = float(sum / count);
        spread = float(std::sqrt(std::max(0.0, squares / count - double(mean) * mean)));
    }
    return spread;
}

// What lies between two values that can be stored: noise of less than some of these steps has a
// median deviation that jumps with them, unless the samples are spread over the steps.
float StepOf(const ValuePlane& plane) {
    if (plane.words) return float(std::abs(plane.scale));
    const std::size_t stride = plane.Samples() / 4096 + 1;
    for (std::size_t i = 0; i < plane.Samples(); i += stride) {
        const float value = plane.floats[i];
        if (std::isfinite(value) && value != std::floor(value)) return 0;
    }
    return 1;
}

// The same for values that lie farther apart the higher they are: the middle of what lies between
// neighbours among the samples, which are put in order.
float CoarseStepOf(std::vector<float>& samples) {
    std::sort(samples.begin(), samples.end());
    std::vector<float> gaps;
    for (std::size_t i = 1; i < samples.size(); ++i)
        if (samples[i] > samples[i - 1]) gaps.push_back(samples[i] - samples[i - 1]);
    return gaps.empty() ? 0 : MedianInPlace(std::span(gaps));
}

// What is left of a deviation when that of the steps is taken away.
float WithoutStep(float noise, float step) {
    return std::sqrt(std::max(0.0F, noise * noise - step * step / 12));
}

float Smoothed(const ValuePlane& plane, int x, int y) {
    constexpr std::array<float, 3> kWeights{0.25F, 0.5F, 0.25F};
    float sum = 0;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            sum += kWeights[std::size_t(dx + 1)] * kWeights[std::size_t(dy + 1)] *
                   plane.At(x + dx, y + dy);
    return sum;
}

} // namespace

SkyMesh::SkyMesh(const ValuePlane& plane)
    : m_width(plane.width), m_height(plane.height),
      m_columns(std::max(1, plane.width / CellOf(plane.width, plane.height))),
      m_rows(std::max(1, plane.height / CellOf(plane.width, plane.height))) {
    MeasureCells(plane);
    FillGaps();
    if (!m_hasData) return;
    TakeMiddles();
    const std::vector<float> noises = m_noises;
    EvenOut(m_levels, noises);
    EvenOut(m_noises, noises);
    MeasureNoise(plane);
}

void SkyMesh::MeasureCells(const ValuePlane& plane) {
    const float even = StepOf(plane);
    Dither dither;
    std::vector<float> samples;
    std::vector<float> room;
    std::vector<float> steps;
    float lowest = std::numeric_limits<float>::max();
    float highest = std::numeric_limits<float>::lowest();
    for (int row = 0; row < m_rows; ++row)
        for (int column = 0; column < m_columns; ++column) {
            const std::size_t places = TakeSamples(plane, column, row, samples);
            for (const float sample : samples) {
                lowest = std::min(lowest, sample);
                highest = std::max(highest, sample);
            }
            m_hasData = m_hasData || !samples.empty();
            Level level;
            // Half of a cell does not stand where the cell does.
            if (samples.size() * 2 >= places && !samples.empty()) {
                // Samples all alike stay so.
                const bool varied = std::any_of(samples.begin(), samples.end(),
                                                [&](float each) { return each != samples[0]; });
                const float step = !varied ? 0 : plane.coarse ? CoarseStepOf(samples) : even;
                for (float& sample : samples) sample += dither(step);
                level = ClippedLevel(samples, room);
                level.noise = WithoutStep(level.noise, step);
                steps.push_back(step);
            }
            m_levels.push_back(level.median);
            m_noises.push_back(level.noise);
        }
    if (m_hasData) m_range = highest - lowest;
    m_step = MedianInPlace(std::span(steps));
}

// Of a cell, at equal distances; gives how many there would be if all had data.
std::size_t SkyMesh::TakeSamples(const ValuePlane& plane, int column, int row,
                                 std::vector<float>& samples) const {
    const int left = int(std::int64_t(m_width) * column / m_columns);
    const int right = int(std::int64_t(m_width) * (column + 1) / m_columns);
    const int top = int(std::int64_t(m_height) * row / m_rows);
    const int bottom = int(std::int64_t(m_height) * (row + 1) / m_rows);
    const int strideX = std::max(1, (right - left) / kSamplesASide);
    const int strideY = std::max(1, (bottom - top) / kSamplesASide);
    std::size_t places = 0;
    samples.clear();
    for (int y = top; y < bottom; y += strideY)
        for (int x = left; x < right; x += strideX) {
            ++places;
            if (const float value = plane.At(x, y); std::isfinite(value)) samples.push_back(value);
        }
    return places;
}

// Cells without data become as those beside them, from their edges inwards.
void SkyMesh::FillGaps() {
    const auto isKnown = [](float level) { return std::isfinite(level); };
    if (std::none_of(m_levels.begin(), m_levels.end(), isKnown))
        m_hasData = false; // nothing but scattered samples
    while (m_hasData && !std::all_of(m_levels.begin(), m_levels.end(), isKnown)) {
        const std::vector<float> levels = m_levels;
        const std::vector<float> noises = m_noises;
        for (int at = 0; at < m_columns * m_rows; ++at) {
            if (isKnown(levels[std::size_t(at)])) continue;
            Level sum{0, 0};
            int count = 0;
            ForEachBeside(at, [&](std::size_t beside) {
                if (!isKnown(levels[beside])) return;
                sum.median += levels[beside];
                sum.noise += noises[beside];
                ++count;
            });
            if (count == 0) continue;
            m_levels[std::size_t(at)] = sum.median / float(count);
            m_noises[std::size_t(at)] = sum.noise / float(count);
        }
    }
}

void SkyMesh::TakeMiddles() {
    std::vector<float> room = m_levels;
    m_background = MedianInPlace(std::span(room));
    room = m_noises;
    m_noise = MedianInPlace(std::span(room));
    // A sky cut off at black has none; what stands above it must do so for all to see.
    for (float& noise : m_noises)
        if (noise <= 0) noise = m_noise > 0 ? m_noise : m_range * kLeastNoise;
}

template <typename Visit> void SkyMesh::ForEachBeside(int cell, const Visit& visit) const {
    const int row = cell / m_columns;
    const int column = cell % m_columns;
    for (int y = std::max(0, row - 1); y <= std::min(m_rows - 1, row + 1); ++y)
        for (int x = std::max(0, column - 1); x <= std::min(m_columns - 1, column + 1); ++x)
            visit(std::size_t(y * m_columns + x));
}

// A cell far from its neighbours is filled by something else than the sky, and becomes as they are.
void SkyMesh::EvenOut(std::vector<float>& cells, const std::vector<float>& noises) const {
    const std::vector<float> before = cells;
    std::vector<float> around;
    for (int at = 0; at < m_columns * m_rows; ++at) {
        around.clear();
        ForEachBeside(at, [&](std::size_t beside) { around.push_back(before[beside]); });
        const float middle = MedianInPlace(std::span(around));
        float& cell = cells[std::size_t(at)];
        if (std::abs(cell - middle) > kFar * noises[std::size_t(at)]) cell = middle;
    }
}

// The cells' own deviations have the slope of the sky in them; these, from what is left above the
// mesh, have not.
void SkyMesh::MeasureNoise(const ValuePlane& plane) {
    m_noiseLeft = kWhiteNoiseLeft;
    if (m_range <= 0 || m_width < 3 || m_height < 3) return;
    constexpr int kASide = 100;
    Dither dither;
    std::vector<float> plain;
    std::vector<float> smoothed;
    const int strideX = std::max(1, m_width / kASide);
    const int strideY = std::max(1, m_height / kASide);
    for (int y = 1; y < m_height - 1; y += strideY)
        for (int x = 1; x < m_width - 1; x += strideX) {
            const float level = BackgroundAt(x, y);
            const float noise = NoiseAt(x, y);
            const float above = Smoothed(plane, x, y) - level;
            if (!std::isfinite(above)) continue;
            smoothed.push_back(above / noise);
            plain.push_back((plane.At(x, y) - level + dither(m_step)) / noise);
        }
    if (smoothed.size() < std::size_t(kFewSamples)) return;
    std::vector<float> room;
    // What was packed with loss has other noise than a normal distribution: few samples, but far.
    const float all = ClippedLevel(plain, room).noise;
    const float left = plane.coarse ? ClippedSpread(smoothed) : ClippedLevel(smoothed, room).noise;
    if (m_noise > 0 && all > 0 && all < kSlope) {
        for (float& noise : m_noises) noise *= all;
        m_noise = WithoutStep(all * m_noise, m_step);
    }
    if (left > 0 && all > 0) m_noiseLeft = std::clamp(left / all, kWhiteNoiseLeft / 2, 1.0F);
    // Where whole patches are of one value, the sky itself goes up and down in steps.
    if (plane.coarse)
        for (float& noise : m_noises) noise = std::max(noise, kOfStep * m_step / m_noiseLeft);
}

float SkyMesh::Between(const std::vector<float>& cells, float x, float y) const {
    // Beyond the outer middles the line goes on.
    const float atX = (x + 0.5F) * float(m_columns) / float(m_width) - 0.5F;
    const float atY = (y + 0.5F) * float(m_rows) / float(m_height) - 0.5F;
    const int column = std::clamp(int(atX), 0, std::max(0, m_columns - 2));
    const int row = std::clamp(int(atY), 0, std::max(0, m_rows - 2));
    const auto cell = [&](int dx, int dy) {
        return cells[std::size_t(std::min(row + dy, m_rows - 1) * m_columns +
                                 std::min(column + dx, m_columns - 1))];
    };
    const float partX = atX - float(column);
    const float partY = atY - float(row);
    const float upper = cell(0, 0) + partX * (cell(1, 0) - cell(0, 0));
    const float lower = cell(0, 1) + partX * (cell(1, 1) - cell(0, 1));
    return upper + partY * (lower - upper);
}

void SkyMesh::Row(int y, float sigmas, float* to) const {
    // Straight from one place to the next, which lie as close as the mesh has bends.
    const int step = std::max(1, m_width / m_columns / 4);
    const auto at = [&](int x) { return BackgroundAt(x, y) + sigmas * NoiseAt(x, y); };
    float from = at(0);
    for (int begin = 0; begin < m_width; begin += step) {
        const int end = std::min(begin + step, m_width);
        const float next = at(std::min(end, m_width - 1));
        const float slope = (next - from) / float(end - begin);
        for (int x = begin; x < end; ++x) to[x] = from + slope * float(x - begin);
        from = next;
    }
}

} // namespace tarn
