// Triangles of stars, which are known again however a frame is shifted, turned or scaled.
#pragma once

#include "sky/stars/FrameMeasures.h"

#include <array>
#include <span>
#include <vector>

namespace tarn {

struct StarTriangle {
    std::array<std::size_t, 3>
        stars{};       // opposite to the longest side, the middle one, the shortest
    double middle = 0; // sides over the longest
    double shortest = 0;
};

// Of each of the stars with its nearest neighbours among them; by the middle side, ascending.
// Those that are almost lines or have two sides almost alike are left out: a little noise would
// make others of them.
std::vector<StarTriangle> TrianglesOf(std::span<const StarPlace> stars);

struct TrianglePair {
    std::size_t here = 0; // indices of triangles
    std::size_t there = 0;
    double difference = 0;
};

// Pairs of like shape, the most alike first.
std::vector<TrianglePair> LikePairs(const std::vector<StarTriangle>& here,
                                    const std::vector<StarTriangle>& there);

} // namespace tarn
