#include "sky/movers/TrackFit.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>
#include <unordered_map>

namespace tarn {

namespace {

constexpr double kWild = 8;              // deviations of a sample from its place's middle
constexpr int kSpare = 3;                // samples that the way may shift meanwhile
constexpr double kReach = 3.5;           // star sigmas that count
constexpr std::size_t kFewestOfPart = 8; // frames

// What a star of one unit of light is in samples, drawn out along a line while it is exposed.
class Profile {
public:
    Profile(double sigma, double trailX, double trailY)
        : m_sigma(sigma), m_length(std::hypot(trailX, trailY)),
          m_alongX(m_length > 0 ? trailX / m_length : 1),
          m_alongY(m_length > 0 ? trailY / m_length : 0) {}

    double At(double x, double y) const {
        const double along = x * m_alongX + y * m_alongY;
        const double across = y * m_alongX - x * m_alongY;
        const double peak = 1 / (std::sqrt(2 * std::numbers::pi) * m_sigma);
        const double side = peak * std::exp(-across * across / (2 * m_sigma * m_sigma));
        if (m_length < kPoint * m_sigma)
            return side * peak * std::exp(-along * along / (2 * m_sigma * m_sigma));
        const double scale = 1 / (std::numbers::sqrt2 * m_sigma);
        return side *
               (std::erf((along + m_length / 2) * scale) -
                std::erf((along - m_length / 2) * scale)) /
               (2 * m_length);
    }

private:
    static constexpr double kPoint = 0.3;

    double m_sigma;
    double m_length;
    double m_alongX;
    double m_alongY;
};

// Some frames' samples at the places that a mover passes in them.
class PartOfWay {
public:
    PartOfWay(const WarpedSeries& series, std::span<const DifferenceFrame> all,
              std::vector<std::size_t> which, const Track& track)
        : m_series(series), m_which(std::move(which)), m_track(track) {
        for (const std::size_t i : m_which) m_frames.push_back(all[i]);
        for (std::size_t i = 0; i < m_frames.size(); ++i) {
            const int reach = ReachOf(i) + kSpare + int(TrailOf(track, all) / 4);
            const int x = int(std::lround(track.XAt(m_frames[i].hours)));
            const int y = int(std::lround(track.YAt(m_frames[i].hours)));
            for (int row = std::max(0, y - reach); row <= std::min(series.Height() - 1, y + reach);
                 ++row)
                for (int column = std::max(0, x - reach);
                     column <= std::min(series.Width() - 1, x + reach); ++column)
                    if (m_number.try_emplace(KeyOf(column, row), m_places.size()).second)
                        m_places.push_back({column, row});
        }
    }

    // Whether a mover is drawn out while it is exposed. Some are not: the header has another time
    // than that of the light, or a picture is a sum of short ones.
    void SetDrawn(bool drawn) { m_drawn = drawn; }

    std::size_t Values() const { return m_places.size() * m_frames.size(); }

    // False where the disk errs.
    bool Read() {
        std::sort(m_places.begin(), m_places.end(), [](const Spot& one, const Spot& other) {
            return std::pair(one.y, one.x) < std::pair(other.y, other.x);
        });
        for (std::size_t i = 0; i < m_places.size(); ++i)
            m_number[KeyOf(m_places[i].x, m_places[i].y)] = i;
        m_values.assign(m_frames.size() * m_places.size(), 0);
        std::vector<std::int16_t> codes;
        for (std::size_t frame = 0; frame < m_frames.size(); ++frame)
            for (std::size_t begin = 0; begin < m_places.size();) {
                std::size_t end = begin + 1;
                while (end < m_places.size() && m_places[end].y == m_places[begin].y &&
                       m_places[end].x == m_places[end - 1].x + 1)
                    ++end;
                codes.resize(end - begin);
                if (!m_series.ReadRun(m_which[frame], 0, m_places[begin].x, m_places[begin].y,
                                      int(end - begin), codes.data()))
                    return false;
                for (std::size_t i = begin; i < end; ++i)
                    Value(frame, i) = codes[i - begin] == kNoSample
                                          ? std::numeric_limits<float>::quiet_NaN()
                                          : SampleCodes::Deviations(codes[i - begin]);
                begin = end;
            }
        TakeMiddles();
        return true;
    }

    // Of the whole way, by which its ends are told.
    void SetHours(double first, double last) {
        m_first = first;
        m_last = last;
    }

