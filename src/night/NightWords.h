// What the window says of a night. No toolkit.
#pragma once

#include "night/NightChoice.h"

#include <string>

namespace tarn {

// "1 frame", "31 frames".
std::string CountedFrames(std::size_t count);

// "60 of 60 measured; left out: 4 a dark frame, 2 no stars". Without frames empty.
std::string SummaryOf(std::span<const NightFrame> frames);

// Of a frame, a line each: name, time, and the measures that are known.
std::string TipOf(const NightFrame& frame);

} // namespace tarn
