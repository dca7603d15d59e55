// How large a pixel is on the sky, as far as a header says it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tarn {

// Arc seconds a side, of a header's lines: by the plate's own scale, else by what a program wrote
// as its scale, else by pixel and focal length. None where it cannot be.
std::optional<double> ScaleOf(const std::vector<std::string>& cards);

} // namespace tarn
