// "tarn night": what the nights of folders were, as rows, as a page and on paper.
#pragma once

#include "console/Subcommand.h"
#include "sky/report/Integration.h"

namespace tarn {

extern const Usage kNightUsage;

struct NightRequest {
    std::vector<std::string> paths; // of the frames, absolute
    std::optional<Site> site;       // of frames whose header has none
    std::string html;               // where the page goes, absolute; empty: nowhere
    std::string pdf;
    std::string notes; // folder; empty: no notes
    std::string now;   // date and time as printed; empty: now
    std::string paper = "A4";
    std::string version;
};

struct NightResult {
    std::vector<IntegrationRow> rows;
    std::vector<std::string> complaints; // with the file in front
    std::string error;                   // why there is no page; empty when it was written
    std::string badPaper;                // its name; then there is nothing else
};

using NightReporter = std::function<NightResult(const NightRequest& request)>;

// A row for each target, filter, camera and exposure of all folders together, then flats, darks and
// bias frames, and one with the reason for each file that cannot be read.
int RunNight(std::span<const std::string> words, std::string_view version,
             const NightReporter& report);

} // namespace tarn
