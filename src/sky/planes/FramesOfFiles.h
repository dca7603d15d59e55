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
    int cell = 1;          // pixels a side in one sample
    bool bottomUp = false; // the first row is shown as the bottom one
};
std::optional<FramePlane> ReadFramePlane(const std::string& path, std::string& error);

// A map between pixels as one between samples that are cells of pixels.
FrameMap InCells(const FrameMap& map, int cell);

} // namespace tarn
