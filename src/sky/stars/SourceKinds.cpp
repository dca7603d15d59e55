#include "sky/stars/SourceKinds.h"

#include "sky/stars/RobustStatistics.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarn {

namespace {

constexpr std::size_t kModels = 300; // bright sources that say how wide a star is
constexpr double kHotPart = 0.12;    // of the peak that the samples beside it have at most
constexpr double kLeastArea = 2;     // samples; no optics draw a star that small
constexpr double kNarrow = 0.5;      // of the typical area
constexpr double kBroad = 3;         // the same
constexpr double kPointed = 1.3;     // of the typical ratio of peak and smoothed peak
constexpr double kLongest = 2.5;     // of the typical ratio of the axes
constexpr double kDouble = 1.3;      // of the typical area and ratio of the axes: two stars in one
constexpr double kBlended = 0.25;    // of the flux that neighbours may add
constexpr double kRinging = 12;      // samples: a block and a half of those that are packed
constexpr double kWave = 0.1;        // of the peak that it surrounds
constexpr double kNearPlateau = 0.01;

bool IsHotPixel(const Source& source, double noise) {
    return source.around < kHotPart * source.peak + noise;
}

// What the top of a source looks like when it was cut off: as many samples within a hundredth of
// it as no profile has that reaches so far.
bool IsFlat(const Source& source) {
    return source.flat >= 4 && source.flat > 0.06 * source.samples;
}

double PlateauOf(const ValuePlane& plane, const SkyMesh& sky, const SourceList& list) {
    constexpr double kNone = std::numeric_limits<double>::infinity();
    double highest = -kNone;
    double flat = -kNone;
    for (const Source& source : list.all) {
        const double top =
            source.peak + sky.BackgroundAt(int(std::lround(source.x)), int(std::lround(source.y)));
        if (source.peak <= 0) continue;
        highest = std::max(highest, top);
        if (IsFlat(source)) flat = std::max(flat, top);
    }
    const double full = plane.white.value_or(kNone);
    // A flat top below others is a round one that noise has made flat.
    const double height = highest - sky.Background();
    return flat >= highest - 0.05 * height ? std::min(full, flat) : full;
}

struct Typical {
    double area = 0;
    double pointed = 1;    // peak over smoothed peak
    double elongation = 1; // major over minor axis
};

Typical TypicalOf(const SkyMesh& sky, const SourceList& list) {
    std::vector<double> areas;
    std::vector<double> pointed;
    std::vector<double> ratios;
    for (const Source& source : list.all) {
        if (source.kind != SourceKind::Star || source.samples < 4 || !(source.minor > 0)) continue;
        const double noise = sky.NoiseAt(int(source.x), int(source.y));
        // Of the first ones all count, of the faint ones none as long as there are others.
        if (areas.size() >= kModels || (areas.size() >= 5 && source.peak < 15 * noise)) break;
        areas.push_back(source.Area());
        pointed.push_back(source.peak / source.smoothed);
        ratios.push_back(source.major / source.minor);
    }
    if (areas.empty()) return {};
    return {MedianInPlace(std::span(areas)), MedianInPlace(std::span(pointed)),
            MedianInPlace(std::span(ratios))};
}

SourceKind ShapeOf(const Source& source, const Typical& typical, double noise) {
    const double ratio = source.minor > 0 ? source.major / source.minor : 100;
    const double longest = kLongest * std::max(1.0, typical.elongation);
    const double width = std::sqrt(typical.area);
    if (ratio > longest && source.length > 2.5 * width) return SourceKind::Trail;
    const double surePeak = source.peak - 2 * noise;
    if (surePeak > kPointed * typical.pointed * source.smoothed) return SourceKind::Hit;
    if (source.peak > 15 * noise && source.Area() < kNarrow * typical.area) return SourceKind::Hit;
    if (source.Area() > kBroad * typical.area) return SourceKind::Wide;
    if (ratio > kDouble * typical.elongation && source.Area() > kDouble * typical.area)
        return SourceKind::Blended;
    return SourceKind::Star;
}

// Packing with loss draws waves around what is bright.
void FindRinging(Source& one, Source& other) {
    Source& faint = one.peak < other.peak ? one : other;
    const Source& bright = one.peak < other.peak ? other : one;
    const bool isNear = std::hypot(one.x - other.x, one.y - other.y) < kRinging;
    if (isNear && faint.peak < kWave * bright.peak && faint.kind == SourceKind::Star)
        faint.kind = SourceKind::Blended;
}

// The flux of neighbours within a star's own weight, as both are Gaussians of one width.
void FindBlends(bool isCoarse, SourceList& list) {
    const double reach = std::max(5 * list.sigma, isCoarse ? kRinging : 0);
    std::vector<Source*> byRow;
    for (Source& source : list.all)
        if (source.flux > 0) byRow.push_back(&source);
    std::sort(byRow.begin(), byRow.end(),
              [](const Source* one, const Source* other) { return one->y < other->y; });
    std::vector<double> added(byRow.size());
    for (std::size_t i = 0; i < byRow.size(); ++i)
        for (std::size_t j = i + 1; j < byRow.size() && byRow[j]->y - byRow[i]->y < reach; ++j) {
            const double dx = byRow[j]->x - byRow[i]->x;
            const double dy = byRow[j]->y - byRow[i]->y;
            if (std::abs(dx) > reach) continue;
            if (isCoarse) FindRinging(*byRow[i], *byRow[j]);
            const double part = std::exp(-(dx * dx + dy * dy) / (4 * list.sigma * list.sigma));
            added[i] += part * byRow[j]->flux;
            added[j] += part * byRow[i]->flux;
        }
    for (std::size_t i = 0; i < byRow.size(); ++i)
        if (byRow[i]->kind == SourceKind::Star && added[i] > kBlended * byRow[i]->flux)
            byRow[i]->kind = SourceKind::Blended;
}

} // namespace

