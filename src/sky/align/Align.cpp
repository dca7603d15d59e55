#include "sky/align/Align.h"

#include "sky/align/Triangles.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include <Eigen/Cholesky>
#include <Eigen/Core>

namespace tarn {

namespace {

constexpr std::size_t kForTriangles = 50; // brightest stars that make triangles
constexpr std::size_t kMost = 400;        // that count at all
constexpr int kFewest = 5;                // that have to agree
constexpr double kShare = 0.34;
constexpr double kNear = 3;          // pixels of the reference
constexpr double kLeastWithin = 0.3; // the same, however well all agree
constexpr double kByChance = 1e-9;
constexpr double kLeastScale = 0.45;
constexpr double kMostScale = 2.2;
constexpr double kShear = 0.03; // of the scale that both directions may differ by

struct Pair {
    double x, y;         // in the frame
    double toX, toY;     // in the reference
    double distance = 0; // from where the map puts it
};

// The reference's stars by place.
class Sky {
public:
    explicit Sky(std::span<const StarPlace> stars) : m_stars(stars.begin(), stars.end()) {
        std::sort(m_stars.begin(), m_stars.end(),
                  [](const StarPlace& one, const StarPlace& other) { return one.x < other.x; });
        for (const StarPlace& star : m_stars) {
            m_left = std::min(m_left, double(star.x));
            m_right = std::max(m_right, double(star.x));
            m_top = std::min(m_top, double(star.y));
            m_bottom = std::max(m_bottom, double(star.y));
        }
    }

