// The frames of nights for their report: headers, what stood in the sky, and the measures that are
// kept. Nothing is measured anew.
#pragma once

#include "sky/report/NightReport.h"

#include <functional>
#include <string>
#include <vector>

namespace tarn {

struct NightSources {
    std::vector<std::string> paths; // absolute
    std::optional<Site> site;       // of frames whose header has none
    std::optional<int> zoneMinutes; // of cameras that do not say theirs; none: the system's
};

// How many of how many files were read; false breaks off.
using ReadingProgress = std::function<bool(std::size_t done, std::size_t total)>;

struct ReadNights {
    std::vector<ReportFrame> frames;     // without marks, notes and pictures
    std::vector<std::string> longitudes; // how those of a folder are counted, its path in front
    bool cancelled = false;
};
ReadNights ReadFramesOfNights(const NightSources& sources, const ReadingProgress& progress);

// Nights, rows and texts of the frames, which have their marks and notes by now; the best and the
// worst of each night get their thumbnails.
void Compose(ReportDocument& document, const ReportChoice& choice, double zoneHours,
             const std::string& foot);

double SystemZoneHours(); // east of UTC, now

} // namespace tarn
