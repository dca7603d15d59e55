#include "sky/movers/Tracks.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <optional>
#include <tuple>
#include <unordered_map>

namespace tarn {

namespace {

constexpr double kStillRadius = 1.2; // samples
constexpr std::size_t kStillFrames = 3;
constexpr double kStillWay = 2.5;  // samples that the slowest moves meanwhile
constexpr float kNarrow = 3;       // of a source's peak, where a star has 2
constexpr double kError = 0.35;    // of a source's place
constexpr double kNear = 1;        // of a source and its track, at the least
constexpr double kFarthest = 4;    // and at the most, however uncertain it still is
constexpr double kSlowSeed = 40;   // samples between the first two of a slow track
constexpr std::size_t kFewest = 3; // moments
// Frames between the first two sources of a track; over the longer ways only slow ones are begun.
constexpr std::array<std::size_t, 7> kSeedSteps{1, 2, 3, 5, 8, 13, 20};
constexpr std::size_t kFastSteps = 3;

struct Place {
    double x;
    double y;
};

// Points by place.
class Cells {
public:
    void Add(const Place& place, std::size_t what) {
        m_cells[KeyOf(CellOf(place.x), CellOf(place.y))].push_back({place, what});
    }
    template <typename Visit>
    void Each(const Place& around, double radius, const Visit& visit) const {
        for (int row = CellOf(around.y - radius); row <= CellOf(around.y + radius); ++row)
            for (int column = CellOf(around.x - radius); column <= CellOf(around.x + radius);
                 ++column) {
                const auto cell = m_cells.find(KeyOf(column, row));
                if (cell == m_cells.end()) continue;
                for (const auto& [place, what] : cell->second) {
                    const double distance = std::hypot(place.x - around.x, place.y - around.y);
                    if (distance <= radius) visit(what, distance);
                }
            }
    }

private:
    static constexpr double kCell = 16;

    static int CellOf(double place) { return int(std::floor(place / kCell)); }
    static std::int64_t KeyOf(int column, int row) {
        return std::int64_t(row) * (std::int64_t(1) << 32) + column;
    }
    std::unordered_map<std::int64_t, std::vector<std::pair<Place, std::size_t>>> m_cells;
};

struct Seen { // one source
    std::size_t frame;
    std::size_t number; // in its frame
    Place place;
    float peak;
};

// Marks those that have others so near, for so long, and are at least so narrow on the whole.
void MarkStill(std::span<const TrackFrame> frames, double slowest, const std::vector<Seen>& seen,
               float narrow, std::vector<bool>& still) {
    std::vector<float> peaks;
    Cells cells;
    for (std::size_t i = 0; i < seen.size(); ++i) cells.Add(seen[i].place, i);
    for (std::size_t i = 0; i < seen.size(); ++i) {
        peaks.clear();
        double first = 1e30;
        double last = -1e30;
        cells.Each(seen[i].place, kStillRadius, [&](std::size_t other, double) {
            peaks.push_back(seen[other].peak);
            first = std::min(first, frames[seen[other].frame].hours);
            last = std::max(last, frames[seen[other].frame].hours);
        });
        if (peaks.size() >= kStillFrames && slowest * (last - first) > kStillWay &&
            MedianInPlace(std::span(peaks)) >= narrow)
            still[i] = true;
    }
}

// A straight way through sources, by least squares.
class Line {
public:
    void Add(double hours, const Place& place) {
        m_count += 1;
        m_t += hours;
        m_tt += hours * hours;
        m_x += place.x;
        m_y += place.y;
        m_tx += hours * place.x;
        m_ty += hours * place.y;
    }
    double SpeedX() const { return (m_count * m_tx - m_t * m_x) / Spread(); }
    double SpeedY() const { return (m_count * m_ty - m_t * m_y) / Spread(); }
    Place At(double hours) const {
        const double off = hours - m_t / m_count;
        return {m_x / m_count + SpeedX() * off, m_y / m_count + SpeedY() * off};
    }
    double ErrorAt(double hours) const {
        const double off = hours - m_t / m_count;
        return kError * std::sqrt(1 / m_count + off * off * m_count / Spread());
    }

private:
    double Spread() const { return m_count * m_tt - m_t * m_t; }

