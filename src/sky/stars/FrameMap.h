// From the places of one frame to those of another.
#pragma once

#include <utility>

namespace tarn {

// A point (x, y) of the frame stands at (a x + b y + c, d x + e y + f) of the reference.
struct FrameMap {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 0;
    double e = 1;
    double f = 0;

    std::pair<double, double> operator()(double x, double y) const {
        return {a * x + b * y + c, d * x + e * y + f};
    }
    double Area() const { return a * e - b * d; } // that one becomes; below 0 where it is mirrored
};

} // namespace tarn
