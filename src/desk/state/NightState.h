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
    bool SkyPanel = false;     // what stood in the sky, beside the camera data
    std::string SkySites;      // as sky/place/SiteList.h has them
    bool FollowFolder = false; // files that a camera program adds are listed once they are whole
    bool ShowNewest = false;   // the newest of them is shown
    std::string SkySite;       // name of the one for pictures that do not say theirs; empty: none
    bool ReportGraphs = true;
    bool ReportPictures = true;
    bool ReportRejected = true;
    bool ReportGaps = true;
    bool ReportEquipment = true;
    bool ReportNotes = true;
    bool CornersShown = false; // their window is up, for which all pixels are needed
};

} // namespace tarn