    void Sum(const std::array<double, 4>& ends, double& above, double& below);

    // Of each frame with the sky that a mover of this light leaves; after `Sum`.
    void TakeSights(const std::array<double, 4>& ends, double flux,
                    std::vector<TrackSight>& sights);

private:
    struct Spot {
        int x;
        int y;
    };
    struct Sums { // of one place over the frames
        double profile = 0;
        double squares = 0;
        double values = 0;
    };

    static std::int64_t KeyOf(int x, int y) { return (std::int64_t(y) << 32) + x; }
    int ReachOf(std::size_t frame) const {
        const double trail = std::hypot(m_track.speedX, m_track.speedY) * m_frames[frame].exposure;
        return int(std::ceil(kReach * m_frames[frame].sigma + 0.55 * trail));
    }
    float& Value(std::size_t frame, std::size_t place) {
        return m_values[frame * m_places.size() + place];
    }
    void TakeMiddles();
    double Exposure(std::size_t frame) const { return m_drawn ? m_frames[frame].exposure : 0; }
    bool IsLit(std::size_t frame, std::size_t place) const;
    // Of each place that the mover lights in a frame, with its profile there.
    template <typename Visit>
    bool Each(const std::array<double, 4>& ends, std::size_t frame, const Visit& visit);

    const WarpedSeries& m_series;
    std::vector<std::size_t> m_which; // of all frames
    std::vector<DifferenceFrame> m_frames;
    Track m_track; // as it is known so far
    bool m_drawn = false;
    std::unordered_map<std::int64_t, std::size_t> m_number;
    std::vector<Spot> m_places;
    std::vector<float> m_values;  // less their mean over the frames
    std::vector<float> m_weights; // of the places
    std::vector<int> m_counts;    // frames that have a value there
    std::vector<Sums> m_sums;
    double m_first = 0;
    double m_last = 1;
};

// By the mover, as far as is known.
bool PartOfWay::IsLit(std::size_t frame, std::size_t place) const {
    const double hours = m_frames[frame].hours;
    return std::hypot(m_places[place].x - m_track.XAt(hours),
                      m_places[place].y - m_track.YAt(hours)) <= ReachOf(frame) + 1;
}

// What hits and trails bring is cut off; the mean, not the median, is what the fit goes by.
void PartOfWay::TakeMiddles() {
    m_weights.assign(m_places.size(), 0);
    m_counts.assign(m_places.size(), 0);
    m_sums.resize(m_places.size());
    std::vector<double> values;
    for (std::size_t place = 0; place < m_places.size(); ++place) {
        values.clear();
        for (std::size_t frame = 0; frame < m_frames.size(); ++frame)
            if (!std::isnan(Value(frame, place))) values.push_back(Value(frame, place));
        if (values.size() < 3) continue;
        const double middle = MedianOf(values);
        const double spread = std::max(1.0, DeviationOf(values));
        double mean = 0;
        for (std::size_t frame = 0; frame < m_frames.size(); ++frame) {
            float& value = Value(frame, place);
            if (std::isnan(value)) continue;
            if (!IsLit(frame, place))
                value = float(
                    std::clamp(double(value), middle - kWild * spread, middle + kWild * spread));
            mean += value / double(values.size());
        }
        for (std::size_t frame = 0; frame < m_frames.size(); ++frame)
            Value(frame, place) -= float(mean);
        m_weights[place] = float(1 / (spread * spread));
        m_counts[place] = int(values.size());
    }
}

template <typename Visit>
bool PartOfWay::Each(const std::array<double, 4>& ends, std::size_t frame, const Visit& visit) {
    const double part = (m_frames[frame].hours - m_first) / (m_last - m_first);
    const double x = std::lerp(ends[0], ends[2], part);
    const double y = std::lerp(ends[1], ends[3], part);
    const double hours = m_last - m_first;
    const Profile profile(m_frames[frame].sigma, (ends[2] - ends[0]) * Exposure(frame) / hours,
                          (ends[3] - ends[1]) * Exposure(frame) / hours);
    const int reach = ReachOf(frame);
    bool whole = true;
    for (int row = int(std::lround(y)) - reach; row <= int(std::lround(y)) + reach; ++row)
        for (int column = int(std::lround(x)) - reach; column <= int(std::lround(x)) + reach;
             ++column) {
            const auto found = m_number.find(KeyOf(column, row));
            if (found == m_number.end() || m_counts[found->second] == 0 ||
                std::isnan(Value(frame, found->second))) {
                whole = false;
                continue;
            }
            visit(found->second, profile.At(column - x, row - y));
        }
    return whole;
}

void PartOfWay::Sum(const std::array<double, 4>& ends, double& above, double& below) {
    std::fill(m_sums.begin(), m_sums.end(), Sums());
    for (std::size_t frame = 0; frame < m_frames.size(); ++frame)
        Each(ends, frame, [&](std::size_t place, double profile) {
            Sums& sums = m_sums[place];
            sums.profile += profile;
            sums.squares += profile * profile;
            sums.values += profile * double(Value(frame, place));
        });
    for (std::size_t place = 0; place < m_places.size(); ++place) {
        if (m_counts[place] == 0) continue;
        const Sums& sums = m_sums[place];
        above += m_weights[place] * sums.values;
        below += m_weights[place] * (sums.squares - sums.profile * sums.profile / m_counts[place]);
    }
}

void PartOfWay::TakeSights(const std::array<double, 4>& ends, double flux,
                           std::vector<TrackSight>& sights) {
    for (std::size_t frame = 0; frame < m_frames.size(); ++frame) {
        TrackSight& sight = sights[m_which[frame]];
        double above = 0;
        double below = 0;
        sight.covered = Each(ends, frame, [&](std::size_t place, double profile) {
            const double own = flux * m_sums[place].profile / m_counts[place];
            above += m_weights[place] * profile * (double(Value(frame, place)) + own);
            below += m_weights[place] * profile * profile;
        });
        if (!(below > 0)) continue;
        sight.flux = above / below;
        sight.signal = above / std::sqrt(below);
    }
}

// All of it, in as many parts as keep it small.
class Way {
public:
    Way(const WarpedSeries& series, std::span<const DifferenceFrame> frames, const Track& track,
        std::size_t most)
        : m_frames(frames.size()) {
        std::vector<std::size_t> order(frames.size());
        std::iota(order.begin(), order.end(), 0U);
        std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
            return frames[one].hours < frames[other].hours;
        });
        m_parts.emplace_back(series, frames, order, track);
        if (const std::size_t count = PartsOf(m_parts.front().Values(), most); count > 1) {
            m_parts.clear();
            for (std::size_t i = 0; i < count; ++i)
                m_parts.emplace_back(
                    series, frames,
                    std::vector(order.begin() + std::ptrdiff_t(i * order.size() / count),
                                order.begin() + std::ptrdiff_t((i + 1) * order.size() / count)),
                    track);
        }
        for (const DifferenceFrame& frame : frames) {
            const double x = track.XAt(frame.hours);
            const double y = track.YAt(frame.hours);
            if (x < 0 || y < 0 || x >= series.Width() || y >= series.Height()) continue;
            m_first = std::min(m_first, frame.hours);
            m_last = std::max(m_last, frame.hours);
        }
    }

