#include "sky/movers/Differences.h"

#include "common/worker.h"
#include "sky/movers/MedianRows.h"
#include "sky/movers/Streaks.h"
#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <mutex>
#include <numeric>

namespace tarn {

namespace {

constexpr std::size_t kMostOfMedian = 48; // frames
constexpr int kFewestRows = 64;           // or columns, beside their margins
constexpr double kShortNight = 14;        // star sigmas that the slowest moves through it
constexpr std::size_t kFewestOfEnds = 9;  // frames of a night that has ends
constexpr float kLeastOfStar = 0.03F;     // of a star's light that a difference leaves
constexpr float kBright = 8;              // deviations from which that is looked at
constexpr int kBlock = 64;                // samples a side whose noise is one
constexpr float kChain = 2.6F;            // star widths between the links of a trail
constexpr double kWidthOfSigma = 2.3548;
constexpr double kWorthTrails = 1.5;  // star widths that the fastest is drawn out to
constexpr std::size_t kLongChain = 4; // links
constexpr double kLongTrail = 5;      // star widths from end to end

std::vector<float> KernelOf(double sigma) {
    const int reach = std::max(1, int(std::ceil(3.2 * sigma)));
    std::vector<float> kernel(std::size_t(2 * reach + 1));
    float sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        kernel[std::size_t(i + reach)] = float(std::exp(-i * i / (2 * sigma * sigma)));
        sum += kernel[std::size_t(i + reach)];
    }
    for (float& weight : kernel) weight /= sum;
    return kernel;
}

// Which frames the median is of that a frame is compared with.
struct Medians {
    std::vector<std::vector<std::size_t>> frames; // of each median
    std::vector<std::size_t> of;                  // each frame
};

std::vector<std::size_t> Spread(const std::vector<std::size_t>& frames) {
    if (frames.size() <= kMostOfMedian) return frames;
    std::vector<std::size_t> some;
    for (std::size_t i = 0; i < kMostOfMedian; ++i)
        some.push_back(frames[i * frames.size() / kMostOfMedian]);
    return some;
}

Medians MediansOf(std::span<const DifferenceFrame> frames, double slowest, double sigma) {
    std::vector<std::size_t> order(frames.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        return frames[one].hours < frames[other].hours;
    });
    const double first = frames[order.front()].hours;
    const double last = frames[order.back()].hours;
    Medians medians;
    if (frames.size() < kFewestOfEnds || slowest * (last - first) > kShortNight * sigma) {
        medians.frames = {Spread(order)};
        medians.of.assign(frames.size(), 0);
        return medians;
    }
    const auto third = std::ptrdiff_t(frames.size() / 3);
    medians.frames = {Spread({order.end() - third, order.end()}),
                      Spread({order.begin(), order.begin() + third})};
    for (const DifferenceFrame& frame : frames)
        medians.of.push_back(2 * frame.hours > first + last ? 1 : 0);
    return medians;
}

// How wide frame and median are blurred: the frame as its stars are, and both then alike.
struct Widths {
    Widths(double frame, double median) {
        const double least = 0.25;
        const double ofFrame = std::max(frame * frame, median * median - frame * frame + least);
        forFrame = std::sqrt(ofFrame);
        forMedian = std::sqrt(frame * frame + ofFrame - median * median);
    }
    double forFrame;
    double forMedian;
};

double LongestTrail(const DifferenceFrame& frame, const Pace& pace) {
    return std::min(kLongestTrail, pace.fastest * frame.exposure);
}

class Search {
public:
    Search(const WarpedSeries& series, std::span<const DifferenceFrame> frames, const Pace& pace,
           const SeriesWatch& watch, std::vector<std::vector<NewSource>>& sources,
           std::size_t bytes)
        : m_series(series), m_frames(frames), m_pace(pace), m_watch(watch), m_sources(sources) {
        std::vector<double> sigmas;
        double widest = 0;
        for (const DifferenceFrame& frame : frames) sigmas.push_back(frame.sigma);
        m_sigma = MedianOf(sigmas);
        for (const DifferenceFrame& frame : frames) {
            m_widths.emplace_back(frame.sigma, m_sigma);
            widest = std::max({widest, m_widths.back().forFrame, m_widths.back().forMedian});
        }
        m_medians = MediansOf(frames, pace.slowest, m_sigma);
        double longest = 0;
        for (const DifferenceFrame& frame : frames)
            longest = std::max(longest, LongestTrail(frame, pace));
        m_margin = int(std::ceil(3.2 * widest + longest / 2)) + 4;
        const std::size_t sampleBytes = sizeof(std::int16_t) * frames.size();
        const std::size_t rowBytes = std::size_t(series.Width()) * sampleBytes;
        m_columns = series.Width();
        m_rows = std::min(int(bytes / std::max<std::size_t>(1, rowBytes)) - 2 * m_margin, 128);
        if (m_rows < kFewestRows) {
            m_rows = kFewestRows;
            const std::size_t columnBytes = std::size_t(m_rows + 2 * m_margin) * sampleBytes;
            m_columns = std::min(series.Width(),
                                 std::max(kFewestRows, int(bytes / columnBytes) - 2 * m_margin));
        }
    }

