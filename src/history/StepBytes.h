// Planned steps as one piece of bytes: ten thousand rows of a database would cost more than what
// they tell of.
#pragma once

#include "history/Step.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

std::string PackSteps(std::span<const Step> steps);
// As far as the bytes are such steps.
std::vector<Step> UnpackSteps(std::string_view bytes);

} // namespace tarn