    bool IsAny() const { return m_last > m_first; }
    std::size_t Values() const {
        std::size_t values = 0;
        for (const PartOfWay& part : m_parts) values += part.Values();
        return values;
    }

    // False where the disk errs.
    bool Read() {
        for (PartOfWay& part : m_parts) {
            part.SetHours(m_first, m_last);
            if (!part.Read()) return false;
        }
        return true;
    }

    // Both ends of the way by which it is told: in the first and the last frame that have it.
    double FirstHours() const { return m_first; }
    double LastHours() const { return m_last; }

    void SetDrawn(bool drawn) {
        for (PartOfWay& part : m_parts) part.SetDrawn(drawn);
    }

    // How much better than nothing a mover is on this way: the square of its signal.
    double Worth(const std::array<double, 4>& ends) {
        const auto [above, below] = Sum(ends);
        return above > 0 && below > 0 ? above * above / below : 0;
    }

    std::vector<TrackSight> Sights(const std::array<double, 4>& ends) {
        const auto [above, below] = Sum(ends);
        const double flux = below > 0 ? above / below : 0;
        std::vector<TrackSight> sights(m_frames);
        for (PartOfWay& part : m_parts) part.TakeSights(ends, flux, sights);
        return sights;
    }

private:
    // Parts have their own places, so that n of them have an n-th of the values.
    std::size_t PartsOf(std::size_t values, std::size_t most) const {
        return std::min((values + most - 1) / most, m_frames / kFewestOfPart);
    }
    std::pair<double, double> Sum(const std::array<double, 4>& ends) {
        double above = 0;
        double below = 0;
        for (PartOfWay& part : m_parts) part.Sum(ends, above, below);
        return {above, below};
    }

