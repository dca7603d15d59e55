#include "sky/planes/MeasurePicture.h"

#include "common/worker.h"
#include "sky/planes/PictureValues.h"
#include "sky/stars/FrameKind.h"

namespace tarn {

namespace {

FrameMeasures Measured(const std::string& path) {
    FrameMeasures measures;
    const auto values = ReadPictureValues(path, measures.fault);
    if (!values) return measures;
    measures = MeasureFrame(values->plane);
    measures.width = values->width; // of a mosaic also the last odd column
    measures.height = values->height;
    measures.series = values->filter + "\n" + values->exposure + "\n" +
                      std::to_string(measures.width) + " x " + std::to_string(measures.height);
    const std::string calibration = CalibrationText(KindOf(values->imageType));
    if (calibration.empty()) return measures;
    measures.fault = calibration;
    measures.stars = 0;
    measures.saturated = 0;
    measures.hfr = measures.fwhm = measures.eccentricity = kNotMeasured;
    measures.brightest.clear();
    return measures;
}

} // namespace

FrameMeasures MeasurePicture(const std::string& path) {
    std::string thrown;
    FrameMeasures measures = Guarded(thrown, [&] { return Measured(path); });
    if (!thrown.empty()) measures.fault = thrown;
    return measures;
}

ListedStars StarsIn(const std::string& path) {
    std::string thrown;
    ListedStars listed = Guarded(thrown, [&] {
        ListedStars found;
        const auto values = ReadPictureValues(path, found.fault);
        if (!values) return found;
        found.width = values->width;
        found.height = values->height;
        found.bottomUp = values->bottomUp;
        found.stars = ListSources(values->plane, found.fault);
        return found;
    });
    if (!thrown.empty()) listed.fault = thrown;
    return listed;
}

std::vector<MeasuredStar> ListSourcesOf(const std::string& path, std::string& fault) {
    ListedStars listed = StarsIn(path);
    fault = std::move(listed.fault);
    return std::move(listed.stars);
}

} // namespace tarn
