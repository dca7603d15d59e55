#include "pictureinfo/CameraTables.h"

#include "common/text.h"

namespace tarn {

namespace {

constexpr std::string_view kExposurePrograms[] = {
    "Not defined",
    "Manual",
    "Program normal",
    "Apeture priority",
    "Shutter priority",
    "Creative program (biased toward depth of field)",
    "Action program (biased toward faster shutter speed)",
    "Portrait mode (for closeup with background out of focus)",
    "Landscape mode (for landscape with background in focus)",
    "reserved"};

constexpr std::string_view kMeterModes[] = {"unknown",     "Multimeter pattern", "Center weighted",
                                            "Center spot", "Multispot",          "Pattern",
                                            "Partial",     "reserved",           "other"};

constexpr std::string_view kCanonMeterModes[] = {"unknown",
                                                 "[   ] Center-weighted Average",
                                                 "[   ] Center-weighted Average",
                                                 "[ . ] Spot (Center 4%)",
                                                 "unknown",
                                                 "[(O)] Evaluative",
                                                 "[( )] Partial (Center 9%)",
                                                 "unknown",
                                                 "unknown"};

struct KnownModel {
    std::string_view name;
    CameraModel model;
};

constexpr KnownModel kKnownModels[] = {{"KODAK DC4800 ZOOM DIGITAL CAMERA", {4.6667F, false}},
                                       {"KODAK DX6490 ZOOM DIGITAL CAMERA", {6.0317F, false}},
                                       {"KODAK DC240 ZOOM DIGITAL CAMERA", {6.5F, true}},
                                       {"KODAK DC5000 ZOOM DIGITAL CAMERA", {4.62F, true}}};

} // namespace

const std::span<const std::string_view> ExposureProgramNames(kExposurePrograms);
const std::span<const std::string_view> MeterModeNames(kMeterModes);

std::span<const std::string_view> MeterModeNamesOf(std::string_view cameraName) {
    if (IsCanonEos(cameraName)) return kCanonMeterModes;
    return MeterModeNames;
}

CameraModel FindCameraModel(std::string_view model) {
    if (IsCanonEos(model)) return {1.6F, false};
    for (const KnownModel& known : kKnownModels) {
        if (model == known.name) return known.model;
    }
    return {};
}

bool IsCanonEos(std::string_view cameraName) {
    return StartsWith(cameraName, "Canon EOS");
}

} // namespace tarn
