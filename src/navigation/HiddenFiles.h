// Files of a folder that the class boxes keep out of the list, and those that could be shown but
// whose type is in no class: how many of each, and how that is said. No widgets.
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
    std::vector<std::string> types; // "*.png": those that the class lacks for them; mostly none
    bool operator==(const HiddenFiles&) const = default;
};

// Of the names that the list left out. One of several classes counts in the first; what FileTypes
// lists was left out by something else.
std::vector<HiddenFiles> CountHidden(const SelectionState& state,
                                     const std::vector<std::string>& leftOut);

// "142 FITS files and 1 raw file are not listed"; empty for none.
std::string HiddenText(const std::vector<HiddenFiles>& hidden);

// Puts these types behind those of pictures or videos.
void AddTypes(SelectionState& state, FileClass fileClass, const std::vector<std::string>& types);

} // namespace tarn
