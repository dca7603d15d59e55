// The core of one star as an ellipse, by least squares.
#pragma once

#include "sky/stars/ValuePlane.h"

#include <optional>

namespace tarn {

// An elliptical profile from the Gaussian to wide wings: peak * (1 + q * (2^w - 1))^(-1/w), where q
// is 1 all along half of the peak and w, the part of the wings, is 1 over a Moffat profile's beta.
// What is fitted are the samples themselves: they hold the pixel's own width already.
struct CoreFit {
    double x = 0; // centre, samples
    double y = 0;
    double peak = 0;  // above the sky
    double wings = 0; // 0 (as good as a Gaussian) to 0.8
    double major = 0; // standard deviations of the Gaussian as wide at half of the peak
    double minor = 0;
    double angle = 0;      // of the major axis from +x to +y, degrees, above -90 to 90
    double misfit = 0;     // root mean square of what the profile leaves, in values
    double shapeNoise = 0; // standard deviation of (major^2 - minor^2) / (major^2 + minor^2)
                           // along one direction, by the noise of the samples and the misfit
};

struct CoreGuess {
    double x = 0;
    double y = 0;
    double peak = 0;
    double sigma = 1; // of a round Gaussian, samples
};

// Of the samples within `radius` of the guess, above `level`, whose noise is `noise`. With `wings`
// these are held, else found. None where the samples are not there or no such profile fits.
std::optional<CoreFit> FitCore(const ValuePlane& plane, const CoreGuess& guess, double radius,
                               double level, double noise, std::optional<double> wings);

} // namespace tarn