    double m_count = 0;
    double m_t = 0, m_tt = 0, m_x = 0, m_y = 0, m_tx = 0, m_ty = 0;
};

class Linking {
public:
    Linking(std::span<const TrackFrame> frames, const Pace& pace,
            const std::vector<std::vector<NewSource>>& sources)
        : m_frames(frames), m_pace(pace), m_sources(sources), m_cells(frames.size()),
          m_order(frames.size()) {
        std::iota(m_order.begin(), m_order.end(), 0U);
        std::stable_sort(m_order.begin(), m_order.end(), [&](std::size_t one, std::size_t other) {
            return frames[one].hours < frames[other].hours;
        });
        for (std::size_t frame = 0; frame < frames.size(); ++frame)
            for (std::size_t i = 0; i < sources[frame].size(); ++i) {
                m_cells[frame].Add({sources[frame][i].x, sources[frame][i].y}, i);
                m_blur = std::max(m_blur, double(sources[frame][i].blur));
            }
        for (const auto& each : sources) m_used.emplace_back(each.size(), false);
    }

    std::vector<Track> Tracks() {
        for (std::size_t first = 0; first < m_order.size(); ++first)
            for (std::size_t step = 0; step < kSeedSteps.size(); ++step)
                if (first + kSeedSteps[step] < m_order.size())
                    Seed(first, first + kSeedSteps[step], step < kFastSteps);
        // The longest first: chance takes no source of a true one.
        std::stable_sort(m_found.begin(), m_found.end(), [](const Found& one, const Found& other) {
            return one.members.size() > other.members.size();
        });
        std::vector<Track> tracks;
        for (const Found& found : m_found) Take(found, tracks);
        return tracks;
    }

private:
    struct Member {
        std::size_t frame;
        std::size_t source;
        bool operator==(const Member&) const = default;
    };
    struct Found {
        Line line;
        std::vector<Member> members;
    };

    Place PlaceOf(const Member& member) const {
        const NewSource& source = m_sources[member.frame][member.source];
        return {source.x, source.y};
    }
    std::size_t MomentsOf(const std::vector<Member>& members) const {
        if (members.size() < kFewest) return members.size();
        std::vector<double> hours;
        for (const Member& member : members) hours.push_back(m_frames[member.frame].hours);
        return CountMoments(std::move(hours));
    }
    Line LineOf(const std::vector<Member>& members) const {
        Line line;
        for (const Member& member : members)
            line.Add(m_frames[member.frame].hours, PlaceOf(member));
        return line;
    }

    void Seed(std::size_t first, std::size_t second, bool fast) {
        const std::size_t here = m_order[first];
        const std::size_t there = m_order[second];
        const double hours = m_frames[there].hours - m_frames[here].hours;
        if (!(hours > 0)) return;
        double reach = m_pace.fastest * hours + 1;
        if (!fast) reach = std::min(reach, kSlowSeed);
        for (std::size_t i = 0; i < m_sources[here].size(); ++i) {
            const Member begin{here, i};
            m_cells[there].Each(PlaceOf(begin), reach, [&](std::size_t j, double) {
                if (!m_used[here][i] || !m_used[there][j]) Grow({begin, {there, j}}, first, second);
            });
        }
    }

    // From frame to frame away from the first two: what is nearest to where it must be.
    void Grow(std::vector<Member> members, std::size_t first, std::size_t second) {
        std::vector<std::size_t> others = m_order;
        std::erase_if(others, [&](std::size_t frame) {
            return frame == m_order[first] || frame == m_order[second];
        });
        const double middle =
            (m_frames[m_order[first]].hours + m_frames[m_order[second]].hours) / 2;
        std::stable_sort(others.begin(), others.end(), [&](std::size_t one, std::size_t other) {
            return std::abs(m_frames[one].hours - middle) <
                   std::abs(m_frames[other].hours - middle);
        });
        Line line = LineOf(members);
        for (const std::size_t frame : others)
            if (const auto next = Nearest(line, frame, true)) {
                members.push_back(*next);
                line.Add(m_frames[frame].hours, PlaceOf(*next));
            }
        if (MomentsOf(members) < kFewest) return;
        members.clear();
        for (const std::size_t frame : m_order)
            if (const auto next = Nearest(line, frame, false)) members.push_back(*next);
        if (MomentsOf(members) < kFewest) return;
        line = LineOf(members);
        const double speed = std::hypot(line.SpeedX(), line.SpeedY());
        if (!(speed >= m_pace.slowest && speed <= m_pace.fastest)) return;
        for (const Member& member : members) m_used[member.frame][member.source] = true;
        m_found.push_back({line, std::move(members)});
    }