    std::size_t m_frames;
    std::vector<PartOfWay> m_parts;
    double m_first = 1e30;
    double m_last = -1e30;
};

// Both ends along the way and across it, together and against each other, each in turn to the top
// of a parabola, in ever smaller steps.
void Climb(Way& way, double trail, std::array<double, 4>& ends) {
    constexpr double kFirst = 1.5; // samples
    constexpr double kLast = 0.08;
    constexpr double kSmaller = 0.6;
    const double length = std::hypot(ends[2] - ends[0], ends[3] - ends[1]);
    const double x = length > 0 ? (ends[2] - ends[0]) / length : 1;
    const double y = length > 0 ? (ends[3] - ends[1]) / length : 0;
    const std::array<std::array<double, 4>, 4> directions{
        {{x, y, x, y}, {-x, -y, x, y}, {-y, x, -y, x}, {y, -x, -y, x}}};
    const auto moved = [&](const std::array<double, 4>& by, double step) {
        std::array<double, 4> there = ends;
        for (std::size_t i = 0; i < there.size(); ++i) there[i] += step * by[i];
        return there;
    };
    double here = way.Worth(ends);
    for (double step = std::max(kFirst, trail / 3); step > kLast; step *= kSmaller)
        for (const std::array<double, 4>& direction : directions) {
            const double before = way.Worth(moved(direction, -step));
            const double behind = way.Worth(moved(direction, step));
            const double bend = before - 2 * here + behind;
            double to = before > behind ? -step : step;
            if (bend < 0) to = std::clamp(0.5 * step * (before - behind) / bend, -step, step);
            const std::array<double, 4> there = moved(direction, to);
            const double worth = way.Worth(there);
            if (worth <= here) continue;
            ends = there;
            here = worth;
        }
}

} // namespace

double TrailOf(const Track& track, std::span<const DifferenceFrame> frames) {
    double exposure = 0;
    for (const DifferenceFrame& frame : frames) exposure = std::max(exposure, frame.exposure);
    return exposure * std::hypot(track.speedX, track.speedY);
}

std::optional<MeasuredTrack> MeasureTrack(const WarpedSeries& series,
                                          std::span<const DifferenceFrame> frames, Track track,
                                          std::string& fault, std::size_t most) {
    constexpr int kRounds = 5;   // a way is measured where it is thought to be
    constexpr double kStays = 1; // samples
    for (int round = 1;; ++round) {
        constexpr std::size_t kOver = 4; // times as many as there should be
        Way way(series, frames, track, most);
        if (!way.IsAny()) return std::nullopt;
        if (way.Values() > kOver * most)
            fault = "not enough memory for a track of so many frames";
        else if (!way.Read())
            fault = "the disk is full or errs";
        if (!fault.empty()) return std::nullopt;
        const double first = way.FirstHours();
        const double last = way.LastHours();
        const std::array<double, 4> start{track.XAt(first), track.YAt(first), track.XAt(last),
                                          track.YAt(last)};
        std::array<double, 4> ends = start;
        Climb(way, 0, ends);
        double worth = way.Worth(ends);
        std::array<double, 4> drawn = start;
        way.SetDrawn(true);
        Climb(way, TrailOf(track, frames), drawn);
        const double worthDrawn = way.Worth(drawn);
        way.SetDrawn(worthDrawn > worth);
        if (worthDrawn > worth) ends = drawn;
        worth = std::max(worth, worthDrawn);
        if (!(worth > 0)) return std::nullopt;
        track.speedX = (ends[2] - ends[0]) / (last - first);
        track.speedY = (ends[3] - ends[1]) / (last - first);
        track.x = ends[0] - track.speedX * first;
        track.y = ends[1] - track.speedY * first;
        double moved = 0;
        for (std::size_t i = 0; i < ends.size(); ++i)
            moved = std::max(moved, std::abs(ends[i] - start[i]));
        if (moved > kStays && round < kRounds) continue;
        MeasuredTrack measured{std::move(track), std::sqrt(worth), way.Sights(ends)};
        for (TrackSight& sight : measured.sights) sight.flux *= double(series.Codes(0).Unit());
        return measured;
    }
}

} // namespace tarn