    bool Covers(double x, double y) const {
        return x >= m_left && x <= m_right && y >= m_top && y <= m_bottom;
    }
    const StarPlace* Nearest(double x, double y, double within) const {
        auto at = std::lower_bound(
            m_stars.begin(), m_stars.end(), x - within,
            [](const StarPlace& star, double place) { return double(star.x) < place; });
        const StarPlace* nearest = nullptr;
        for (; at != m_stars.end() && at->x <= x + within; ++at) {
            const double distance = std::hypot(at->x - x, at->y - y);
            if (distance > within) continue;
            within = distance;
            nearest = &*at;
        }
        return nearest;
    }
    // How likely one of its stars lies so near to any place, by chance.
    double Chance(double within) const {
        const double area = std::max(1.0, (m_right - m_left) * (m_bottom - m_top));
        return std::min(1.0, std::numbers::pi * within * within * double(m_stars.size()) / area);
    }

private:
    std::vector<StarPlace> m_stars;
    double m_left = 1e30;
    double m_right = -1e30;
    double m_top = 1e30;
    double m_bottom = -1e30;
};

struct Agreement {
    std::vector<Pair> pairs;
    int inside = 0; // stars of the frame that the reference has place for
};

Agreement AgreementOf(const FrameMap& map, std::span<const StarPlace> frame, const Sky& reference,
                      double within) {
    Agreement agreement;
    for (const StarPlace& star : frame) {
        const auto [x, y] = map(star.x, star.y);
        if (!reference.Covers(x, y)) continue;
        ++agreement.inside;
        if (const StarPlace* there = reference.Nearest(x, y, within))
            agreement.pairs.push_back(
                {star.x, star.y, there->x, there->y, std::hypot(there->x - x, there->y - y)});
    }
    return agreement;
}

// By least squares; none where the stars lie on a line.
std::optional<FrameMap> FittedMap(std::span<const Pair> pairs) {
    if (pairs.size() < 3) return std::nullopt;
    double meanX = 0;
    double meanY = 0;
    for (const Pair& pair : pairs) {
        meanX += pair.x / double(pairs.size());
        meanY += pair.y / double(pairs.size());
    }
    Eigen::Matrix3d normal = Eigen::Matrix3d::Zero();
    Eigen::Matrix<double, 3, 2> right = Eigen::Matrix<double, 3, 2>::Zero();
    for (const Pair& pair : pairs) {
        const Eigen::Vector3d place(pair.x - meanX, pair.y - meanY, 1);
        normal += place * place.transpose();
        right += place * Eigen::RowVector2d(pair.toX, pair.toY);
    }
    const Eigen::Matrix<double, 3, 2> solved = normal.ldlt().solve(right);
    if (!solved.allFinite()) return std::nullopt;
    FrameMap map{solved(0, 0), solved(1, 0), 0, solved(0, 1), solved(1, 1), 0};
    map.c = solved(2, 0) - map.a * meanX - map.b * meanY;
    map.f = solved(2, 1) - map.d * meanX - map.e * meanY;
    return map;
}

// Frames of one field differ by a turn, a scale and perhaps a mirror, hardly by more.
bool IsPossible(const FrameMap& map) {
    const double alongX = std::hypot(map.a, map.d);
    const double alongY = std::hypot(map.b, map.e);
    const double scale = std::sqrt(std::abs(map.Area()));
    return scale > kLeastScale && scale < kMostScale &&
           std::abs(alongX - alongY) < kShear * scale &&
           std::abs(map.a * map.b + map.d * map.e) < kShear * scale * scale;
}

// Three stars fit to any others. So many more of `inside` would do so by chance once in so many
// tries that it has not been by chance.
bool IsNoChance(const Alignment& found, int inside, const Sky& reference) {
    if (found.matched < kFewest || found.matched < kShare * inside) return false;
    const double chance = reference.Chance(std::max(kLeastWithin, 3 * found.residual));
    const double more = found.matched - 3;
    const double ways = std::lgamma(inside + 1.0) - std::lgamma(more + 1) -
                        std::lgamma(std::max(0.0, inside - more) + 1);
    return ways + more * std::log(chance) < std::log(kByChance);
}

// Fits again and again to those that still agree.
Alignment Refined(FrameMap map, std::span<const StarPlace> frame, const Sky& reference) {
    Alignment found;
    double within = kNear;
    for (int round = 0; round < 8; ++round) {
        const Agreement agreement = AgreementOf(map, frame, reference, within);
        const auto fitted = FittedMap(agreement.pairs);
        if (!fitted || int(agreement.pairs.size()) < kFewest) return found;
        double squares = 0;
        for (const Pair& pair : agreement.pairs) {
            const auto [x, y] = (*fitted)(pair.x, pair.y);
            squares += std::pow(pair.toX - x, 2) + std::pow(pair.toY - y, 2);
        }
        map = *fitted;
        found.map = map;
        found.matched = int(agreement.pairs.size());
        found.residual = std::sqrt(squares / double(agreement.pairs.size()));
        within = std::clamp(3 * found.residual, kLeastWithin, within);
    }
    return found;
}

} // namespace

Alignment Align(std::span<const StarPlace> frame, std::span<const StarPlace> reference) {
    Alignment none;
    none.fault = "too few stars to align";
    if (frame.size() < std::size_t(kFewest) || reference.size() < std::size_t(kFewest)) return none;
    frame = frame.first(std::min(kMost, frame.size()));
    reference = reference.first(std::min(kMost, reference.size()));
    const Sky sky(reference);
    const auto triangles = TrianglesOf(frame.first(std::min(kForTriangles, frame.size())));
    const auto known = TrianglesOf(reference.first(std::min(kForTriangles, reference.size())));
    none.fault = "no common stars found";
    Alignment best = none;
    for (const TrianglePair& like : LikePairs(triangles, known)) {
        std::array<Pair, 3> corners{};
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const StarPlace& here = frame[triangles[like.here].stars[i]];
            const StarPlace& there = reference[known[like.there].stars[i]];
            corners[i] = {here.x, here.y, there.x, there.y};
        }
        const auto map = FittedMap(corners);
        if (!map || !IsPossible(*map)) continue;
        const Agreement agreement = AgreementOf(*map, frame, sky, 2 * kNear);
        if (int(agreement.pairs.size()) < std::max(kFewest, best.matched + 1)) continue;
        const Alignment refined = Refined(*map, frame, sky);
        if (refined.matched <= best.matched || !IsPossible(refined.map)) continue;
        const Agreement all = AgreementOf(refined.map, frame, sky, kNear);
        if (!IsNoChance(refined, all.inside, sky)) continue;
        best = refined;
        if (double(all.pairs.size()) > 0.6 * all.inside && best.matched >= 3 * kFewest) break;
    }
    return best;
}

std::vector<std::optional<FrameMap>> MapsOnto(std::size_t reference,
                                              std::span<const FrameMeasures> frames) {
    std::vector<std::optional<FrameMap>> maps(frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (i == reference) {
            maps[i] = FrameMap();
            continue;
        }
        const Alignment found = Align(frames[i].brightest, frames[reference].brightest);
        if (found.fault.empty()) maps[i] = found.map;
    }
    return maps;
}

} // namespace tarn
