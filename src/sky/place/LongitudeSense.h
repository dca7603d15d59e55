// Which way the longitudes of a folder's headers count: to the east, or to the west.
#pragma once

#include "sky/place/FrameWhere.h"

#include <span>
#include <string>

namespace tarn {

struct LongitudeSense {
    bool countsWest = false;
    std::string said; // how that is known: "by its sidereal times"; empty where nothing tells
};

// One for all: by their sidereal times, else the altitudes of their targets, else their zones. Each
// frame has one vote, so that a header that is wrong does not speak for the others.
LongitudeSense SenseOf(std::span<const FrameWhere> frames);

// "longitudes count west, by its time zone", "longitudes are taken as counting east: nothing
// tells".
std::string SaidOfLongitudes(const LongitudeSense& sense);

Site Mirrored(Site site);

// At the start of an exposure, where headers have theirs, degrees; what was seen is of its middle.
double SiderealAtStart(const SunAndMoon& seen, const ExposureTime& time);

} // namespace tarn
