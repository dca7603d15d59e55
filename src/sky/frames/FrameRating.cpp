#include "sky/frames/FrameRating.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace tarn {

namespace {

constexpr std::size_t kSampled = 4096; // cells that tell the levels
constexpr double kSkyRank = 0.05;
constexpr std::size_t kTopRank = 4; // of the rows: fewer may be hot pixels
constexpr float kSeen = 8;          // deviations of a cell's noise
constexpr float kAboveNoise = 5;    // the same
constexpr float kEdge = 0.25F;      // of the light, above the sky
constexpr float kMadToSigma = 1.4826F;
constexpr int kTouches = 3;  // cells of a border line
constexpr int kMargin = 4;   // cells around the light
constexpr int kSmallest = 8; // pixels of a side

static_assert(std::endian::native == std::endian::little, "samples are read in pairs");

// Two samples of one row at once, of one byte or two.
template <typename Pair> Pair PairAt(const std::uint8_t* bytes, int cell) {
    Pair pair;
    std::memcpy(&pair, bytes + sizeof(Pair) * std::size_t(cell), sizeof pair);
    return pair;
}

// Plain loops, which the compiler makes vectors of.
void MeansOfBytes(const std::uint8_t* one, const std::uint8_t* other, int count, float* cells) {
    for (int i = 0; i < count; ++i) {
        const auto a = PairAt<std::uint16_t>(one, i);
        const auto b = PairAt<std::uint16_t>(other, i);
        const int sum = (a & 0xff) + (a >> 8) + (b & 0xff) + (b >> 8);
        cells[i] = 0.25F * float(sum);
    }
}

void MeansOfWords(const std::uint8_t* one, const std::uint8_t* other, int count, float* cells) {
    for (int i = 0; i < count; ++i) {
        const auto a = PairAt<std::uint32_t>(one, i);
        const auto b = PairAt<std::uint32_t>(other, i);
        const auto sum = int((a & 0xffff) + (a >> 16) + (b & 0xffff) + (b >> 16));
        cells[i] = 0.25F * float(sum);
    }
}

std::uint32_t Swapped(std::uint32_t pair) {
    return (pair & 0x00ff00ff) << 8 | (pair >> 8 & 0x00ff00ff);
}

void MeansOfSwappedWords(const std::uint8_t* one, const std::uint8_t* other, int count,
                         float* cells) {
    for (int i = 0; i < count; ++i) {
        const std::uint32_t a = Swapped(PairAt<std::uint32_t>(one, i));
        const std::uint32_t b = Swapped(PairAt<std::uint32_t>(other, i));
        const auto sum = int((a & 0xffff) + (a >> 16) + (b & 0xffff) + (b >> 16));
        cells[i] = 0.25F * float(sum);
    }
}

float SampleAt(const StoredFrame& frame, const std::uint8_t* row, int index) {
    if (frame.bits <= 8) return row[index];
    const std::uint8_t* at = row + 2 * std::size_t(index);
    return float(frame.highByteFirst ? at[0] << 8 | at[1] : at[1] << 8 | at[0]);
}

void GrayRow(const StoredFrame& frame, const std::uint8_t* row, float* gray) {
    for (int x = 0; x < frame.width; ++x)
        gray[x] = 0.25F * SampleAt(frame, row, 3 * x) + 0.5F * SampleAt(frame, row, 3 * x + 1) +
                  0.25F * SampleAt(frame, row, 3 * x + 2);
}

float RankOf(std::vector<float>& values, std::size_t rank) {
    const auto at = values.begin() + std::ptrdiff_t(std::min(rank, values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

// What stands at a border line.
int CountAbove(const float* cells, int count, std::size_t step, float limit) {
    int above = 0;
    for (int i = 0; i < count; ++i) above += cells[std::size_t(i) * step] > limit ? 1 : 0;
    return above;
}

} // namespace

void FrameRater::MakeCells(const StoredFrame& frame) {
    m_width = frame.width / 2;
    m_height = frame.height / 2;
    m_cells.resize(std::size_t(m_width) * std::size_t(m_height));
    m_gray.resize(2 * std::size_t(frame.width));
    m_rowTops.clear();
    const std::size_t rowBytes =
        std::size_t(frame.width) * std::size_t(frame.samples) * (frame.bits > 8 ? 2 : 1);
    for (int y = 0; y < m_height; ++y) {
        const std::uint8_t* one = frame.bytes.data() + 2 * std::size_t(y) * rowBytes;
        const std::uint8_t* other = one + rowBytes;
        float* cells = &m_cells[std::size_t(y) * std::size_t(m_width)];
        if (frame.samples == 3) {
            float* below = &m_gray[std::size_t(frame.width)];
            GrayRow(frame, one, m_gray.data());
            GrayRow(frame, other, below);
            for (int x = 0; x < m_width; ++x)
                cells[x] = 0.25F * (m_gray[std::size_t(2 * x)] + m_gray[std::size_t(2 * x + 1)] +
                                    below[2 * x] + below[2 * x + 1]);
        } else if (frame.bits <= 8) {
            MeansOfBytes(one, other, m_width, cells);
        } else if (frame.highByteFirst) {
            MeansOfSwappedWords(one, other, m_width, cells);
        } else {
            MeansOfWords(one, other, m_width, cells);
        }
        float top = cells[0];
        for (int x = 1; x < m_width; ++x) top = std::max(top, cells[x]);
        m_rowTops.push_back(top);
    }
}

// The noise is what a checkerboard of four cells finds: an image that the optics made has none of
// it.
FrameRater::Levels FrameRater::FindLevels() {
    Levels levels;
    const std::size_t step = std::max<std::size_t>(1, m_cells.size() / kSampled) | 1U;
    m_sample.clear();
    for (std::size_t i = 0; i < m_cells.size(); i += step) m_sample.push_back(m_cells[i]);
    levels.sky = RankOf(m_sample, std::size_t(kSkyRank * double(m_sample.size())));
    std::sort(m_rowTops.begin(), m_rowTops.end(), std::greater<>());
    levels.top = m_rowTops[std::min(kTopRank, m_rowTops.size()) - 1];
    m_sample.clear();
    const auto width = std::size_t(m_width);
    for (std::size_t i = 0; i + width + 1 < m_cells.size(); i += step)
        m_sample.push_back(
            std::abs(m_cells[i] - m_cells[i + 1] - m_cells[i + width] + m_cells[i + width + 1]));
    levels.noise = kMadToSigma * RankOf(m_sample, m_sample.size() / 2) / 2;
    return levels;
}

// False where there is none.
bool FrameRater::FindLight(const Levels& levels, RatedFrame& rated, Box& box) {
    const float limit =
        levels.sky + std::max(kEdge * (levels.top - levels.sky), kAboveNoise * levels.noise);
    m_columns.assign(std::size_t(m_width), 0);
    double light = 0;
    double sumX = 0;
    double sumY = 0;
    double cells = 0;
    box = {m_width, m_height, 0, 0};
    for (int y = 0; y < m_height; ++y) {
        const float* row = Row(y);
        float of = 0;
        float ofX = 0;
        float count = 0;
        for (int x = 0; x < m_width; ++x) {
            const float above = std::max(0.0F, row[x] - limit);
            const float is = above > 0 ? 1.0F : 0.0F;
            of += above;
            ofX += above * float(x);
            count += is;
            m_columns[std::size_t(x)] += is;
        }
        if (count == 0) continue;
        light += double(of);
        sumX += double(ofX);
        sumY += double(of) * y;
        cells += double(count);
        if (box.top > y) box.top = y;
        box.bottom = y + 1;
    }
    if (!(light > 0)) return false;
    const auto lit = [](float count) { return count > 0; };
    box.left = int(std::find_if(m_columns.begin(), m_columns.end(), lit) - m_columns.begin());
    box.right =
        m_width - int(std::find_if(m_columns.rbegin(), m_columns.rend(), lit) - m_columns.rbegin());
    // A cell's middle lies between its pixels.
    rated.x = 2 * sumX / light + 0.5;
    rated.y = 2 * sumY / light + 0.5;
    rated.size = 2 * 2 * std::sqrt(cells / M_PI);
    rated.brightness = light / cells + double(limit - levels.sky);
    const auto width = std::size_t(m_width);
    rated.cut = CountAbove(Row(0), m_width, 1, limit) >= kTouches ||
                CountAbove(Row(m_height - 1), m_width, 1, limit) >= kTouches ||
                CountAbove(Row(0), m_height, width, limit) >= kTouches ||
                CountAbove(Row(0) + width - 1, m_height, width, limit) >= kTouches;
    return true;
}

void FrameRater::RateSharpness(const Levels& levels, const Box& box, RatedFrame& rated) const {
    const int left = std::max(1, box.left - kMargin);
    const int right = std::min(m_width - 1, box.right + kMargin);
    double gradients = 0;
    double noise = 0;
    double signal = 0;
    for (int y = std::max(1, box.top - kMargin); y < std::min(m_height - 1, box.bottom + kMargin);
         ++y) {
        const float* above = Row(y - 1);
        const float* row = Row(y);
        const float* below = Row(y + 1);
        float ofGradients = 0;
        float ofNoise = 0;
        float ofSignal = 0;
        for (int x = left; x < right; ++x) {
            const float across = row[x + 1] - row[x - 1];
            const float down = below[x] - above[x];
            const float checks = row[x] - row[x + 1] - below[x] + below[x + 1];
            const float value = row[x] - levels.sky;
            ofGradients += across * across + down * down;
            ofNoise += checks * checks;
            ofSignal += value * value;
        }
        gradients += double(ofGradients);
        noise += double(ofNoise);
        signal += double(ofSignal);
    }
    const double seen = signal - noise / 4;
    rated.sharpness = seen > 0 ? std::max(0.0, gradients - noise) / seen : 0;
}

RatedFrame FrameRater::Rate(const StoredFrame& frame) {
    RatedFrame rated;
    const std::size_t needed = std::size_t(frame.width) * std::size_t(frame.height) *
                               std::size_t(frame.samples) * (frame.bits > 8 ? 2 : 1);
    if (frame.width < kSmallest || frame.height < kSmallest) {
        rated.fault = "the frames are too small to be rated";
        return rated;
    }
    if (frame.bytes.size() < needed) {
        rated.fault = "the frame is cut off";
        return rated;
    }
    MakeCells(frame);
    const Levels levels = FindLevels();
    const bool isSeen = levels.top > levels.sky && levels.top - levels.sky > kSeen * levels.noise;
    Box box;
    if (!isSeen || !FindLight(levels, rated, box)) {
        rated = {};
        rated.fault = "no light stands out of the sky";
        return rated;
    }
    rated.brightness /= double((1U << unsigned(frame.bits)) - 1U);
    RateSharpness(levels, box, rated);
    return rated;
}

namespace {

constexpr double kDim = 0.5;       // of the median
constexpr double kOtherSize = 0.3; // beside it

double MedianBy(std::span<const RatedFrame> frames, double RatedFrame::*member) {
    std::vector<double> values;
    for (const RatedFrame& frame : frames)
        if (frame.fault.empty()) values.push_back(frame.*member);
    if (values.empty()) return 0;
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

std::vector<std::size_t> BestFrames(std::span<const RatedFrame> frames, std::size_t count) {
    const double brightness = MedianBy(frames, &RatedFrame::brightness);
    const double size = MedianBy(frames, &RatedFrame::size);
    const auto rated = std::count_if(frames.begin(), frames.end(),
                                     [](const RatedFrame& f) { return f.fault.empty(); });
    const auto cut = std::count_if(frames.begin(), frames.end(),
                                   [](const RatedFrame& f) { return f.fault.empty() && f.cut; });
    const bool fillsFrame = 2 * cut > rated;
    std::vector<std::size_t> best;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const RatedFrame& frame = frames[i];
        const bool isDoubtful = frame.brightness < kDim * brightness ||
                                (!fillsFrame && std::abs(frame.size - size) > kOtherSize * size);
        if (frame.fault.empty() && (fillsFrame || !frame.cut) && !isDoubtful) best.push_back(i);
    }
    std::stable_sort(best.begin(), best.end(), [&](std::size_t one, std::size_t other) {
        return frames[one].sharpness > frames[other].sharpness;
    });
    best.resize(std::min(best.size(), count));
    return best;
}

} // namespace tarn
