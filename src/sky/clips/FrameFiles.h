// A frame of a clip as the bytes of a file, shifted where it is to lie on another one.
#pragma once

#include "clips/ClipFrames.h"
#include "sky/frames/RatedClip.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarn {

struct FrameShift { // pixels
    int x = 0;
    int y = 0;
};

// Where a frame goes so that its light stands where that of the other does. The squares of a Bayer
// pattern stay what they are.
FrameShift ShiftOnto(const RatedFrame& frame, const RatedFrame& other, bool isBayer);

// As stored; what no pixel falls on is black.
std::vector<std::uint8_t> ShiftedBytes(const ClipImage& image, FrameShift shift);

struct FrameWords {
    std::size_t number = 0; // in the clip, from 0
    std::size_t rank = 0;   // by sharpness among those taken, from 0
    std::string utc;
    FrameShift shift;
    bool isAligned = false;
};

// A FITS picture of 16 bits: mono, Bayer with its pattern, or three planes.
std::string FitsOfFrame(const ClipImage& image, const RatedClip& rated, const std::string& clip,
                        const FrameWords& words);

} // namespace tarn
