// What the window of a show and its loop tell each other.
#pragma once

namespace tarn {

inline constexpr int kSlideLeft = 1; // values of SlideMouse: its buttons
inline constexpr int kSlideRight = 2;

struct ShowSignals {
    bool SlideStop = false; // the show ends
    bool SlideNext = false; // on to the next slide
    bool Slideloop = false; // the loop waits on a slide
    int SlideKey = 0;       // last key code, 0 for none
    int SlideMouse = 0;
};

} // namespace tarn
