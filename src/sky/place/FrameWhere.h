// When, from where and at what a frame was taken, as its header says it.
#pragma once

#include "sky/place/ExposureTime.h"
#include "sky/place/Heavens.h"

#include <optional>
#include <string>
#include <vector>

namespace tarn {

struct FrameWhere {
    ExposureTime time;
    std::optional<Site> site; // the longitude as written, which may count west
    bool isSiteSure = false;  // it says itself which way it counts
    std::optional<Target> target;
    std::optional<double> sidereal;  // local sidereal time, degrees, at the start or about it
    std::optional<double> altitude;  // of the target, degrees
    bool hasTarget = true;           // false for darks, flats, bias, cameras' pictures
    std::vector<std::string> faults; // of site and target; what is missing has none

    bool HasUnsureSite() const { return site && !isSiteSure; }
};

// Of a header with FITS words. Values that cannot be are left out and told. Of a frame that shows
// no target, where the telescope pointed is not asked.
FrameWhere WhereOf(const HeaderWords& words, bool hasTarget = true);

} // namespace tarn
