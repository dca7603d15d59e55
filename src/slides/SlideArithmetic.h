// Where slides and their titles stand. All lengths are device pixels; the fixed margins of 8, 10
// and 20 are logical pixels, so many `unit`s.
#pragma once

namespace tarn {

// What a show may use of the screen: its size less 8 logical pixels in both directions.
struct SlideScreen {
    double width = 0;
    double height = 0;
    double unit = 1; // device pixels of a logical one
};

// The whole screen's size in device pixels and its scale.
SlideScreen SlideScreenOf(double screenWidth, double screenHeight, double unit);

enum class SlideLayout { One, TwoHorizontal, TwoVertical, Four };

int AreasOf(SlideLayout layout);

struct SlideSize {
    int width = 0;
    int height = 0;
    bool operator==(const SlideSize&) const = default;
};

// What one picture may take of an area: its strip of 20 below stays free.
SlideSize SlideBoxOf(SlideLayout layout, const SlideScreen& screen);

// A picture's size in its area: shrunk to fit, never enlarged.
SlideSize FitSlide(int width, int height, SlideLayout layout, const SlideScreen& screen);

struct SlidePlace {
    int left = 0;
    int top = 0;
    bool operator==(const SlidePlace&) const = default;
};

// The corner of a picture of this size in an area; areas count in reading order.
SlidePlace PlaceSlide(SlideSize picture, int area, SlideLayout layout, const SlideScreen& screen);

// The area in which a place of the screen lies.
int AreaAt(int x, int y, SlideLayout layout, const SlideScreen& screen);

// Where the title of an area begins and how much room it has to the right.
struct SlideStrip {
    int left = 0;
    int top = 0;
    int width = 0;
    bool operator==(const SlideStrip&) const = default;
};

SlideStrip TitleStrip(int pictureHeight, int area, SlideLayout layout, const SlideScreen& screen);

} // namespace tarn
