// Names and factors that belong to values and camera models.
#pragma once

#include <span>
#include <string_view>

namespace tarn {

// Indexed by the value of the tag.
extern const std::span<const std::string_view> ExposureProgramNames; // 10 names
extern const std::span<const std::string_view> MeterModeNames;       // 9 names

// Those that the panel shows for a camera: its own, with viewfinder symbols, or the common ones.
std::span<const std::string_view> MeterModeNamesOf(std::string_view cameraName);

// What a camera model adds to its pictures' data.
struct CameraModel {
    float filmFactor = 0;    // film focal length by sensor focal length, 0 when unknown
    bool fixedFocus = false; // always autofocus and normal program, and does not say so
};

CameraModel FindCameraModel(std::string_view model);

bool IsCanonEos(std::string_view cameraName);

} // namespace tarn
