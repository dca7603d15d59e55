// Sizes of single stars.
#pragma once

#include "sky/stars/FrameMeasures.h"
#include "sky/stars/SkyMesh.h"
#include "sky/stars/Sources.h"

#include <optional>
#include <span>
#include <vector>

namespace tarn {

struct SizedStar {
    MeasuredStar star;
    double misfit = 1; // of the fitted core, part of its peak; more than 0.3 is no star's shape
};

class StarSizer {
public:
    StarSizer(const ValuePlane& plane, const SkyMesh& sky, const SourceList& list);

    // The wings of this plane's stars, from the best of them, by which all are measured.
    void LearnWings(std::span<const std::size_t> brightest);

    // One of the list, by its index.
    SizedStar Size(std::size_t index) const;

    // How far from it its flux can be told from its neighbours', in samples.
    double Reach(std::size_t index) const { return m_reach[index]; }
    double FullReach() const; // without neighbours

private:
    void FindReaches();
    double SigmaOf(const Source& source) const;
    void TakeFit(const Source& source, double level, SizedStar& sized) const;

    const ValuePlane& m_plane;
    const SkyMesh& m_sky;
    const SourceList& m_list;
    std::vector<double> m_reach;
    std::optional<double> m_wings;
    double m_guess; // half-flux radius of this plane's stars, in deviations of their peaks
};

} // namespace tarn
