#include "sky/stars/Sources.h"

#include "sky/stars/Deblend.h"
#include "sky/stars/SourceKinds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tarn {

namespace {

constexpr float kLeastRise = 4; // deviations of the smoothed noise between a peak and its saddle
constexpr std::size_t kFewestSamples = 3;
constexpr double kLine = 4;    // ratio of the axes of what is one long thing, however bumpy
constexpr double kFlat = 0.01; // of the peak's height

bool HasGapBeside(const ValuePlane& plane, const FootprintSample& sample) {
    for (const auto& [dx, dy] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 1}})
        if (!std::isfinite(plane.AtOrNone(sample.x + dx, sample.y + dy))) return true;
    return false;
}

// Mean above the sky of the samples beside the highest.
double AroundOf(const ValuePlane& plane, int x, int y, double level) {
    double sum = 0;
    for (const auto& [dx, dy] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 1}})
        if (const float value = plane.AtOrNone(x + dx, y + dy); std::isfinite(value))
            sum += value - level;
    return sum / 4;
}

class Moments {
public:
    void Add(double x, double y, double value) {
        m_flux += value;
        m_x += value * x;
        m_y += value * y;
        m_xx += value * x * x;
        m_yy += value * y * y;
        m_xy += value * x * y;
    }
    // Places as they were given, from the origin that they were given from.
    void PutInto(Source& source) const {
        source.flux = m_flux;
        source.x = m_x / m_flux;
        source.y = m_y / m_flux;
        const double xx = m_xx / m_flux - source.x * source.x;
        const double yy = m_yy / m_flux - source.y * source.y;
        const double xy = m_xy / m_flux - source.x * source.y;
        const double mean = (xx + yy) / 2;
        const double spread = std::hypot((xx - yy) / 2, xy);
        source.major = std::sqrt(std::max(0.0, mean + spread));
        source.minor = std::sqrt(std::max(0.0, mean - spread));
    }
    double Flux() const { return m_flux; }

private:
    double m_flux = 0;
    double m_x = 0;
    double m_y = 0;
    double m_xx = 0;
    double m_yy = 0;
    double m_xy = 0;
};

Source SourceOf(const ValuePlane& plane, const SkyMesh& sky, const Basin& basin) {
    const FootprintSample& top = basin.samples.front();
    const double level = sky.BackgroundAt(top.x, top.y);
    Source source;
    source.smoothed = top.above;
    source.samples = int(basin.samples.size());
    Moments moments;
    int left = top.x, right = top.x, upper = top.y, lower = top.y;
    int peakX = top.x, peakY = top.y;
    for (const FootprintSample& sample : basin.samples) {
        const double above = plane.At(sample.x, sample.y) - level;
        if (!std::isfinite(above)) { // more than any number is no data either
            source.border = true;
            continue;
        }
        if (above > source.peak) {
            source.peak = above;
            peakX = sample.x;
            peakY = sample.y;
        }
        if (above > 0) moments.Add(sample.x - top.x, sample.y - top.y, above);
        left = std::min(left, sample.x);
        right = std::max(right, sample.x);
        upper = std::min(upper, sample.y);
        lower = std::max(lower, sample.y);
        source.border = source.border || HasGapBeside(plane, sample);
    }
    for (const FootprintSample& sample : basin.samples)
        if (plane.At(sample.x, sample.y) - level >= (1 - kFlat) * source.peak) ++source.flat;
    if (moments.Flux() > 0) moments.PutInto(source);
    source.x += top.x;
    source.y += top.y;
    source.around = AroundOf(plane, peakX, peakY, level);
    source.length = std::max(right - left, lower - upper) + 1;
    source.border = source.border || left <= 1 || upper <= 1 || right >= plane.width - 2 ||
                    lower >= plane.height - 2;
    return source;
}

// Of the places alone that a footprint takes in: its flux is of no use.
Source OutlineOf(const Footprints& footprints, const Footprint& footprint) {
    Source source;
    Moments moments;
    for (std::size_t i = footprint.firstRun; i < footprint.firstRun + footprint.runs; ++i) {
        const FootprintRun& run = footprints.runs[i];
        for (int x = run.begin; x < run.end; ++x)
            moments.Add(x - footprint.left, run.y - footprint.top, 1);
    }
    moments.PutInto(source);
    source.x += footprint.left;
    source.y += footprint.top;
    source.flux = 0;
    source.samples = int(footprint.samples);
    source.length = std::max(footprint.Width(), footprint.Height());
    source.kind = source.major > 5 * source.minor ? SourceKind::Trail : SourceKind::Wide;
    return source;
}

} // namespace

SourceList ListOf(const ValuePlane& plane, const SkyMesh& sky, const Footprints& footprints,
                  float sigmas) {
    SourceList list;
    const int widest = std::max(plane.width, plane.height) / 10;
    std::vector<Basin> basins;
    const auto outline = [&](const Footprint& of) { return OutlineOf(footprints, of); };
    for (const Footprint& footprint : footprints.all) {
        if (std::max(footprint.Width(), footprint.Height()) > widest) {
            list.all.push_back(outline(footprint));
            continue;
        }
        const float noise = sky.NoiseLeft() * sky.NoiseAt((footprint.left + footprint.right) / 2,
                                                          (footprint.top + footprint.bottom) / 2);
        basins.clear();
        const bool isLine = footprint.samples > 30 &&
                            std::max(footprint.Width(), footprint.Height()) > 15 &&
                            outline(footprint).major > kLine * outline(footprint).minor;
        constexpr float kNever = std::numeric_limits<float>::infinity();
        TakeApart(footprints, footprint, sky, isLine ? kNever : kLeastRise * noise, basins);
        for (const Basin& basin : basins)
            if (basin.samples.size() >= kFewestSamples &&
                basin.samples.front().above >= sigmas * noise)
                list.all.push_back(SourceOf(plane, sky, basin));
    }
    std::sort(list.all.begin(), list.all.end(),
              [](const Source& one, const Source& other) { return one.flux > other.flux; });
    TellApart(plane, sky, list);
    return list;
}

} // namespace tarn
