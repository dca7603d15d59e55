// Skies of known truth, made by code: the same for the same seed.
#pragma once

#include "sky/stars/ValuePlane.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

namespace tarn::testing {

// A star as it is recorded, the pixel's width in it. `beta` 0: a Gaussian.
struct MadeStar {
    double x = 0;
    double y = 0;
    double peak = 0;
    double fwhm = 3; // geometric mean of both axes
    double eccentricity = 0;
    double angle = 0; // degrees
    double beta = 0;

    double HalfFluxRadius() const { // of a round one
        if (beta <= 0) return fwhm / 2;
        const double alpha = fwhm / 2 / std::sqrt(std::exp2(1 / beta) - 1);
        return alpha * std::sqrt(std::exp2(1 / (beta - 1)) - 1);
    }
};

class MadeSky {
public:
    MadeSky(int width, int height, unsigned seed = 1)
        : m_width(width), m_height(height), m_random(seed),
          m_values(std::size_t(width) * std::size_t(height)) {}

    float& At(int x, int y) {
        return m_values[std::size_t(y) * std::size_t(m_width) + std::size_t(x)];
    }

    void AddLevel(double level, double slopeX = 0, double slopeY = 0) {
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x) At(x, y) += float(level + slopeX * x + slopeY * y);
    }

    void Add(const MadeStar& star) {
        const double ratio = std::pow(1 - star.eccentricity * star.eccentricity, 0.25);
        const double major = star.fwhm / 2 / ratio; // half widths
        const double minor = star.fwhm / 2 * ratio;
        const double cosine = std::cos(star.angle * std::numbers::pi / 180);
        const double sine = std::sin(star.angle * std::numbers::pi / 180);
        const double power = star.beta > 0 ? std::exp2(1 / star.beta) - 1 : 0;
        const int reach = int((star.beta > 0 ? 12 : 3.5) * major) + 2;
        const int middleX = int(std::lround(star.x));
        const int middleY = int(std::lround(star.y));
        for (int y = std::max(0, middleY - reach); y <= std::min(m_height - 1, middleY + reach);
             ++y)
            for (int x = std::max(0, middleX - reach); x <= std::min(m_width - 1, middleX + reach);
                 ++x) {
                const double dx = x - star.x;
                const double dy = y - star.y;
                const double along = (dx * cosine + dy * sine) / major;
                const double across = (dy * cosine - dx * sine) / minor;
                const double q = along * along + across * across;
                At(x, y) += float(star.peak * (star.beta > 0 ? std::pow(1 + q * power, -star.beta)
                                                             : std::exp2(-q)));
            }
    }

    // Of the light (one electron a unit) and of reading out; then rounded, and cut off at `white`.
    void Record(double readNoise, double white = 65535) {
        std::normal_distribution<float> normal;
        for (float& value : m_values) {
            value +=
                normal(m_random) * float(std::sqrt(std::max(0.0F, value) + readNoise * readNoise));
            value = float(std::clamp(std::round(double(value)), 0.0, white));
        }
    }

    double Random(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }

    // Stars all over the plane, no two within `apart` pixels, peaks spread evenly over the
    // magnitudes from `faintest` to `brightest`.
    std::vector<MadeStar> Scatter(int count, MadeStar like, double faintest, double brightest,
                                  double apart) {
        std::vector<MadeStar> stars;
        for (int tries = 0; int(stars.size()) < count && tries < 100 * count; ++tries) {
            MadeStar star = like;
            star.x = Random(0, m_width - 1);
            star.y = Random(0, m_height - 1);
            star.peak = faintest * std::pow(brightest / faintest, Random(0, 1));
            bool isNear = false;
            for (const MadeStar& other : stars)
                isNear = isNear || std::hypot(other.x - star.x, other.y - star.y) < apart;
            if (!isNear) stars.push_back(star);
        }
        for (const MadeStar& star : stars) Add(star);
        return stars;
    }

    ValuePlane Plane() const {
        ValuePlane plane;
        plane.width = m_width;
        plane.height = m_height;
        plane.floats = m_values.data();
        return plane;
    }
    std::vector<std::uint16_t> Words() const { return {m_values.begin(), m_values.end()}; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }

private:
    int m_width;
    int m_height;
    std::minstd_rand m_random;
    std::vector<float> m_values;
};

} // namespace tarn::testing
