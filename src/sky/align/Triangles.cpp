#include "sky/align/Triangles.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace tarn {

namespace {

constexpr std::size_t kNeighbours = 6;
constexpr double kShortest = 12; // pixels of the longest side at least
constexpr double kFlattest = 0.12;
constexpr double kAlike = 0.97;
constexpr double kDifference = 0.008; // of both sides that is still one shape
constexpr std::size_t kMostPairs = 20000;

double Distance(const StarPlace& one, const StarPlace& other) {
    return std::hypot(double(one.x) - other.x, double(one.y) - other.y);
}

std::vector<std::size_t> Nearest(std::span<const StarPlace> stars, std::size_t to) {
    std::vector<std::size_t> others;
    for (std::size_t i = 0; i < stars.size(); ++i)
        if (i != to) others.push_back(i);
    const std::size_t count = std::min(kNeighbours, others.size());
    std::partial_sort(others.begin(), others.begin() + std::ptrdiff_t(count), others.end(),
                      [&](std::size_t one, std::size_t other) {
                          return Distance(stars[one], stars[to]) <
                                 Distance(stars[other], stars[to]);
                      });
    others.resize(count);
    return others;
}

bool MakeTriangle(std::span<const StarPlace> stars, std::array<std::size_t, 3> corners,
                  StarTriangle& triangle) {
    const auto opposite = [&](std::size_t corner) {
        return Distance(stars[corners[(corner + 1) % 3]], stars[corners[(corner + 2) % 3]]);
    };
    std::array<std::pair<double, std::size_t>, 3> sides{
        {{opposite(0), corners[0]}, {opposite(1), corners[1]}, {opposite(2), corners[2]}}};
    std::sort(sides.rbegin(), sides.rend());
    const double longest = sides[0].first;
    if (longest < kShortest) return false;
    triangle.middle = sides[1].first / longest;
    triangle.shortest = sides[2].first / longest;
    triangle.stars = {sides[0].second, sides[1].second, sides[2].second};
    const bool isFlat = triangle.middle + triangle.shortest < 1 + kFlattest;
    return !isFlat && triangle.middle < kAlike && triangle.shortest < kAlike * triangle.middle;
}

} // namespace

std::vector<StarTriangle> TrianglesOf(std::span<const StarPlace> stars) {
    std::vector<StarTriangle> triangles;
    std::set<std::array<std::size_t, 3>> known;
    for (std::size_t star = 0; star < stars.size(); ++star) {
        const std::vector<std::size_t> near = Nearest(stars, star);
        for (std::size_t i = 0; i < near.size(); ++i)
            for (std::size_t j = i + 1; j < near.size(); ++j) {
                std::array<std::size_t, 3> corners{star, near[i], near[j]};
                std::sort(corners.begin(), corners.end());
                StarTriangle triangle;
                if (known.insert(corners).second && MakeTriangle(stars, corners, triangle))
                    triangles.push_back(triangle);
            }
    }
    std::sort(triangles.begin(), triangles.end(),
              [](const StarTriangle& one, const StarTriangle& other) {
                  return one.middle < other.middle;
              });
    return triangles;
}

std::vector<TrianglePair> LikePairs(const std::vector<StarTriangle>& here,
                                    const std::vector<StarTriangle>& there) {
    std::vector<TrianglePair> pairs;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < here.size(); ++i) {
        while (begin < there.size() && there[begin].middle < here[i].middle - kDifference) ++begin;
        for (std::size_t j = begin;
             j < there.size() && there[j].middle <= here[i].middle + kDifference; ++j) {
            const double difference =
                std::hypot(here[i].middle - there[j].middle, here[i].shortest - there[j].shortest);
            if (difference < kDifference) pairs.push_back({i, j, difference});
        }
    }
    std::sort(pairs.begin(), pairs.end(), [](const TrianglePair& one, const TrianglePair& other) {
        return one.difference < other.difference;
    });
    if (pairs.size() > kMostPairs) pairs.resize(kMostPairs);
    return pairs;
}

} // namespace tarn