    std::string Do() {
        m_sources.assign(m_frames.size(), {});
        std::atomic<int> next = 0;
        std::atomic<bool> errs = false;
        const auto work = [&] {
            const int across = (m_series.Width() + m_columns - 1) / m_columns;
            const int all = across * ((m_series.Height() + m_rows - 1) / m_rows);
            for (int i = next++; i < all && !errs; i = next++)
                if (m_watch.IsCancelled() || !TakeBand(i / across * m_rows, i % across * m_columns))
                    errs = true;
        };
        std::string fault = OnWorkers(WarpedSeries::kThreads, work);
        if (fault.empty() && errs)
            fault = m_watch.IsCancelled() ? "cancelled" : "the disk is full or errs";
        return fault;
    }

private:
    struct Band {
        int left = 0; // column of the grid, margin included
        int width = 0;
        int first = 0; // row of the grid, margin included
        int rows = 0;
        int begin = 0; // rows of it that sources are looked for in
        int end = 0;
        std::vector<std::int16_t> codes; // of all frames
        std::vector<std::vector<float>> medians;
    };

    bool TakeBand(int row, int column);
    bool ReadCodes(Band& band) const;
    void TakeMedians(Band& band) const;
    const std::int16_t* CodesOf(const Band& band, std::size_t frame) const {
        return band.codes.data() + frame * std::size_t(band.rows) * std::size_t(band.width);
    }
    void Compare(const Band& band, std::size_t frame, std::vector<NewSource>& found) const;
    void FindPeaks(const Band& band, std::size_t frame, const Field& difference,
                   const Field& median, float ofStar, std::vector<NewSource>& found) const;
    float Unfiltered(const Band& band, std::size_t frame, int x, int y) const;
    float LeftOfStars(Field& difference, Field& median, float noise) const;

    const WarpedSeries& m_series;
    std::span<const DifferenceFrame> m_frames;
    const Pace& m_pace;
    const SeriesWatch& m_watch;
    std::vector<std::vector<NewSource>>& m_sources;
    double m_sigma = 1;
    std::vector<Widths> m_widths;
    Medians m_medians;
    int m_margin = 0;
    int m_rows = 0;
    int m_columns = 0;  // all of a row, unless that is too much of so many frames
    std::mutex m_mutex; // of m_sources
};

bool Search::TakeBand(int row, int column) {
    Band band;
    band.begin = row;
    band.end = std::min(m_series.Height(), row + m_rows);
    band.first = std::max(0, band.begin - m_margin);
    band.rows = std::min(m_series.Height(), band.end + m_margin) - band.first;
    band.left = std::max(0, column - m_margin) / 2 * 2; // trails are looked for at every second
    const int right = std::min(m_series.Width(), column + m_columns);
    band.width = std::min(m_series.Width(), right + m_margin) - band.left;
    if (!ReadCodes(band)) return false;
    TakeMedians(band);
    for (std::size_t i = 0; i < m_frames.size(); ++i) {
        std::vector<NewSource> found;
        Compare(band, i, found);
        for (NewSource& source : found) source.x += band.left;
        std::erase_if(found, [&](const NewSource& source) { // the next one's
            return std::lround(source.x) < column || std::lround(source.x) >= right;
        });
        const std::lock_guard lock(m_mutex);
        m_sources[i].insert(m_sources[i].end(), found.begin(), found.end());
    }
    return true;
}

bool Search::ReadCodes(Band& band) const {
    band.codes.resize(std::size_t(band.rows) * std::size_t(band.width) * m_frames.size());
    std::int16_t* to = band.codes.data();
    for (std::size_t i = 0; i < m_frames.size(); ++i) {
        if (band.width == m_series.Width()) {
            if (!m_series.Read(i, 0, band.first, band.rows, to)) return false;
            to += std::ptrdiff_t(band.rows) * band.width;
            continue;
        }
        for (int y = 0; y < band.rows; ++y, to += band.width)
            if (!m_series.ReadRun(i, 0, band.left, band.first + y, band.width, to)) return false;
    }
    return true;
}

