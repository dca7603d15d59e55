// Frames parted into nights: from noon to noon of the site.
#pragma once

#include "sky/report/ReportFrame.h"

#include <span>

namespace tarn {

struct NightGap {
    double from = 0; // seconds since 1970, UTC
    double to = 0;
};

struct SunTimes {
    std::optional<double> sunset; // seconds since 1970, UTC; none where it does not happen
    std::optional<double> dusk;   // 18 degrees below the horizon
    std::optional<double> dawn;
    std::optional<double> sunrise;
};

struct ReportNight {
    std::string date;                // of its evening, "2024-11-05"
    double noon = 0;                 // at which it began, seconds since 1970, UTC
    std::vector<std::size_t> frames; // in the order of their times
    std::optional<Site> site;        // of its first frame that has one
    SunTimes sun;                    // with a site
    std::vector<NightGap> gaps;      // of more than kGap between lights
    std::optional<std::size_t> best; // by score, of two frames or more that have one
    std::optional<std::size_t> worst;
};

inline constexpr double kGap = 300; // seconds

// By the longitude; without a site by the zone of the frame, else the one given in hours east of
// UTC. Frames without a time are in none. Lights make nights; flats, darks and bias frames of the
// day behind one belong to it, others to none.
std::vector<ReportNight> NightsOf(std::span<const ReportFrame> frames, double zoneHours);

} // namespace tarn
