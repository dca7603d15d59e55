// What the window of a show and its loop tell each other.
#pragma once

namespace tarn {

inline constexpr int kSlideLeft = 1; // values of SlideMouse: its buttons
inline constexpr int kSlideRight = 2;

// How the user wants to see the pictures, since the loop looked last; in device pixels.
struct ViewWish {
    int steps = 0; // closer, below 0 away
    bool fit = false;
    double panX = 0; // the way by which the picture was dragged
    double panY = 0;
    int atX = -1; // where the pointer is; -1 while it is hidden
    int atY = -1;
    bool operator==(const ViewWish&) const = default;
};

struct ShowSignals {
    bool SlideStop = false; // the show ends
    bool SlideNext = false; // on to the next slide
    bool Slideloop = false; // the loop waits on a slide
    int SlideKey = 0;       // last key code, 0 for none
    int SlideMouse = 0;
    ViewWish View;
};

} // namespace tarn
