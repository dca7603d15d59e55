// How the pixels of an XISF file are to be turned so that the picture stands upright.
#pragma once

#include "imaging/fits/FitsSamples.h"

#include <string_view>

namespace tarn {

struct XisfTurn {
    int quarters = 0;      // 0 to 3, anticlockwise
    bool mirrored = false; // left to right, after the turning

    bool IsNone() const { return quarters == 0 && !mirrored; }
};

// "-90;flip"; of anything else than the format has, none.
XisfTurn XisfTurnOf(std::string_view written);

// Size and mosaic of the picture as stored become those of the upright one.
void TurnHeader(FitsHeader& header, const XisfTurn& turn);

// So do the samples, whose header is turned already. False when there is no memory for it.
bool TurnSamples(FitsSamples& samples, const XisfTurn& turn);

} // namespace tarn
