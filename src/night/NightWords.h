// What the window says of a night. No toolkit.
#pragma once

#include "night/NightChoice.h"

#include <string>

namespace tarn {

// "1 frame", "31 frames".
std::string CountedFrames(std::size_t count);

// "63 of 64 measured; not judged: 4 × a dark frame; could not be measured: 1 × The file ends too
// early". Without frames empty.
std::string SummaryOf(std::span<const NightFrame> frames);

// Of a frame, a line each: name, time, and the measures that are known.
std::string TipOf(const NightFrame& frame);

} // namespace tarn
