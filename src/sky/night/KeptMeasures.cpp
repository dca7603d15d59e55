#include "sky/night/KeptMeasures.h"

#include "common/numbers.h"
#include "imaging/PictureLoader.h"
#include "sky/night/MeasuresFile.h"

#include <cmath>

namespace tarn {

KeptMeasures::KeptMeasures() : m_store(MeasuresFile()) {}

std::optional<FrameMeasures> KeptMeasures::Of(const std::string& path) {
    const FileLook look = PictureLoader::LookAt(path);
    return look.inode != 0 ? m_store.Find(path, look) : std::nullopt;
}

std::optional<double> KeptMeasures::HfrOf(const std::string& path) {
    const auto kept = Of(path);
    return kept && std::isfinite(kept->hfr) ? std::optional(kept->hfr) : std::nullopt;
}

std::vector<std::string> MeasureLines(const FrameMeasures& measures) {
    if (!std::isfinite(measures.hfr)) return {};
    std::vector<std::string> lines{"       Stars: " + std::to_string(measures.stars) + ", HFR " +
                                   FormatFixed(measures.hfr, 2) + " px"};
    if (!std::isfinite(measures.fwhm)) return lines;
    lines.push_back("        FWHM: " + FormatFixed(measures.fwhm, 2) + " px");
    if (std::isfinite(measures.eccentricity))
        lines.back() += ", eccentricity " + FormatFixed(measures.eccentricity, 2);
    return lines;
}

} // namespace tarn
