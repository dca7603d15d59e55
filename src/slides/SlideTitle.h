// What is written under a slide and into it.
#pragma once

#include "pictureinfo/PictureInfo.h"

#include <string>

namespace tarn {

struct SlideTitleFacts {
    std::string name;     // of the file, without its folder
    std::string fileDate; // "06/22/2004 8:15:30 PM"
    int index = 0;
    int count = 0;
    bool camera = false;   // the camera's settings, where it wrote them
    bool copied = false;   // a copy key was used on this slide, and
    std::string refusal;   // why nothing was copied; empty: it was
    int brightness = 0;    // of the slider
    std::string mark = {}; // as it is read; empty: none, or not to be shown
};

// "p1.jpg   06/22/2004 8:15:30 PM   (1 of 12)", or with the settings between; then the marks for
// the last picture, for a copy and for the brightness.
std::string TitleOf(const SlideTitleFacts& facts, const PictureInfo& info);

// Camera, size, focus, flash and exposure, parted by ", ".
std::string CameraFields(const PictureInfo& info);

// Under one of two or four pictures; `camera` and `mark` are empty when they are not to be shown.
std::string AreaTitle(const std::string& name, const std::string& date, const std::string& camera,
                      int row, bool last, const std::string& mark = {});

// The note and, in mode 2, the camera lines behind it, with CR LF line ends. Empty when there is
// too little to be worth painting.
std::string TextOnSlide(const std::string& note, const PictureInfo& info, int mode);

} // namespace tarn