std::string_view NameOf(SourceKind kind) {
    switch (kind) {
    case SourceKind::Star:
        return "star";
    case SourceKind::Saturated:
        return "saturated";
    case SourceKind::Border:
        return "at the border";
    case SourceKind::Blended:
        return "blended";
    case SourceKind::HotPixel:
        return "hot pixel";
    case SourceKind::Hit:
        return "hit";
    case SourceKind::Trail:
        return "trail";
    case SourceKind::Wide:
        return "wide";
    }
    return "";
}

void TellApart(const ValuePlane& plane, const SkyMesh& sky, SourceList& list) {
    list.plateau = PlateauOf(plane, sky, list);
    const auto noiseAt = [&](const Source& source) {
        return double(sky.NoiseAt(int(source.x), int(source.y)));
    };
    for (Source& source : list.all) {
        if (source.kind != SourceKind::Star) continue; // wide ones are known
        const double level = sky.BackgroundAt(int(source.x), int(source.y));
        const double full = list.plateau - kNearPlateau * (list.plateau - level);
        if (source.border)
            source.kind = SourceKind::Border;
        else if (IsHotPixel(source, noiseAt(source)))
            source.kind = SourceKind::HotPixel;
        else if (level + source.peak >= full)
            source.kind = SourceKind::Saturated;
    }
    const Typical typical = TypicalOf(sky, list);
    if (typical.area <= 0) return;
    if (typical.area < kLeastArea) {
        for (Source& source : list.all)
            if (source.kind == SourceKind::Star) source.kind = SourceKind::Hit;
        return;
    }
    list.sigma = std::sqrt(typical.area / (2 * std::numbers::pi));
    for (Source& source : list.all)
        if (source.kind == SourceKind::Star)
            source.kind = ShapeOf(source, typical, noiseAt(source));
    FindBlends(plane.coarse, list);
}

} // namespace tarn
