// The numbers of a judged frame, a row each: what the list is sorted by, what is asked for in it,
// the columns and graphs of the window "Night".
#pragma once

#include "sky/judging/JudgedFrame.h"

#include <cmath>
#include <iterator>
#include <string_view>

namespace tarn {

enum class Better { Neither, Less, More };

struct FrameNumber {
    std::string_view name;  // as it is kept and asked for: "hfr"
    std::string_view title; // "HFR"
    std::string_view tip;
    double (*value)(const JudgedFrame& frame); // NaN: not known
    int digits;
    Better better;
};

// Of what has a background, since without one nothing was counted.
inline double CountOf(int count, const JudgedFrame& frame) {
    return frame.isMeasured && std::isfinite(frame.measures.background) ? count : kNotMeasured;
}

// clang-format off
inline constexpr FrameNumber kFrameNumbers[] = {
    {"stars", "Stars", "Stars that were measured",
     [](const JudgedFrame& f) { return CountOf(f.measures.stars, f); }, 0, Better::More},
    {"hfr", "HFR", "Radius that holds half of a star's light, pixels: small is sharp",
     [](const JudgedFrame& f) { return f.measures.hfr; }, 2, Better::Less},
    {"fwhm", "FWHM", "Width of a star's core at half of its height, pixels",
     [](const JudgedFrame& f) { return f.measures.fwhm; }, 2, Better::Less},
    {"eccentricity", "Eccentricity", "How far stars are from round, 0 to 1: 0.4 is seen as round",
     [](const JudgedFrame& f) { return f.measures.eccentricity; }, 2, Better::Less},
    {"background", "Background", "Brightness of the sky, values of the file",
     [](const JudgedFrame& f) { return f.measures.background; }, 1, Better::Less},
    {"noise", "Noise", "Noise of the sky, values of the file",
     [](const JudgedFrame& f) { return f.measures.noise; }, 2, Better::Less},
    {"saturated", "Saturated", "Stars whose middle is burnt out",
     [](const JudgedFrame& f) { return CountOf(f.measures.saturated, f); }, 0, Better::Less},
    {"transparency", "Transparency", "Light of the stars beside the series: 1 is typical, cloud has less",
     [](const JudgedFrame& f) { return f.transparency; }, 2, Better::More},
    {"sharpness", "Sharpness", "Detail of the whole picture, for pictures without stars",
     [](const JudgedFrame& f) { return f.measures.sharpness; }, 5, Better::More},
    {"score", "Score", "0 to 100 within its series: 100 times 1 / (1 + d / 4) for each of HFR, roundness, transparency and noise; d: deviations from the best tenth",
     [](const JudgedFrame& f) { return f.score; }, 0, Better::More},
};
// clang-format on

// The count of them where there is none of the name.
constexpr std::size_t FrameNumberNamed(std::string_view name) {
    std::size_t number = 0;
    while (number < std::size(kFrameNumbers) && kFrameNumbers[number].name != name) ++number;
    return number;
}

} // namespace tarn
