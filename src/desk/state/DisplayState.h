// The picture on screen: imaging objects, sizes, turns, and the texts around it.
#pragma once

#include "imaging/ImgX.h"

#include <string>

namespace tarn {

// What was done to the preview since the picture was loaded, in the order in which it is done again
// on another copy: each counts once, however often the preview was turned.
struct PreviewTurns {
    bool ImageTurnedHalf = false; // by the camera's orientation alone
    bool ImageRotatedRight = false;
    bool ImageRotatedLeft = false;
    bool ImageMirrored = false;
    bool ImageFliped = false;
};

struct DisplayState : PreviewTurns {
    // The loaded picture at its real size, unturned. It may fetch its full pixels late, when its
    // file may be gone or changed: who saves or prints it asks its ErrorText afterwards.
    ImgX ImgXfull;

    // Device pixels of the pane into which the preview is fitted.
    int PreviewWidth = 0;
    int PreviewHeight = 0;

    bool ImageLoaded = false; // the picture commands are on for a shown picture

    bool OneX = false; // preview at 1x or 2x, cropped
    bool TwoX = false;
    int BrightnessValue = 0; // -100 to 100, holds for every later picture

    int PictureMemory = 50; // percent of the machine's memory that decoding may take

    std::string EditCaption = "Edit"; // of the button that opens the file: "Web" for a page
    std::string SizeText;             // "3504 x 2336", doubled at 2x, empty at a placeholder
    std::string ZoomText; // "36%": pixels of the screen for one of the picture; empty as that

    bool OneToOneInfo = false;
    bool OneToOneLoaded = false;
};

} // namespace tarn
