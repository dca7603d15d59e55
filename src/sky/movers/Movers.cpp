#include "sky/movers/Movers.h"

#include "common/worker.h"
#include "sky/movers/Differences.h"
#include "sky/movers/HotPixels.h"
#include "sky/movers/TrackFit.h"
#include "sky/movers/Tracks.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>
#include <numeric>

namespace tarn {

namespace {

constexpr std::size_t kFewest = 3; // moments
constexpr char kTooFew[] = "fewer than three frames of its night";
constexpr double kSeen = 3;        // deviations of a frame's sight
constexpr double kLeastSignal = 9; // of all together
constexpr double kShare = 0.4;     // of the frames that have its place, in which it is seen
constexpr double kSame = 3;        // star sigmas between two tracks of one mover
constexpr double kWidthOfSigma = 2.3548;

class Finding {
public:
    Finding(std::span<const MoversFrame> frames, std::size_t reference, const FrameReader& read,
            const MoversOrder& order)
        : m_all(frames), m_reference(reference),
          m_order(order), m_pace{Pace().slowest / order.cell, Pace().fastest / order.cell},
          m_series(order.scratch, [&read](std::size_t number, std::string& error) {
              auto samples = read(number, error);
              return samples ? std::optional(WithoutHotPixels(*samples)) : std::nullopt;
          }) {}

    MoversResult Do() {
        m_result.faults.resize(m_all.size());
        std::string thrown;
        Guarded(thrown, [&] { return Find(), true; });
        if (!thrown.empty()) BreakOff(thrown);
        return std::move(m_result);
    }

private:
    void BreakOff(const std::string& fault) {
        m_result.cancelled = m_order.watch.IsCancelled();
        m_result.fault = m_result.cancelled ? "cancelled" : fault;
    }

    void Find() {
        if (Moments() < kFewest) return BreakOff(kTooFew);
        m_result.fault = m_series.SetReference(m_reference);
        if (!m_result.fault.empty() || !Warp()) return;
        std::vector<std::vector<NewSource>> sources;
        const std::string fault =
            FindNewSources(m_series, m_differences, m_pace, m_order.watch, sources);
        if (!fault.empty()) return BreakOff(fault);
        LeaveOutStill(m_frames, m_pace, sources);
        Measure(FindTracks(m_frames, m_pace, sources));
    }
    std::size_t Moments() const {
        std::vector<double> hours;
        for (const MoversFrame& frame : m_all) hours.push_back(frame.seconds / 3600);
        return CountMoments(std::move(hours));
    }
    bool Warp();
    void Measure(const std::vector<Track>& tracks);
    bool IsSame(const Track& track, const Track& other) const;
    bool IsMover(const MeasuredTrack& measured) const;
    Mover MoverOf(const MeasuredTrack& measured) const;

