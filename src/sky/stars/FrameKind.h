// What a frame was taken for, by the word of its header.
#pragma once

#include <string_view>

namespace tarn {

enum class FrameKind { Light, Flat, Dark, Bias };

// By the words that programs write: "Dark Frame", "FLAT", "Master Offset", "Zero Frame"; "FlatDark"
// is a dark. All others, and none, are light.
FrameKind KindOf(std::string_view imageType);

// "a dark frame"; of a light one empty.
const char* CalibrationText(FrameKind kind);

} // namespace tarn