void Search::TakeMedians(Band& band) const {
    const std::size_t samples = std::size_t(band.rows) * std::size_t(band.width);
    for (const std::vector<std::size_t>& frames : m_medians.frames) {
        std::vector<const std::int16_t*> rows;
        for (const std::size_t frame : frames) rows.push_back(CodesOf(band, frame));
        band.medians.emplace_back(samples);
        MedianRows(rows.size()).Take(rows, samples, band.medians.back().data());
    }
}

// Of the light of a star, what its difference is on average; stars change their width a little in
// ways that one number does not tell.
float Search::LeftOfStars(Field& difference, Field& median, float noise) const {
    std::vector<float> parts;
    const std::vector<float>& values = median.Values();
    for (std::size_t i = 0; i < values.size(); ++i)
        if (values[i] > kBright * noise)
            parts.push_back(std::abs(difference.Values()[i]) / values[i]);
    if (parts.size() < 50) return 2 * kLeastOfStar;
    return std::max(kLeastOfStar, float(kDeviationOfMad) * MedianInPlace(std::span(parts)));
}

void Search::Compare(const Band& band, std::size_t frame, std::vector<NewSource>& found) const {
    Field difference(band.width, band.rows);
    Field median(band.width, band.rows);
    const std::int16_t* codes = CodesOf(band, frame);
    const std::vector<float>& middle = band.medians[m_medians.of[frame]];
    for (std::size_t i = 0; i < middle.size(); ++i) {
        const bool is = codes[i] != kNoSample && !std::isnan(middle[i]);
        difference.Values()[i] = is ? SampleCodes::Deviations(codes[i]) : 0;
        median.Values()[i] = is ? middle[i] : 0;
    }
    difference.Blur(KernelOf(m_widths[frame].forFrame));
    median.Blur(KernelOf(m_widths[frame].forMedian));
    for (std::size_t i = 0; i < middle.size(); ++i) difference.Values()[i] -= median.Values()[i];
    std::vector<float> some;
    for (std::size_t i = 0; i < middle.size(); i += 7)
        if (difference.Values()[i] != 0) some.push_back(std::abs(difference.Values()[i]));
    if (some.empty()) return;
    const float noise = float(kDeviationOfMad) * MedianInPlace(std::span(some));
    const float ofStar = LeftOfStars(difference, median, noise);
    FindPeaks(band, frame, difference, median, ofStar, found);
    const double longest = LongestTrail(m_frames[frame], m_pace);
    if (longest < kWorthTrails * kWidthOfSigma * m_frames[frame].sigma) return;
    for (std::size_t i = 0; i < middle.size(); ++i)
        if (ofStar * median.Values()[i] > noise) difference.Values()[i] = 0;
    StreakSearch(difference, m_frames[frame].sigma, longest)
        .Find(band.begin - band.first, band.end - band.first, band.first, found);
}

// The place of the top of a parabola through three.
double Top(float before, float at, float behind) {
    const float bend = before - 2 * at + behind;
    return bend < 0 ? std::clamp(0.5 * (before - behind) / bend, -0.5, 0.5) : 0;
}

// What the frame has there above the median.
float Search::Unfiltered(const Band& band, std::size_t frame, int x, int y) const {
    const std::size_t at = std::size_t(y) * std::size_t(band.width) + std::size_t(x);
    return SampleCodes::Deviations(CodesOf(band, frame)[at]) -
           band.medians[m_medians.of[frame]][at];
}

