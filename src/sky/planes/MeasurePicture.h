// Stars of picture files.
#pragma once

#include "sky/stars/FrameMeasures.h"

#include <string>
#include <vector>

namespace tarn {

// The row of a file; any thread. What cannot be read has a row with the reason. Frames that hold no
// stars by their header (darks, flats, bias) have the level and noise alone.
FrameMeasures MeasurePicture(const std::string& path);

// Its sources, the brightest first; `fault` where there are none, or nothing could be read.
std::vector<MeasuredStar> ListSourcesOf(const std::string& path, std::string& fault);

// The same with what is needed to find them in the picture that is shown.
struct ListedStars {
    int width = 0; // pixels of the file
    int height = 0;
    bool bottomUp = false; // the first stored row is shown as the bottom one
    std::vector<MeasuredStar> stars;
    std::string fault;
};
ListedStars StarsIn(const std::string& path);

} // namespace tarn
