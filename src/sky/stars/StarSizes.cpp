#include "sky/stars/StarSizes.h"

#include "sky/stars/CoreFit.h"
#include "sky/stars/GrowthCurve.h"
#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarn {

namespace {

constexpr double kHalfFlux = 1.17741;   // radius of half of a Gaussian's flux, in deviations
constexpr double kMostHalfFlux = 2;     // of profiles with wide wings
constexpr double kFwhm = 2.35482;       // its width at half of its height
constexpr double kGrowth = 6;           // half-flux radii that a star's flux is taken within
constexpr double kFaintGrowth = 5;      // of one whose outer part is lost in the noise
constexpr double kSkyRing = 1.4;        // from the reach to so many times it
constexpr double kCore = 2.9;           // deviations that a fit reaches to
constexpr double kLeastCore = 2.5;      // samples
constexpr double kNeighbour = 0.02;     // of a star's flux that a neighbour has to have
constexpr double kNeighbourWidth = 2.5; // deviations around it that are its own
constexpr double kLengthening = 3;      // squares of the noise of a shape
constexpr double kSureFlux = 0.06;      // of the flux that its noise may be
constexpr std::size_t kLearned = 40;    // stars

} // namespace

StarSizer::StarSizer(const ValuePlane& plane, const SkyMesh& sky, const SourceList& list)
    : m_plane(plane), m_sky(sky), m_list(list), m_guess(kHalfFlux) {
    FindReaches();
}

double StarSizer::FullReach() const {
    return kGrowth * kHalfFlux * m_list.sigma;
}

void StarSizer::FindReaches() {
    const double full = FullReach();
    const double own = kNeighbourWidth * m_list.sigma;
    m_reach.assign(m_list.all.size(), full);
    std::vector<std::size_t> byRow(m_list.all.size());
    for (std::size_t i = 0; i < byRow.size(); ++i) byRow[i] = i;
    std::sort(byRow.begin(), byRow.end(), [&](std::size_t one, std::size_t other) {
        return m_list.all[one].y < m_list.all[other].y;
    });
    const auto limit = [&](std::size_t of, std::size_t by, double distance) {
        if (m_list.all[by].flux > kNeighbour * m_list.all[of].flux)
            m_reach[of] = std::min(m_reach[of], distance - own);
    };
    for (std::size_t i = 0; i < byRow.size(); ++i) {
        const Source& here = m_list.all[byRow[i]];
        for (std::size_t j = i + 1; j < byRow.size(); ++j) {
            const Source& other = m_list.all[byRow[j]];
            if (other.y - here.y > full + own) break;
            const double distance = std::hypot(other.x - here.x, other.y - here.y);
            limit(byRow[i], byRow[j], distance);
            limit(byRow[j], byRow[i], distance);
        }
    }
    for (double& reach : m_reach) reach = std::max(reach, kLeastCore);
}

// A star's own width, as far as it may be trusted.
double StarSizer::SigmaOf(const Source& source) const {
    const double own = std::sqrt(source.Area() / (2 * std::numbers::pi));
    return std::clamp(own, 0.7 * m_list.sigma, 1.6 * m_list.sigma);
}

void StarSizer::LearnWings(std::span<const std::size_t> brightest) {
    std::vector<double> wings;
    std::vector<double> guesses;
    for (const std::size_t index : brightest.first(std::min(kLearned, brightest.size()))) {
        const Source& source = m_list.all[index];
        const double noise = m_sky.NoiseAt(int(source.x), int(source.y));
        if (source.peak < 30 * noise || m_reach[index] < FullReach() / 2) continue;
        const double sigma = SigmaOf(source);
        const double reach = kGrowth * kHalfFlux * sigma;
        const GrowthCurve growth(m_plane, source.x, source.y, reach, kSkyRing * reach + 3,
                                 m_sky.BackgroundAt(int(source.x), int(source.y)));
        const auto fit =
            FitCore(m_plane, {source.x, source.y, source.peak, sigma},
                    std::max(kLeastCore, 1.3 * kCore * sigma), growth.Level(), noise, std::nullopt);
        if (fit) wings.push_back(fit->wings);
        guesses.push_back(growth.HalfFluxRadius(reach) / sigma);
    }
    if (wings.size() < 3) return;
    m_wings = MedianOf(wings);
    m_guess = std::clamp(MedianOf(guesses), kHalfFlux, kMostHalfFlux);
}

void StarSizer::TakeFit(const Source& source, double level, SizedStar& sized) const {
    constexpr double kUnknownWings = 0.2;
    const double noise = m_sky.NoiseAt(int(source.x), int(source.y));
    const double sigma = SigmaOf(source);
    const auto fit =
        FitCore(m_plane, {source.x, source.y, source.peak, sigma},
                std::max(kLeastCore, kCore * sigma), level, noise, m_wings.value_or(kUnknownWings));
    if (!fit) return;
    sized.misfit = std::sqrt(std::max(0.0, fit->misfit * fit->misfit - noise * noise)) / fit->peak;
    MeasuredStar& star = sized.star;
    star.x = m_plane.ToPixels(fit->x);
    star.y = m_plane.ToPixels(fit->y);
    // A sample of several pixels is wider than one by what means over them add.
    const double cell = m_plane.cell;
    const double added = (cell * cell - 1) / 12;
    const double major = std::max(0.0, fit->major * fit->major * cell * cell - added);
    const double minor = std::max(0.0, fit->minor * fit->minor * cell * cell - added);
    star.fwhm = kFwhm * std::pow(major * minor, 0.25);
    const double noiseOfShape = fit->shapeNoise *
                                (fit->major * fit->major + fit->minor * fit->minor) * cell * cell /
                                std::max(1e-9, major + minor);
    const double shape = (major - minor) / std::max(1e-9, major + minor);
    // Noise lengthens a star along both components of its shape, that of its own light a little
    // more.
    const double sure =
        std::sqrt(std::max(0.0, shape * shape - kLengthening * noiseOfShape * noiseOfShape));
    star.eccentricity = std::sqrt(2 * sure / (1 + sure));
    star.angle = fit->angle;
}

SizedStar StarSizer::Size(std::size_t index) const {
    const Source& source = m_list.all[index];
    const int x = int(source.x);
    const int y = int(source.y);
    SizedStar sized;
    MeasuredStar& star = sized.star;
    star.kind = source.kind;
    star.x = m_plane.ToPixels(source.x);
    star.y = m_plane.ToPixels(source.y);
    star.peak = source.peak;
    star.flux = source.flux;
    const double guess = m_guess * SigmaOf(source);
    const double reach = kGrowth * guess;
    const GrowthCurve growth(m_plane, source.x, source.y, reach, kSkyRing * reach + 3,
                             m_sky.BackgroundAt(x, y));
    const bool isAlone = m_reach[index] >= FullReach();
    const double outer = isAlone ? reach : std::min(reach, m_reach[index]);
    double total = outer;
    const double noise = m_sky.NoiseAt(x, y) * std::sqrt(std::numbers::pi) * outer;
    if (noise > kSureFlux * source.flux) total = std::min(total, kFaintGrowth * guess);
    star.flux = growth.Flux(total);
    if (source.kind == SourceKind::Border && !growth.IsWhole()) return sized;
    const double radius = growth.HalfFluxRadius(total) * m_plane.cell;
    const double added = 2 * std::numbers::ln2 * (m_plane.cell * m_plane.cell - 1) / 12;
    star.hfr = std::sqrt(std::max(0.0, radius * radius - added));
    if (source.kind != SourceKind::Saturated) TakeFit(source, growth.Level(), sized);
    return sized;
}

} // namespace tarn
