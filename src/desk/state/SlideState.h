// Slide shows: whether one runs, and how slides look.
#pragma once

#include <array>
#include <string>

namespace tarn {

struct SlideState {
    bool SlideViewing = false;
    bool SlideCompare = false;
    long SlideDelay = 0; // auto advance
    int SlidesPerPage = 0;
    bool SlideZoomed = false; // seen larger than they fit, for which all their pixels are needed
    std::string SlideNameOnly;

    bool SlideNotesOn = false;
    int SlideNotesMode = 0; // 0 nothing, 1 the note, 2 the note and the camera data

    // What the menu rows below stand for.
    std::string SlideFont;
    std::string SlideFontSize;    // points, the caption of the size row
    int SlideBackground = 0;      // 0xRRGGBB, from the background row
    int SlideFontIndex = 1;       // 1 to 6
    int SlideFontSizeIndex = 3;   // 1 to 7
    int SlideBackgroundIndex = 3; // 1 to 5
    int SlideTextColorIndex = 0;  // 0 to 8, into SlideTextColors

    // White, black, red, blue, green, yellow, cyan, magenta, grey as blue-green-red numbers.
    static constexpr std::array<int, 9> SlideTextColors{
        0xFFFFFF, 0, 255, 0xFF0000, 65280, 65535, 0xFFFF00, 0xFF00FF, 0x808080};

    // Check marks of the Control menu.
    bool CameraSettings = true;
    bool ShowNotesSlide = false;
    bool BeepLastSlide = false;
    bool BeepAllSlide = false;
    bool BeepCopyPicture = false;
    bool Slides4Mouse = true;
    bool SlideClear = false;
    bool SlideAltArrowKeys = false;
};

} // namespace tarn
