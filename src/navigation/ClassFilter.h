// The pattern of the file list, put together from the classes of files that are ticked. No widgets.
#pragma once

#include "desk/state/SelectionState.h"

#include <string>
#include <string_view>

namespace tarn {

// The six class boxes as they stand.
struct ClassBoxes {
    bool pictures = true; // PCheck
    bool videos = true;   // VCheck
    bool web = false;     // WCheck
    bool fits = false;    // FCheck
    bool raw = false;     // CCheck
    bool text = false;    // TCheck
};

// Patterns joined by ";".
std::string JoinPatterns(const std::string& patterns, const std::string& more);

// Whether it can be the pattern of one folder's list: names hold no separator.
bool IsPattern(std::string_view pattern);

// The pattern with which the program starts: pictures, videos and web files as their boxes stand.
std::string StartFileTypes(const SelectionState& state);

// One of pictures and videos is always ticked; web files alone do not count.
bool HasNoClass(const ClassBoxes& boxes);

// The pattern after a change of PCheck, VCheck or WCheck, built from scratch: each begins with its
// own class, none asks for text files, and pictures and videos leave the web files out.
std::string TypesFromPictures(const SelectionState& state, const ClassBoxes& boxes);
std::string TypesFromVideos(const SelectionState& state, const ClassBoxes& boxes);
std::string TypesFromWeb(const SelectionState& state, const ClassBoxes& boxes);

// The pattern after a change of FCheck, CCheck or TCheck: its tick keeps the pattern in `saved` and
// adds the class, its untick goes back to the pattern kept, whatever was ticked in between.
std::string TypesAfterTick(bool ticked, const std::string& fileTypes, const std::string& more,
                           std::string& saved);

// The pattern for three new lists of types: the ticked ones of pictures, videos and web files.
std::string TypesFromTexts(const ClassBoxes& boxes, const std::string& pictures,
                           const std::string& videos, const std::string& web);

} // namespace tarn
