// What was measured of single pictures and is kept, for who shows it beside them. Nothing is
// measured for it.
#pragma once

#include "sky/measures/MeasureStore.h"

#include <optional>
#include <string>

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

// "812 stars, HFR 2.10 px, FWHM 3.41 px, eccentricity 0.42"; empty where nothing is known.
std::string MeasuresText(const FrameMeasures& measures);

} // namespace tarn
