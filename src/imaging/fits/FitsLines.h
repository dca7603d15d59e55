// The header of a telescope's file as lines of the camera data panel.
#pragma once

#include "imaging/fits/FitsHeader.h"

#include <string>
#include <vector>

namespace tarn {

// Each with a label of 14 characters; what the header does not say has no line. The size in pixels
// stands in the panel's own line.
std::vector<std::string> FitsLines(const FitsHeader& header);

// A number as people write it: "50" for "5.000E+01", "-9.8" for "-9.800000000000001". What is no
// number stays.
std::string PlainNumber(const std::string& written);

// What the panel says of a file.
struct SkyFacts {
    std::vector<std::string> lines;
    std::string cameraDate; // "2024:11:05 21:14:33", empty for none
    int image = 0;          // which of the file's pictures it is, from 0
    int images = 1;
    std::string fault; // why a file that is one by its first bytes cannot be read

    bool operator==(const SkyFacts&) const = default;
};

// None, but for the fault, when it is not a file of a telescope that can be read.
SkyFacts SkyFactsOf(const std::string& path);

} // namespace tarn
