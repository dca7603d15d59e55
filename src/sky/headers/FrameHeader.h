// What the header of a picture file says of the frame, without its pixels.
#pragma once

#include "sky/place/FrameWhere.h"
#include "sky/stars/FrameKind.h"

#include <optional>
#include <string>

namespace tarn {

// Texts as written, empty for none.
struct FrameHeader {
    FrameWhere where;
    FrameKind kind = FrameKind::Light;
    std::string object;
    std::string filter;
    std::string camera;
    std::string telescope;
    std::string lens;     // of a camera
    std::string exposure; // seconds, as people write them
    std::string gain;
    std::string temperature; // of the sensor, degrees Celsius
    std::string focus;       // steps of the focuser
    std::string focalLength; // millimetres
    std::string fault;       // why nothing could be read; empty otherwise
};

// FITS, XISF, and pictures with camera data; any thread. A camera that does not say its zone has
// the one given, minutes east of UTC, or the system's.
FrameHeader ReadFrameHeader(const std::string& path, std::optional<int> zoneMinutes);

} // namespace tarn
