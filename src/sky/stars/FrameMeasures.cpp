#include "sky/stars/FrameMeasures.h"

#include "sky/stars/RobustStatistics.h"
#include "sky/stars/StarSizes.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr float kFootprint = 4;     // deviations of the smoothed noise where a source ends
constexpr float kSource = 5;        // and that its peak has at least
constexpr float kCoarse = 1.6F;     // times both where packing with loss has left noise in patches
constexpr std::size_t kSized = 200; // stars that a median needs at most
constexpr std::size_t kEnough = 40; // and that are enough to leave the doubtful ones out
constexpr double kUneven = 0.35;    // of the median size: what is no star has any size
constexpr double kUnevenRings = 0.12;
constexpr double kShapeless = 0.15; // of the peak that a fit leaves of what is no star

struct Searched {
    SkyMesh sky;
    Footprints footprints;
    SourceList list;
    std::string fault;
};

Searched Search(const ValuePlane& plane) {
    Searched found{SkyMesh(plane), {}, {}, {}};
    if (!found.sky.HasData()) {
        found.fault = "no data";
        return found;
    }
    if (!found.sky.IsVaried()) {
        found.fault = "blank: all values are alike";
        return found;
    }
    const float wary = plane.coarse ? kCoarse : 1;
    found.footprints = FindFootprints(plane, found.sky, wary * kFootprint);
    if (found.footprints.tooMuch)
        found.fault = "no night sky: too much is brighter than its background";
    else
        found.list = ListOf(plane, found.sky, found.footprints, wary * kSource);
    return found;
}

// Stars to size: the brightest, and of them those alone first.
std::vector<std::size_t> Chosen(const SourceList& list, const StarSizer& sizer) {
    std::vector<std::size_t> alone;
    std::vector<std::size_t> others;
    for (std::size_t i = 0; i < list.all.size() && alone.size() < kSized; ++i)
        if (list.all[i].kind == SourceKind::Star)
            (sizer.Reach(i) >= 0.6 * sizer.FullReach() ? alone : others).push_back(i);
    if (alone.size() < kEnough)
        alone.insert(alone.end(), others.begin(),
                     others.begin() +
                         std::ptrdiff_t(std::min(others.size(), kEnough - alone.size())));
    std::sort(alone.begin(), alone.end());
    return alone;
}

double MedianOfMember(const std::vector<SizedStar>& sized, double MeasuredStar::*member) {
    std::vector<double> values;
    for (const SizedStar& each : sized)
        if (std::isfinite(each.star.*member)) values.push_back(each.star.*member);
    return MedianOf(values);
}

std::vector<SizedStar> FittingOf(const std::vector<SizedStar>& sized) {
    std::vector<SizedStar> fitting;
    std::copy_if(sized.begin(), sized.end(), std::back_inserter(fitting),
                 [](const SizedStar& each) {
                     return std::isfinite(each.star.fwhm) && each.misfit < kShapeless;
                 });
    return fitting;
}

// Stars of one plane have one shape and one size, and mostly it is that of a core; far out of focus
// they are rings, but all alike. What only stands out in a landscape has any size.
bool AreStars(const std::vector<SizedStar>& sized, std::size_t fitting) {
    std::vector<double> sizes;
    for (const SizedStar& each : sized)
        if (std::isfinite(each.star.hfr)) sizes.push_back(each.star.hfr);
    const double unevenness = DeviationOf(sizes) / MedianOf(sizes);
    return unevenness < (2 * fitting >= sized.size() ? kUneven : kUnevenRings);
}

constexpr const char* kNoStars = "no stars: what stands out has not their shape";

std::vector<SizedStar> SizesOf(StarSizer& sizer, const std::vector<std::size_t>& chosen) {
    sizer.LearnWings(chosen);
    std::vector<SizedStar> sized;
    for (const std::size_t index : chosen) sized.push_back(sizer.Size(index));
    return sized;
}

void TakeSizes(const ValuePlane& plane, const Searched& found, FrameMeasures& measures) {
    StarSizer sizer(plane, found.sky, found.list);
    const std::vector<SizedStar> sized = SizesOf(sizer, Chosen(found.list, sizer));
    const std::vector<SizedStar> fitting = FittingOf(sized);
    if (!AreStars(sized, fitting.size())) {
        measures.stars = 0;
        measures.saturated = 0;
        measures.background = measures.noise = kNotMeasured; // of no sky
        measures.fault = kNoStars;
        return;
    }
    measures.hfr = MedianOfMember(sized, &MeasuredStar::hfr);
    if (2 * fitting.size() >= sized.size()) {
        measures.fwhm = MedianOfMember(fitting, &MeasuredStar::fwhm);
        measures.eccentricity = MedianOfMember(fitting, &MeasuredStar::eccentricity);
    } else {
        measures.fault = "no width: the stars have no core";
    }
    for (const SizedStar& each : sized)
        measures.brightest.push_back(
            {float(each.star.x), float(each.star.y), float(each.star.flux)});
}

int CountOf(const SourceList& list, SourceKind kind) {
    return int(std::count_if(list.all.begin(), list.all.end(),
                             [&](const Source& source) { return source.kind == kind; }));
}

} // namespace

FrameMeasures MeasureFrame(const ValuePlane& plane) {
    FrameMeasures measures;
    measures.width = plane.width * plane.cell;
    measures.height = plane.height * plane.cell;
    const Searched found = Search(plane);
    measures.fault = found.fault;
    if (!found.sky.HasData()) return measures;
    measures.background = found.sky.Background();
    measures.noise = found.sky.Noise();
    if (!found.sky.IsVaried()) return measures;
    measures.sharpness = found.footprints.sharpness;
    if (found.footprints.tooMuch) {
        measures.background = measures.noise = kNotMeasured;
        return measures;
    }
    measures.stars = CountOf(found.list, SourceKind::Star);
    measures.saturated = CountOf(found.list, SourceKind::Saturated);
    if (measures.stars < kFewestStars)
        measures.fault = measures.stars == 0 ? "no stars" : "fewer than 5 stars";
    else
        TakeSizes(plane, found, measures);
    return measures;
}

std::vector<MeasuredStar> ListSources(const ValuePlane& plane, std::string& fault) {
    const Searched found = Search(plane);
    fault = found.fault;
    std::vector<MeasuredStar> listed;
    if (!fault.empty()) return listed;
    StarSizer sizer(plane, found.sky, found.list);
    const std::vector<SizedStar> sized = SizesOf(sizer, Chosen(found.list, sizer));
    if (sized.size() >= std::size_t(kFewestStars) && !AreStars(sized, FittingOf(sized).size())) {
        fault = kNoStars;
        return listed;
    }
    for (std::size_t i = 0; i < found.list.all.size(); ++i) {
        const Source& source = found.list.all[i];
        const bool isOther = source.kind == SourceKind::HotPixel ||
                             source.kind == SourceKind::Hit || source.kind == SourceKind::Trail;
        if (!isOther && source.flux > 0) listed.push_back(sizer.Size(i).star);
    }
    std::stable_sort(
        listed.begin(), listed.end(),
        [](const MeasuredStar& one, const MeasuredStar& other) { return one.flux > other.flux; });
    return listed;
}

} // namespace tarn
