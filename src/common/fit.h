// How a picture is fitted into a box or cut to it, in pixels.
#pragma once

namespace tarn {

struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

struct PreviewFit {
    int width = 0;
    int height = 0;
    bool reduced = false; // false: the picture at its own size
};

// A picture larger than the box in either direction is reduced to it, a small one never enlarged.
// A box without area, before the window is laid out, reduces nothing.
PreviewFit FitPreview(int imageWidth, int imageHeight, int boxWidth, int boxHeight);

// Where the pane's cut lies in the picture. Singles, as the 1:1 window and the slides use them.
struct PreviewCrop {
    float left = 0;
    float top = 0;
    int width = 0;
    int height = 0;
};

// The middle of the picture, all of it in a direction in which it is smaller than the box.
PreviewCrop CropPreview(int imageWidth, int imageHeight, int boxWidth, int boxHeight);

} // namespace tarn