void Search::FindPeaks(const Band& band, std::size_t frame, const Field& difference,
                       const Field& median, float ofStar, std::vector<NewSource>& found) const {
    const SampleCodes& codes = m_series.Codes(0);
    const float sky = codes.Sky() > 0 ? codes.Sky() / codes.Unit() : 0;
    const int top = std::max(band.begin - band.first, 1);
    const int bottom = std::min(band.end - band.first, band.rows - 1);
    std::vector<float> some;
    for (int left = 1; left < band.width - 1; left += kBlock) {
        const int right = std::min(left + kBlock, band.width - 1);
        some.clear();
        for (int y = 0; y < band.rows; y += 2)
            for (int x = left; x < right; x += 2)
                if (difference.At(x, y) != 0) some.push_back(std::abs(difference.At(x, y)));
        if (some.size() < 64) continue;
        const float noise = float(kDeviationOfMad) * MedianInPlace(std::span(some));
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x) {
                const float value = difference.At(x, y);
                if (value < kLeastSignal * noise) continue;
                bool isTop = true;
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx)
                        isTop = isTop && difference.At(x + dx, y + dy) <= value;
                if (!isTop) continue;
                const float light = std::max(0.0F, median.At(x, y));
                const float ofLight = sky > 0 ? light / sky : 0;
                const float deviation =
                    std::sqrt(noise * noise * (1 + ofLight) + ofStar * light * ofStar * light);
                if (value < kLeastSignal * deviation) continue;
                found.push_back(
                    {x + Top(difference.At(x - 1, y), value, difference.At(x + 1, y)),
                     band.first + y + Top(difference.At(x, y - 1), value, difference.At(x, y + 1)),
                     value / deviation, 0, Unfiltered(band, frame, x, y) / value});
            }
    }
}

// A line through a point is nearly as strong as the point.
float WorthOf(const NewSource& source) {
    constexpr float kLine = 0.85F;
    return source.blur > 0 ? kLine * source.signal : source.signal;
}

constexpr double kHalfOfBlur = 0.5 / kBlurOfLength;

// Sources beside each other in one frame are parts of one that is drawn out: its strongest sight
// stands for it. What is longer than a mover can be is a trail, and left out.
void JoinTrails(double width, double longest, std::vector<NewSource>& sources) {
    std::sort(sources.begin(), sources.end(),
              [](const NewSource& one, const NewSource& other) { return one.x < other.x; });
    std::vector<std::size_t> chain(sources.size());
    std::iota(chain.begin(), chain.end(), 0U);
    const auto head = [&](std::size_t i) {
        while (chain[i] != i) i = chain[i] = chain[chain[i]];
        return i;
    };
    // A line that only ends in a bright point is seen beside it.
    const auto reachOf = [&](const NewSource& one, const NewSource& other) {
        const double blur = std::max(one.blur, other.blur);
        return blur > 0 ? kHalfOfBlur * blur + width : kChain * width;
    };
    const double near = std::max(kChain * width, longest / 2 + width);
    for (std::size_t i = 0; i < sources.size(); ++i)
        for (std::size_t j = i + 1; j < sources.size() && sources[j].x - sources[i].x < near; ++j)
            if (std::hypot(sources[j].x - sources[i].x, sources[j].y - sources[i].y) <
                reachOf(sources[i], sources[j]))
                chain[head(j)] = head(i);
    struct Extent {
        std::size_t links = 0;
        std::size_t strongest = 0;
        float peak = 0;
        double left = 1e30, right = -1e30, top = 1e30, bottom = -1e30;
    };
    std::vector<Extent> extents(sources.size());
    for (std::size_t i = 0; i < sources.size(); ++i) {
        Extent& extent = extents[head(i)];
        if (extent.links++ == 0 || WorthOf(sources[i]) > WorthOf(sources[extent.strongest]))
            extent.strongest = i;
        extent.peak = std::max(extent.peak, sources[i].peak);
        extent.left = std::min(extent.left, sources[i].x);
        extent.right = std::max(extent.right, sources[i].x);
        extent.top = std::min(extent.top, sources[i].y);
        extent.bottom = std::max(extent.bottom, sources[i].y);
    }
    std::vector<NewSource> left;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const Extent& extent = extents[head(i)];
        const double length = std::hypot(extent.right - extent.left, extent.bottom - extent.top);
        if (extent.links >= kLongChain &&
            length > std::max(kLongTrail * width, longest + 2 * width))
            continue;
        if (longest >= kWorthTrails * width && extent.strongest != i) continue;
        left.push_back(sources[i]);
        if (extent.strongest == i) left.back().peak = extent.peak;
    }
    sources = std::move(left);
}

} // namespace

std::string FindNewSources(const WarpedSeries& series, std::span<const DifferenceFrame> frames,
                           const Pace& pace, const SeriesWatch& watch,
                           std::vector<std::vector<NewSource>>& sources, std::size_t bytes) {
    std::string fault = Search(series, frames, pace, watch, sources, bytes).Do();
    if (!fault.empty()) return fault;
    for (std::size_t i = 0; i < frames.size(); ++i)
        JoinTrails(kWidthOfSigma * frames[i].sigma, LongestTrail(frames[i], pace), sources[i]);
    return {};
}

} // namespace tarn
