// Measured frames: what their window shows, and the circles upon the picture.
#pragma once

#include <string>

namespace tarn {

struct NightState {
    std::string NightColumns;         // names of those shown, "," between them; empty: as designed
    std::string NightMeasure = "hfr"; // of the graph
    std::string NightBelow = "background";
    bool NightByOrder = false; // along the list, not along the time
    int NightTableWidth = 0;   // logical pixels; 0: as designed
    bool StarCircles = false;
    bool CornersShown = false; // their window is up, for which all pixels are needed
};

} // namespace tarn
