// Values of a telescope's picture as one text that a test can compare.
#pragma once

#include "imaging/fits/FitsPixels.h"

#include <sstream>
#include <string>

namespace tarn::testing {

// "0 1 2/3 4 5": the rows of a channel from the top.
inline std::string RowsOf(const FitsPixels& pixels, int channel = 0) {
    std::ostringstream text;
    for (int y = 0; y < pixels.Height(); ++y)
        for (int x = 0; x < pixels.Width(); ++x)
            text << (x > 0 ? " " : y > 0 ? "/" : "") << pixels.Value(channel, x, y);
    return text.str();
}

} // namespace tarn::testing
