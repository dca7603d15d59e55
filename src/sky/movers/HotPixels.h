// Single pixels that the sky has no part in.
#pragma once

#include "sky/stack/FrameSamples.h"

namespace tarn {

// The frame with hot pixels and hits of one pixel replaced by what is around them: all of their
// light is in one sample, as no star's is.
FrameSamples WithoutHotPixels(const FrameSamples& frame);

} // namespace tarn
