// The picture on screen: imaging objects, sizes, turns, and the texts around it.
#pragma once

#include "imaging/ImgX.h"

#include <string>

namespace tarn {

struct DisplayState {
    // An image may fetch its full pixels late, when its file may be gone or changed: who saves or
    // prints one asks its ErrorText afterwards.
    ImgX ImgXpic;    // the picture as shown in the preview: turned, fitted or cropped
    ImgX ImgXpic2;   // its brightened copy
    ImgX ImgXfull;   // the loaded picture at its real size, unturned
    ImgX ImgXfullBC; // the copy that the size window fits and brightens
    ImgX ImgXslide;

    // Device pixels of the pane into which the preview is fitted.
    int PreviewWidth = 0;
    int PreviewHeight = 0;
    int ScreenWidthPx = 0; // screen size, each less 8
    int ScreenHeightPx = 0;

    bool ImageLoaded = false; // the picture commands are on for a shown picture
    bool ImageRotatedRight = false;
    bool ImageRotatedLeft = false;
    bool ImageMirrored = false;
    bool ImageFliped = false;
    bool ImageTurnedHalf = false; // by the camera's orientation alone

    // Set by a show as it closes, so that the same picture comes back in the same turn.
    bool RestoreTurns = false;
    bool WantRight = false;
    bool WantLeft = false;
    bool WantMirror = false;
    bool WantFlip = false;

    // What the preview cut out, in picture pixels.
    float CropLeft = 0;
    float CropTop = 0;
    int CropWidth = 0;
    int CropHeight = 0;

    bool OneX = false; // preview at 1x or 2x, cropped
    bool TwoX = false;
    int BrightnessValue = 0; // -100 to 100, holds for every later picture

    std::string SizeText; // "3504 x 2336", doubled at 2x, empty at a placeholder

    bool OneToOneInfo = false;
    bool OneToOneLoaded = false;
    bool OneToOneNav = false;
};

} // namespace tarn
