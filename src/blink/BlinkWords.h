// What is said of the frames of a blink.
#pragma once

#include "blink/BlinkOrder.h"

#include <string>
#include <vector>

namespace tarn {

std::string FramesText(std::size_t count); // "3 frames"

// Name, time and size of the stars; the mark is drawn beside it.
std::string CornerText(const BlinkFrame& frame);

// "3 left out: 2 × no stars, 1 × another size: 4 x 4"; empty without any.
std::string LeftOutText(const std::vector<std::string>& reasons);

} // namespace tarn