    std::span<const MoversFrame> m_all;
    std::size_t m_reference;
    const MoversOrder& m_order;
    Pace m_pace;
    WarpedSeries m_series;
    MoversResult m_result;
    std::vector<std::size_t> m_places; // in m_all of the frames that could be read
    std::vector<TrackFrame> m_frames;
    std::vector<DifferenceFrame> m_differences;
};

// Frames that cannot be read are left out, and the others warped again without them: it is rare.
bool Finding::Warp() {
    for (std::size_t i = 0; i < m_all.size(); ++i) m_places.push_back(i);
    for (bool again = true; again;) {
        std::vector<SeriesFrame> frames;
        for (const std::size_t place : m_places) frames.push_back(m_all[place].frame);
        std::vector<std::string> faults;
        if (!m_series.Make(frames, m_order.watch, faults)) {
            BreakOff(m_series.Fault());
            return false;
        }
        std::vector<std::size_t> left;
        for (std::size_t i = 0; i < faults.size(); ++i) {
            m_result.faults[m_places[i]] = faults[i];
            if (faults[i].empty()) left.push_back(m_places[i]);
        }
        again = left.size() < m_places.size();
        m_places = std::move(left);
        if (m_places.size() < kFewest) {
            BreakOff(kTooFew);
            return false;
        }
    }
    double first = m_all[m_places.front()].seconds;
    for (const std::size_t place : m_places) first = std::min(first, m_all[place].seconds);
    for (const std::size_t place : m_places) {
        const MoversFrame& frame = m_all[place];
        const double hours = (frame.seconds - first) / 3600;
        const double scale = std::sqrt(std::abs(frame.frame.map.Area()));
        m_frames.push_back({hours, Inverse(frame.frame.map)});
        const double exposure = std::isfinite(frame.exposure) ? frame.exposure / 3600 : 0;
        m_differences.push_back({hours, scale * frame.fwhm / kWidthOfSigma,
                                 std::clamp(exposure, 0.0, kLongestTrail / m_pace.fastest)});
    }
    return true;
}

void Finding::Measure(const std::vector<Track>& tracks) {
    std::vector<MeasuredTrack> kept;
    const auto isKept = [&](const Track& track) {
        return std::any_of(kept.begin(), kept.end(),
                           [&](const MeasuredTrack& other) { return IsSame(track, other.track); });
    };
    for (const Track& track : tracks) {
        if (m_order.watch.IsCancelled()) return BreakOff({});
        if (isKept(track)) continue;
        std::string fault;
        auto measured = MeasureTrack(m_series, m_differences, track, fault);
        if (!fault.empty()) return BreakOff(fault);
        if (!measured || !IsMover(*measured)) continue;
        const auto same = std::find_if(kept.begin(), kept.end(), [&](const MeasuredTrack& other) {
            return IsSame(measured->track, other.track);
        });
        if (same == kept.end())
            kept.push_back(std::move(*measured));
        else if (measured->signal > same->signal)
            *same = std::move(*measured);
    }
    std::stable_sort(kept.begin(), kept.end(),
                     [](const MeasuredTrack& one, const MeasuredTrack& other) {
                         return one.signal > other.signal;
                     });
    for (const MeasuredTrack& measured : kept) m_result.movers.push_back(MoverOf(measured));
}

// Whether it lies on the other one in most of the frames by which it was found.
bool Finding::IsSame(const Track& track, const Track& other) const {
    const double trail = TrailOf(other, m_differences);
    std::size_t near = 0;
    for (const std::size_t frame : track.frames) {
        const double hours = m_frames[frame].hours;
        const double apart =
            std::hypot(track.XAt(hours) - other.XAt(hours), track.YAt(hours) - other.YAt(hours));
        near += apart < kSame * m_differences[frame].sigma + trail / 2 ? 1 : 0;
    }
    return 2 * near > track.frames.size();
}

bool Finding::IsMover(const MeasuredTrack& measured) const {
    const double speed = std::hypot(measured.track.speedX, measured.track.speedY);
    std::size_t covered = 0;
    std::vector<double> seen;
    for (std::size_t i = 0; i < measured.sights.size(); ++i) {
        const TrackSight& sight = measured.sights[i];
        covered += sight.covered ? 1 : 0;
        if (sight.covered && sight.signal >= kSeen) seen.push_back(m_frames[i].hours);
    }
    return measured.signal >= kLeastSignal && speed >= m_pace.slowest && speed <= m_pace.fastest &&
           double(seen.size()) >= kShare * double(covered) && CountMoments(seen) >= kFewest;
}

Mover Finding::MoverOf(const MeasuredTrack& measured) const {
    Mover mover;
    mover.signal = measured.signal;
    mover.speed = std::hypot(measured.track.speedX, measured.track.speedY);
    mover.angle = std::atan2(measured.track.speedY, measured.track.speedX) * 180 / std::numbers::pi;
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < m_frames.size(); ++i)
        if (measured.sights[i].covered && measured.sights[i].signal >= kSeen) order.push_back(i);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        return m_frames[one].hours < m_frames[other].hours;
    });
    for (const std::size_t i : order) {
        const SeriesFrame& frame = m_all[m_places[i]].frame;
        const double hours = m_frames[i].hours;
        const auto [x, y] = m_frames[i].back(measured.track.XAt(hours), measured.track.YAt(hours));
        const double perFlux = 1 / (frame.light * std::abs(frame.map.Area()));
        mover.sights.push_back(
            {frame.number, x, y, measured.sights[i].flux * perFlux, measured.sights[i].signal});
    }
    return mover;
}

// By time, parted where the telescope rested for long.
std::vector<std::vector<std::size_t>> NightsOf(std::span<const MoversFrame> frames) {
    constexpr double kRest = 8 * 3600;
    std::vector<std::size_t> order(frames.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        return frames[one].seconds < frames[other].seconds;
    });
    std::vector<std::vector<std::size_t>> nights;
    for (const std::size_t i : order) {
        if (nights.empty() || frames[i].seconds - frames[nights.back().back()].seconds > kRest)
            nights.emplace_back();
        nights.back().push_back(i);
    }
    return nights;
}

} // namespace

MoversResult FindMovers(std::span<const MoversFrame> frames, std::size_t reference,
                        const FrameReader& read, const MoversOrder& order) {
    MoversResult all;
    all.faults.resize(frames.size());
    if (frames.size() < kFewest) all.fault = kTooFew;
    for (const std::vector<std::size_t>& night : NightsOf(frames)) {
        if (!all.fault.empty()) break;
        std::vector<MoversFrame> some;
        for (const std::size_t i : night) some.push_back(frames[i]);
        MoversResult found = Finding(some, reference, read, order).Do();
        for (std::size_t i = 0; i < night.size(); ++i)
            all.faults[night[i]] =
                found.faults[i].empty() && found.fault == kTooFew ? kTooFew : found.faults[i];
        all.movers.insert(all.movers.end(), std::make_move_iterator(found.movers.begin()),
                          std::make_move_iterator(found.movers.end()));
        all.cancelled = found.cancelled;
        if (found.fault != kTooFew) all.fault = found.fault;
    }
    return all;
}

} // namespace tarn
