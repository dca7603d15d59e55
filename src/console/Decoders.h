// Picture sizes by way of the decoders, which stand in a module of their own: loading the toolkit
// takes as long as reading the dates of a thousand files, and what reads dates does without.
#pragma once

#include <string>

namespace tarn {

// Size in pixels from the picture's header; false, and 0 x 0, when no reader knows the file or the
// module is not installed.
bool SizeFromHeader(const std::string& path, int& width, int& height);

} // namespace tarn
