// What was measured of single pictures and is kept, for who shows it beside them. Nothing is
// measured for it.
#pragma once

#include "sky/measures/MeasureStore.h"

#include <optional>
#include <string>
#include <vector>

namespace tarn {

// For one thread.
class KeptMeasures {
public:
    KeptMeasures();

    // Of the file as it stands now.
    std::optional<FrameMeasures> Of(const std::string& path);
    std::optional<double> HfrOf(const std::string& path); // pixels

private:
    MeasureStore m_store;
};

// Each with a label of 14 characters, as the camera data has them; what is not known has no line.
std::vector<std::string> MeasureLines(const FrameMeasures& measures);

} // namespace tarn
