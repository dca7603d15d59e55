// Files of a folder that the class boxes keep out of the list: how many of each class, and how that
// is said. Files of no class are none of them. No widgets.
#pragma once

#include "desk/state/SelectionState.h"

#include <array>
#include <string>
#include <vector>

namespace tarn {

// In the order of the boxes.
enum class FileClass { Pictures, Videos, Web, Fits, Raw, Text };
inline constexpr std::array kFileClasses{FileClass::Pictures, FileClass::Videos, FileClass::Web,
                                         FileClass::Fits,     FileClass::Raw,    FileClass::Text};

std::string TypesOf(const SelectionState& state, FileClass fileClass);

struct HiddenFiles {
    FileClass fileClass = FileClass::Pictures;
    int count = 0;
    bool operator==(const HiddenFiles&) const = default;
};

// Of the names that the list left out. One of several classes counts in the first; what FileTypes
// lists was left out by something else.
std::vector<HiddenFiles> CountHidden(const SelectionState& state,
                                     const std::vector<std::string>& leftOut);

// "142 FITS files and 1 raw file are not listed"; empty for none.
std::string HiddenText(const std::vector<HiddenFiles>& hidden);

} // namespace tarn
