// How a picture is fitted into a box, in pixels.
#pragma once

namespace tarn {

struct PreviewFit {
    int width = 0;
    int height = 0;
    bool reduced = false; // false: the picture at its own size
};

// A picture larger than the box in either direction is reduced to it, a small one never enlarged.
// A box without area, before the window is laid out, reduces nothing.
PreviewFit FitPreview(int imageWidth, int imageHeight, int boxWidth, int boxHeight);

} // namespace tarn
