// "tarn stars": how sharp, round and clear the frames of a night are.
#pragma once

#include "console/MeasuredFrames.h"
#include "console/Subcommand.h"

namespace tarn {

extern const Usage kStarsUsage;

struct StarMeasurers {
    FrameMeasurer measure;
    std::function<std::vector<MeasuredStar>(const std::string& path, std::string& fault)> list;
};

// A row for each file, folders by name; with "--list" one for each source of one file. Frames of
// one filter, exposure and size are a series, within which they are scored. Without "--csv" fields
// are divided by tabs. What was not measured is empty.
int RunStars(std::span<const std::string> words, const StarMeasurers& measurers);

} // namespace tarn
