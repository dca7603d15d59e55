// The measures of a night over its time as a drawing (SVG): a strip each for sharpness, shape, sky
// and what else is known, then the altitudes of targets and Moon over the twilight.
#pragma once

#include "sky/report/Nights.h"

#include <array>
#include <string>

namespace tarn {

inline constexpr double kGraphWidth = 760; // units of the drawing, points of a page about

// Of the colours of a drawing; each as CSS has it.
struct GraphColors {
    std::string ink;
    std::string quiet; // ticks
    std::string grid;
    std::string day;
    std::string twilight; // laid over each other the nearer to day
    std::string moon;
    std::array<std::string, 5> series; // of filters
};

// Rules for the classes of the drawing.
std::string GraphStyle(const GraphColors& colors);

// An element that takes its colours from a style around it. Empty for a night without lights.
std::string NightGraph(std::span<const ReportFrame> frames, const ReportNight& night);

// The same by itself, with its own colours; its size in its units is in `height`.
std::string NightGraphFile(std::span<const ReportFrame> frames, const ReportNight& night,
                           const GraphColors& colors, double& height);

std::string Escaped(std::string_view text); // for HTML and XML, also between quotes

} // namespace tarn
