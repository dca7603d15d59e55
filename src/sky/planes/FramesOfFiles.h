// Picture files as frames that are laid over each other.
#pragma once

#include "sky/stack/FrameSamples.h"
#include "sky/stars/FrameMap.h"

#include <optional>
#include <string>

namespace tarn {

// With all colours that the file has; any thread. What no sensor's values are known of has one
// plane of light.
std::optional<FrameSamples> ReadFrameColours(const std::string& path, std::string& error);

// The plane that is measured, one sample for each cell of a mosaic.
struct FramePlane {
    FrameSamples samples;
    int cell = 1; // pixels a side in one sample
};
std::optional<FramePlane> ReadFramePlane(const std::string& path, std::string& error);

// A map between pixels as one between samples that are cells of pixels.
FrameMap InCells(const FrameMap& map, int cell);

// Of an exposure as a header has it; 0 where it is none that a camera makes.
double SecondsOf(const std::string& exposure);

// When the middle of the exposure was, seconds since 1970, by the words of a header; none where it
// has no time of day. Start and length as there: "2024-11-05T21:14:33.5", "300".
std::optional<double> MiddleOfExposure(const std::string& start, const std::string& seconds);

} // namespace tarn
