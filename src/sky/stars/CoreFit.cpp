#include "sky/stars/CoreFit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include <Eigen/Cholesky>
#include <Eigen/Core>

namespace tarn {

namespace {

constexpr int kMost = 7; // peak, x, y, the ellipse xx, yy, xy, wings
constexpr int kRounds = 30;
constexpr double kEnough = 1e-5;      // less of a step in a round ends the search
constexpr double kLeastWings = 0.004; // hardly another profile than the Gaussian
constexpr double kMostWings = 0.8;
constexpr double kLn2 = std::numbers::ln2;

using Vector = Eigen::Matrix<double, kMost, 1>;
using Matrix = Eigen::Matrix<double, kMost, kMost>;

struct Sample {
    double x;
    double y;
    double value;
};

double Modelled(const Vector& p, const Sample& sample, Vector* slopes) {
    const double dx = sample.x - p[1];
    const double dy = sample.y - p[2];
    const double q = p[3] * dx * dx + p[4] * dy * dy + 2 * p[5] * dx * dy;
    const double wings = p[6];
    const double power = std::exp(wings * kLn2); // 2^w
    const double base = 1 + q * (power - 1);
    const double shape = std::exp(-std::log(base) / wings);
    const double value = p[0] * shape;
    if (!slopes) return value;
    const double byQ = -value / base * (power - 1) / wings;
    (*slopes)[0] = shape;
    (*slopes)[1] = -byQ * 2 * (p[3] * dx + p[5] * dy);
    (*slopes)[2] = -byQ * 2 * (p[4] * dy + p[5] * dx);
    (*slopes)[3] = byQ * dx * dx;
    (*slopes)[4] = byQ * dy * dy;
    (*slopes)[5] = byQ * 2 * dx * dy;
    (*slopes)[6] = value * (std::log(base) / (wings * wings) - q * kLn2 * power / (base * wings));
    return value;
}

bool IsPossible(const Vector& p) {
    return p.allFinite() && p[0] > 0 && p[3] > 0 && p[4] > 0 && p[3] * p[4] > p[5] * p[5] &&
           p[6] >= kLeastWings && p[6] <= kMostWings;
}

// The search of Levenberg and Marquardt.
class Search {
public:
    Search(std::vector<Sample> samples, const Vector& start, bool findWings)
        : m_samples(std::move(samples)), m_free(findWings ? kMost : kMost - 1), m_at(start) {}

    void Run() {
        double damping = 1e-3;
        double error = Sum(m_at);
        for (int round = 0; round < kRounds; ++round) {
            Matrix normal;
            Vector slope;
            Linearise(normal, slope);
            Matrix damped = normal;
            damped.diagonal() *= 1 + damping;
            for (int i = m_free; i < kMost; ++i) damped(i, i) = 1;
            const Vector step = damped.ldlt().solve(slope);
            Vector next = m_at + step;
            next[6] = std::clamp(next[6], kLeastWings, kMostWings);
            const double nextError = IsPossible(next) ? Sum(next) : error * 2 + 1;
            if (!(nextError < error)) {
                damping *= 10;
                if (damping > 1e7) return;
                continue;
            }
            const bool settled =
                error - nextError <= kEnough * error && std::hypot(step[1], step[2]) < 1e-3;
            m_at = next;
            error = nextError;
            damping /= 10;
            if (settled) return;
        }
    }

    const Vector& At() const { return m_at; }
    double Misfit() const { return std::sqrt(Sum(m_at) / double(int(m_samples.size()) - m_free)); }

    Matrix Normal() const {
        Matrix normal;
        Vector slope;
        Linearise(normal, slope);
        for (int i = m_free; i < kMost; ++i) normal(i, i) = 1;
        return normal;
    }

private:
    double Sum(const Vector& p) const {
        double sum = 0;
        for (const Sample& sample : m_samples) {
            const double rest = sample.value - Modelled(p, sample, nullptr);
            sum += rest * rest;
        }
        return sum;
    }
    // Of the matrix the lower half, which is all that is solved by.
    void Linearise(Matrix& normal, Vector& slope) const {
        normal.setZero();
        slope.setZero();
        Vector slopes;
        for (const Sample& sample : m_samples) {
            const double rest = sample.value - Modelled(m_at, sample, &slopes);
            if (m_free < kMost) slopes[6] = 0;
            for (int row = 0; row < kMost; ++row) {
                slope[row] += slopes[row] * rest;
                for (int column = 0; column <= row; ++column)
                    normal(row, column) += slopes[row] * slopes[column];
            }
        }
    }

    std::vector<Sample> m_samples;
    int m_free;
    Vector m_at;
};

// From q = 1 at half of the peak to deviations: half widths are sqrt(2 ln 2) of them.
CoreFit FitOf(const Search& search, double noise) {
    const Vector& p = search.At();
    const double mean = (p[3] + p[4]) / 2;
    const double difference = (p[3] - p[4]) / 2;
    const double spread = std::hypot(difference, p[5]);
    CoreFit fit;
    fit.peak = p[0];
    fit.x = p[1];
    fit.y = p[2];
    fit.wings = p[6];
    fit.major = 1 / std::sqrt((mean - spread) * 2 * kLn2);
    fit.minor = 1 / std::sqrt((mean + spread) * 2 * kLn2);
    fit.angle = std::atan2(-p[5], -difference) / 2 * 180 / std::numbers::pi;
    if (fit.angle <= -90) fit.angle += 180;
    // The shape is spread / mean of the inverse ellipse; its noise that of both components.
    const Matrix inverse = search.Normal().ldlt().solve(Matrix::Identity());
    const double along = (inverse(3, 3) + inverse(4, 4) - 2 * inverse(3, 4)) / 4;
    const double across = inverse(5, 5);
    fit.misfit = search.Misfit();
    fit.shapeNoise =
        std::max(noise, fit.misfit) * std::sqrt(std::max(0.0, (along + across) / 2)) / mean;
    return fit;
}

} // namespace

std::optional<CoreFit> FitCore(const ValuePlane& plane, const CoreGuess& guess, double radius,
                               double level, double noise, std::optional<double> wings) {
    constexpr double kDefaultWings = 0.25;
    std::vector<Sample> samples;
    for (int y = int(std::ceil(guess.y - radius)); y <= int(std::floor(guess.y + radius)); ++y)
        for (int x = int(std::ceil(guess.x - radius)); x <= int(std::floor(guess.x + radius));
             ++x) {
            if (std::hypot(x - guess.x, y - guess.y) > radius) continue;
            const double value = plane.AtOrNone(x, y);
            if (!std::isfinite(value)) return std::nullopt;
            samples.push_back({double(x), double(y), value - level});
        }
    if (samples.size() < std::size_t(kMost) + 2 || !(guess.peak > 0) || !(guess.sigma > 0))
        return std::nullopt;
    Vector start;
    const double round = 1 / (2 * kLn2 * guess.sigma * guess.sigma);
    start << guess.peak, guess.x, guess.y, round, round, 0,
        std::clamp(wings.value_or(kDefaultWings), kLeastWings, kMostWings);
    Search search(std::move(samples), start, !wings);
    search.Run();
    const CoreFit fit = FitOf(search, noise);
    const bool stayed = std::hypot(fit.x - guess.x, fit.y - guess.y) < radius / 2;
    if (!stayed || !std::isfinite(fit.major) || fit.major > 2 * radius) return std::nullopt;
    return fit;
}

} // namespace tarn