    std::optional<Member> Nearest(const Line& line, std::size_t frame, bool grows) const {
        const double hours = m_frames[frame].hours;
        const double uncertain = 2.5 * line.ErrorAt(hours);
        const double reach = grows ? std::clamp(uncertain, kNear, kFarthest) : kNear + 0.2;
        std::optional<Member> nearest;
        double least = reach;
        m_cells[frame].Each(line.At(hours), reach + m_blur, [&](std::size_t i, double distance) {
            distance -= m_sources[frame][i].blur;
            if (distance > least) return;
            least = distance;
            nearest = Member{frame, i};
        });
        return nearest;
    }

    void Take(const Found& found, std::vector<Track>& tracks) {
        std::vector<Member> free;
        for (const Member& member : found.members)
            if (std::find(m_taken.begin(), m_taken.end(), member) == m_taken.end())
                free.push_back(member);
        if (MomentsOf(free) < kFewest || 2 * free.size() < found.members.size()) return;
        const Line line = LineOf(free);
        Track track;
        std::tie(track.x, track.y) = std::pair(line.At(0).x, line.At(0).y);
        track.speedX = line.SpeedX();
        track.speedY = line.SpeedY();
        for (const Member& member : free) track.frames.push_back(member.frame);
        m_taken.insert(m_taken.end(), free.begin(), free.end());
        tracks.push_back(std::move(track));
    }

    std::span<const TrackFrame> m_frames;
    const Pace& m_pace;
    const std::vector<std::vector<NewSource>>& m_sources;
    std::vector<Cells> m_cells;            // of each frame
    double m_blur = 0;                     // the largest of the sources
    std::vector<std::size_t> m_order;      // of the frames by time
    std::vector<std::vector<bool>> m_used; // sources of a track that was found
    std::vector<Found> m_found;
    std::vector<Member> m_taken;
};

} // namespace

std::size_t CountMoments(std::vector<double> hours) {
    constexpr double kApart = 0.5 / 3600;
    std::sort(hours.begin(), hours.end());
    std::size_t count = hours.empty() ? 0 : 1;
    double last = hours.empty() ? 0 : hours.front();
    for (const double each : hours) {
        if (each - last < kApart) continue;
        last = each;
        ++count;
    }
    return count;
}

void LeaveOutStill(std::span<const TrackFrame> frames, const Pace& pace,
                   std::vector<std::vector<NewSource>>& sources) {
    std::vector<Seen> inSky;
    std::vector<Seen> onSensor;
    for (std::size_t frame = 0; frame < frames.size(); ++frame)
        for (std::size_t i = 0; i < sources[frame].size(); ++i) {
            const NewSource& source = sources[frame][i];
            inSky.push_back({frame, i, {source.x, source.y}, source.peak});
            const auto [x, y] = frames[frame].back(source.x, source.y);
            onSensor.push_back({frame, i, {x, y}, source.peak});
        }
    std::vector<bool> still(inSky.size());
    MarkStill(frames, pace.slowest, inSky, 0, still);
    MarkStill(frames, pace.slowest, onSensor, kNarrow, still);
    std::vector<std::vector<NewSource>> left(frames.size());
    for (std::size_t i = 0; i < inSky.size(); ++i)
        if (!still[i]) left[inSky[i].frame].push_back(sources[inSky[i].frame][inSky[i].number]);
    sources = std::move(left);
}

std::vector<Track> FindTracks(std::span<const TrackFrame> frames, const Pace& pace,
                              const std::vector<std::vector<NewSource>>& sources) {
    return Linking(frames, pace, sources).Tracks();
}

} // namespace tarn
