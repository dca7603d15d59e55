// A picture as a new JPEG, smaller and with a line of text where that is asked for.
#pragma once

#include "convert/ConvertOptions.h"
#include "imaging/ImgX.h"

#include <string>

namespace tarn {

struct Converted {
    std::string jpeg;   // the file's bytes; empty when it failed
    std::string suffix; // ", width = 800" when it was made smaller
    std::string error;
};

// Why a limit cannot be one: "Convert to Jpg max width too small, must be > 9.", or empty.
std::string FaultOfLimit(int limit, const char* side);

// Draws on the picture itself and makes it smaller: it is what was written when this returns, but
// for the turn by the camera's orientation.
Converted ConvertPicture(ImgX& picture, const ConvertOptions& options);

// The orientation that a picture's file tells, where its pixels are not upright yet; else 1.
int OrientationOf(const ImgX& picture);

// Where the line of text stands in a picture of this height, in pixels: its left, its top, and the
// height of the letters.
struct CaptionPlace {
    double left;
    double top;
    double height;
};
CaptionPlace PlaceOfCaption(int pictureHeight);

// The line of text into a picture, or into its lower end: `scale` is what a pixel of the whole
// picture is long in this one, `top` where this one begins in the whole.
void DrawCaption(QImage& picture, const ConvertOptions& options, int pictureHeight, double scale,
                 double top);

} // namespace tarn
