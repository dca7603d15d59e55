#include "sky/movers/Streaks.h"

#include "sky/stars/RobustStatistics.h"

#include <cmath>
#include <numbers>
#include <span>

namespace tarn {

namespace {

constexpr int kStep = 2;
constexpr float kLeast = 5.2F; // deviations: there are many lines
constexpr double kWidth = 2.3548;
constexpr double kShortest = 2; // star widths
constexpr double kLonger = 1.7; // from one length to the next

} // namespace

StreakSearch::StreakSearch(const Field& difference, double sigma, double longest)
    : m_width(difference.Width() / kStep), m_height(difference.Height() / kStep),
      m_values(std::size_t(m_width) * std::size_t(m_height)), m_sums(m_values.size()),
      m_best(m_values.size()), m_length(m_values.size()) {
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x)
            m_values[std::size_t(y) * std::size_t(m_width) + std::size_t(x)] =
                difference.At(kStep * x, kStep * y);
    MakeLines(sigma, longest);
}

void StreakSearch::MakeLines(double sigma, double longest) {
    for (double length = kShortest * kWidth * sigma;; length *= kLonger) {
        const double whole = std::min(length, longest);
        const int turns = int(std::ceil(std::numbers::pi * whole / (1.5 * kWidth * sigma)));
        for (int turn = 0; turn < turns; ++turn) {
            Line line{whole, {}};
            const double angle = std::numbers::pi * turn / turns;
            const int half = std::max(1, int(std::lround(whole / kStep / 2 / 1.5)));
            for (int i = -half; i <= half; ++i) {
                const double along = i * whole / kStep / (2.0 * half + 1);
                line.steps.emplace_back(int(std::lround(along * std::cos(angle))),
                                        int(std::lround(along * std::sin(angle))));
            }
            m_lines.push_back(std::move(line));
        }
        if (length >= longest) break;
    }
}

void StreakSearch::Sum(const Line& line) {
    std::fill(m_sums.begin(), m_sums.end(), 0.0F);
    for (const auto& [right, down] : line.steps) {
        const int begin = std::max(0, -right);
        const int end = m_width - std::max(0, right);
        for (int y = std::max(0, -down); y < m_height - std::max(0, down); ++y) {
            float* const to = m_sums.data() + std::ptrdiff_t(y) * m_width;
            const float* const from = m_values.data() + std::ptrdiff_t(y + down) * m_width + right;
            for (int x = begin; x < end; ++x) to[x] += from[x];
        }
    }
}

float StreakSearch::NoiseOfSums() {
    m_some.clear();
    for (std::size_t i = 0; i < m_sums.size(); i += 5)
        if (m_sums[i] != 0) m_some.push_back(std::abs(m_sums[i]));
    return float(kDeviationOfMad) * MedianInPlace(std::span(m_some));
}

void StreakSearch::Find(int begin, int end, int first, std::vector<NewSource>& found) {
    for (const Line& line : m_lines) {
        Sum(line);
        const float scale = 1 / NoiseOfSums();
        if (!std::isfinite(scale)) continue;
        for (std::size_t i = 0; i < m_sums.size(); ++i)
            if (m_sums[i] * scale > m_best[i]) {
                m_best[i] = m_sums[i] * scale;
                m_length[i] = float(line.length);
            }
    }
    for (int y = std::max(1, (begin + 1) / kStep); y < m_height - 1 && kStep * y < end; ++y)
        for (int x = 1; x < m_width - 1; ++x) {
            const std::size_t at = std::size_t(y) * std::size_t(m_width) + std::size_t(x);
            if (m_best[at] < kLeast) continue;
            bool isTop = true;
            for (int down = -1; down <= 1; ++down)
                for (int right = -1; right <= 1; ++right)
                    isTop = isTop && m_best[at + std::size_t(down * m_width + right)] <= m_best[at];
            if (isTop)
                found.push_back({double(kStep * x), double(first + kStep * y), m_best[at],
                                 float(kBlurOfLength) * m_length[at], 0});
        }
}

} // namespace tarn
