// How the flux of one star grows from its centre outwards.
#pragma once

#include "sky/stars/ValuePlane.h"

#include <vector>

namespace tarn {

// Values around one place above the sky around it. Sums over discs are exact for what the values
// are samples of: a sample's part in a disc is the part of its square, and what taking samples for
// squares adds to the width is taken away beforehand.
class GrowthCurve {
public:
    // Centre in samples. Values to the radius `reach`; the sky is the median of the ring from there
    // to `skyReach`, `level` where too little of the ring is in the plane.
    GrowthCurve(const ValuePlane& plane, double x, double y, double reach, double skyReach,
                double level);

    // Whether all samples to `reach` were there.
    bool IsWhole() const { return m_whole; }
    double Level() const { return m_level; } // of the sky, in values of the plane

    // Within a radius of at most `reach`.
    double Flux(double radius) const;

    // The radius that holds half of what is within `total`; NaN where there is no such.
    double HalfFluxRadius(double total) const;

private:
    void TakeLevel(std::vector<double>& ring, double level);
    void Sharpen();

    int m_left;
    int m_top;
    int m_side;
    double m_x; // from the first sample that is kept
    double m_y;
    double m_level = 0;
    bool m_whole = true;
    std::vector<double> m_values; // m_side rows of as many
};

// The part of the unit square around (x, y) that lies within `radius` of the origin.
double PartInDisc(double x, double y, double radius);

} // namespace tarn
