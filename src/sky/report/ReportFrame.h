// A frame of a night as the report counts it: what its header says, what stood in the sky, what was
// measured of it, and what the user thinks of it.
#pragma once

#include "common/mark.h"
#include "sky/headers/FrameHeader.h"
#include "sky/place/SkyRows.h"
#include "sky/stars/FrameMeasures.h"

#include <optional>
#include <string>
#include <vector>

namespace tarn {

struct ReportFrame {
    std::string path;
    FrameHeader header;
    SkyRow sky;
    std::optional<FrameMeasures> measures; // none: it was never measured
    double transparency = kNotMeasured;    // beside its series
    double score = kNotMeasured;
    std::string look; // what it seems to be where it has no stars
    Mark mark;
    std::string note;
    std::string thumbnail; // a JPEG file's bytes, of those that are shown

    bool IsRead() const { return header.fault.empty(); }
    double Seconds() const { return header.where.time.exposure.value_or(0); }
};

} // namespace tarn
